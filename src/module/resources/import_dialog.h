#pragma once

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/framework/dialog_template.h"

namespace zel::resources {

namespace ctl = framework::ctl;

inline constexpr framework::ControlTemplate kImportControls[] = {
    {IDC_STATIC, framework::ControlKind::group_box, "Import From Local Drive", 7, 2, 273, 61, ctl::none},
    {IDC_STATIC, framework::ControlKind::static_text, "&Font Dir :", 10, 12, 32, 12, ctl::none},
    {ImportControl::kFontDirBox, framework::ControlKind::combo_box, "", 41, 11, 173, 51,
     ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::static_text, "&Msg Dir :", 10, 26, 32, 12, ctl::none},
    {ImportControl::kMessageDirBox, framework::ControlKind::combo_box, "", 41, 25, 173, 55,
     ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::static_text, "Msg I&D :", 10, 43, 32, 12, ctl::none},
    {ImportControl::kMessageIdEdit, framework::ControlKind::edit, "", 41, 42, 70, 14,
     ctl::tab_stop | ctl::auto_scroll | ctl::no_hide_selection},
    {ImportControl::kReadButton, framework::ControlKind::push_button, "&Read ", 160, 42, 53, 16, ctl::tab_stop},
    {ImportControl::kBrowseFontButton, framework::ControlKind::push_button, "Brow&se Font", 220, 11, 53, 12,
     ctl::tab_stop},
    {ImportControl::kBrowseMessageButton, framework::ControlKind::push_button, "Brows&e Msg", 220, 26, 53, 12,
     ctl::tab_stop},
    {ImportControl::kBatchButton, framework::ControlKind::push_button, "&Batch Convert", 220, 42, 53, 16,
     ctl::tab_stop},
    {ImportControl::kCopyFilesButton, framework::ControlKind::multi_line_button, " C&opy files from   Zelmara! Disk",
     285, 7, 53, 22, ctl::tab_stop},
    {ImportControl::kFtpButton, framework::ControlKind::multi_line_button, "Co&py Zelmara!    files via FTP", 285, 36,
     53, 22, ctl::tab_stop},
    {IDOK, framework::ControlKind::default_button, "Cancel", 347, 7, 53, 16, ctl::tab_stop},
    {ImportControl::kTrueFontCheck, framework::ControlKind::check_box, "TT Convert", 344, 26, 55, 10,
     ctl::automatic | ctl::hidden | ctl::tab_stop},
    {IDC_STATIC, framework::ControlKind::group_box, "Options", 345, 33, 66, 25, ctl::none},
    {ImportControl::kSkipWarningsCheck, framework::ControlKind::check_box, "Skip &Warnings", 350, 42, 58, 10,
     ctl::automatic | ctl::tab_stop},
    {ImportControl::kBaselineAlignCheck, framework::ControlKind::check_box, "Baseline Align", 343, 26, 60, 10,
     ctl::automatic | ctl::hidden | ctl::tab_stop},
    {IDC_STATIC, framework::ControlKind::static_text,
     "Note : Before Importing Zelmara! messages,  files must be transferred to Windows formatted media.", 7, 64, 339,
     11, ctl::centred | ctl::static_edge},
};

inline constexpr framework::DialogTemplate kImportDialogTemplate = {
    kImportDialog,
    "Zelmara! Message Import",
    "MS Sans Serif",
    8,
    418,
    82,
    WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
    kImportControls};

}  // namespace zel::resources
