#pragma once

#include "platform/framework/dialog_template.h"
#include "module/contract/zel_trans_ftp.h"

// No button has the id of OK: Enter closes the dialog and stores nothing.
inline constexpr ControlTemplate kFtpControls[] = {
    {IDC_STATIC, ControlKind::static_text, "&Local Dir :", 13, 9, 48, 8, ctl_none},
    {kFtpLocalDirBox, ControlKind::combo_box, "", 63, 7, 146, 60, ctl_tab_stop | ctl_auto_scroll},
    {kFtpBrowseLocalButton, ControlKind::push_button, "&Browse ", 221, 7, 53, 14, ctl_tab_stop},
    {IDC_STATIC, ControlKind::static_text, "&Remote Dir :", 13, 27, 48, 8, ctl_none},
    {kFtpRemoteDirBox, ControlKind::combo_box, "", 63, 25, 146, 60, ctl_tab_stop | ctl_auto_scroll},
    {kFtpBrowseRemoteButton, ControlKind::push_button, "Brows&e ", 221, 25, 53, 14, ctl_tab_stop},
    {IDC_STATIC, ControlKind::static_text, "&File :", 13, 45, 48, 8, ctl_none},
    {kFtpFileEdit, ControlKind::edit, "", 63, 43, 146, 14, ctl_tab_stop | ctl_auto_scroll},
    {IDC_STATIC, ControlKind::group_box, "", 7, 59, 208, 72, ctl_none},
    {IDC_STATIC, ControlKind::static_text, "&IP Address : ", 13, 73, 48, 8, ctl_none},
    {kFtpAddressBox, ControlKind::combo_box, "", 63, 71, 146, 60, ctl_tab_stop | ctl_auto_scroll},
    {IDC_STATIC, ControlKind::static_text, "&Username : ", 13, 92, 48, 8, ctl_none},
    {kFtpUsernameEdit, ControlKind::edit, "", 63, 90, 100, 14, ctl_tab_stop | ctl_auto_scroll},
    {IDC_STATIC, ControlKind::static_text, "&Password : ", 13, 111, 48, 8, ctl_none},
    {kFtpPasswordEdit, ControlKind::edit, "", 63, 109, 100, 14, ctl_tab_stop | ctl_auto_scroll | ctl_password},
    {kFtpSavePasswordCheck, ControlKind::check_box, "&Save", 170, 111, 39, 10, ctl_auto | ctl_tab_stop},
    {IDC_STATIC, ControlKind::group_box, "Options", 221, 59, 72, 72, ctl_none},
    {kFtpSkipWarningsCheck, ControlKind::check_box, "Skip &Warnings", 228, 74, 60, 10, ctl_auto | ctl_tab_stop},
    {kFtpOverwriteCheck, ControlKind::check_box, "&Overwrite All", 228, 92, 60, 10, ctl_auto | ctl_tab_stop},
    {kFtpPassiveCheck, ControlKind::check_box, "Passi&ve FTP ", 228, 111, 60, 10, ctl_auto | ctl_tab_stop},
    {kFtpExecuteButton, ControlKind::push_button, "FTP E&xecute", 180, 137, 53, 16, ctl_tab_stop},
    {IDCANCEL, ControlKind::push_button, "Close", 240, 137, 53, 16, ctl_tab_stop},
};

inline constexpr DialogTemplate kFtpDialogTemplate = {kFtpDialog,
                                                      "Copy Zelmara! Files via FTP",
                                                      "MS Sans Serif",
                                                      8,
                                                      300,
                                                      160,
                                                      WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
                                                      kFtpControls};
