#pragma once

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_ftp.h"
#include "platform/framework/dialog_template.h"

namespace zel::resources {

namespace ctl = framework::ctl;

// No button has the id of OK: Enter closes the dialog and stores nothing.
inline constexpr framework::ControlTemplate kFtpControls[] = {
    {IDC_STATIC, framework::ControlKind::static_text, "&Local Dir :", 13, 9, 48, 8, ctl::none},
    {FtpControl::kLocalDirBox, framework::ControlKind::combo_box, "", 63, 7, 146, 60, ctl::tab_stop | ctl::auto_scroll},
    {FtpControl::kBrowseLocalButton, framework::ControlKind::push_button, "&Browse ", 221, 7, 53, 14, ctl::tab_stop},
    {IDC_STATIC, framework::ControlKind::static_text, "&Remote Dir :", 13, 27, 48, 8, ctl::none},
    {FtpControl::kRemoteDirBox, framework::ControlKind::combo_box, "", 63, 25, 146, 60,
     ctl::tab_stop | ctl::auto_scroll},
    {FtpControl::kBrowseRemoteButton, framework::ControlKind::push_button, "Brows&e ", 221, 25, 53, 14, ctl::tab_stop},
    {IDC_STATIC, framework::ControlKind::static_text, "&File :", 13, 45, 48, 8, ctl::none},
    {FtpControl::kFileEdit, framework::ControlKind::edit, "", 63, 43, 146, 14, ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::group_box, "", 7, 59, 208, 72, ctl::none},
    {IDC_STATIC, framework::ControlKind::static_text, "&IP Address : ", 13, 73, 48, 8, ctl::none},
    {FtpControl::kAddressBox, framework::ControlKind::combo_box, "", 63, 71, 146, 60, ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::static_text, "&Username : ", 13, 92, 48, 8, ctl::none},
    {FtpControl::kUsernameEdit, framework::ControlKind::edit, "", 63, 90, 100, 14, ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::static_text, "&Password : ", 13, 111, 48, 8, ctl::none},
    {FtpControl::kPasswordEdit, framework::ControlKind::edit, "", 63, 109, 100, 14,
     ctl::tab_stop | ctl::auto_scroll | ctl::password},
    {FtpControl::kSavePasswordCheck, framework::ControlKind::check_box, "&Save", 170, 111, 39, 10,
     ctl::automatic | ctl::tab_stop},
    {IDC_STATIC, framework::ControlKind::group_box, "Options", 221, 59, 72, 72, ctl::none},
    {FtpControl::kSkipWarningsCheck, framework::ControlKind::check_box, "Skip &Warnings", 228, 74, 60, 10,
     ctl::automatic | ctl::tab_stop},
    {FtpControl::kOverwriteCheck, framework::ControlKind::check_box, "&Overwrite All", 228, 92, 60, 10,
     ctl::automatic | ctl::tab_stop},
    {FtpControl::kPassiveCheck, framework::ControlKind::check_box, "Passi&ve FTP ", 228, 111, 60, 10,
     ctl::automatic | ctl::tab_stop},
    {FtpControl::kExecuteButton, framework::ControlKind::push_button, "FTP E&xecute", 180, 137, 53, 16, ctl::tab_stop},
    {IDCANCEL, framework::ControlKind::push_button, "Close", 240, 137, 53, 16, ctl::tab_stop},
};

inline constexpr framework::DialogTemplate kFtpDialogTemplate = {
    kFtpDialog,
    "Copy Zelmara! Files via FTP",
    "MS Sans Serif",
    8,
    300,
    160,
    WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
    kFtpControls};

}  // namespace zel::resources
