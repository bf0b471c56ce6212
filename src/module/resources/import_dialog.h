#pragma once

#include "module/contract/zel_trans_dlg.h"
#include "platform/framework/dialog_template.h"

inline constexpr ControlTemplate kImportControls[] = {
    {IDC_STATIC, ControlKind::group_box, "Import From Local Drive", 7, 2, 273, 61, ctl_none},
    {IDC_STATIC, ControlKind::static_text, "&Font Dir :", 10, 12, 32, 12, ctl_none},
    {kFontDirBox, ControlKind::combo_box, "", 41, 11, 173, 51, ctl_tab_stop | ctl_auto_scroll},
    {IDC_STATIC, ControlKind::static_text, "&Msg Dir :", 10, 26, 32, 12, ctl_none},
    {kMessageDirBox, ControlKind::combo_box, "", 41, 25, 173, 55, ctl_tab_stop | ctl_auto_scroll},
    {IDC_STATIC, ControlKind::static_text, "Msg I&D :", 10, 43, 32, 12, ctl_none},
    {kMessageIdEdit, ControlKind::edit, "", 41, 42, 70, 14, ctl_tab_stop | ctl_auto_scroll | ctl_no_hide_selection},
    {kReadButton, ControlKind::push_button, "&Read ", 160, 42, 53, 16, ctl_tab_stop},
    {kBrowseFontButton, ControlKind::push_button, "Brow&se Font", 220, 11, 53, 12, ctl_tab_stop},
    {kBrowseMessageButton, ControlKind::push_button, "Brows&e Msg", 220, 26, 53, 12, ctl_tab_stop},
    {kBatchButton, ControlKind::push_button, "&Batch Convert", 220, 42, 53, 16, ctl_tab_stop},
    {kCopyFilesButton, ControlKind::multi_line_button, " C&opy files from   Zelmara! Disk", 285, 7, 53, 22,
     ctl_tab_stop},
    {kFtpButton, ControlKind::multi_line_button, "Co&py Zelmara!    files via FTP", 285, 36, 53, 22, ctl_tab_stop},
    {IDOK, ControlKind::default_button, "Cancel", 347, 7, 53, 16, ctl_tab_stop},
    {kTrueFontCheck, ControlKind::check_box, "TT Convert", 344, 26, 55, 10, ctl_auto | ctl_hidden | ctl_tab_stop},
    {IDC_STATIC, ControlKind::group_box, "Options", 345, 33, 66, 25, ctl_none},
    {kSkipWarningsCheck, ControlKind::check_box, "Skip &Warnings", 350, 42, 58, 10, ctl_auto | ctl_tab_stop},
    {kBaselineAlignCheck, ControlKind::check_box, "Baseline Align", 343, 26, 60, 10,
     ctl_auto | ctl_hidden | ctl_tab_stop},
    {IDC_STATIC, ControlKind::static_text,
     "Note : Before Importing Zelmara! messages,  files must be transferred to Windows formatted media.", 7, 64, 339,
     11, ctl_centred | ctl_static_edge},
};

inline constexpr DialogTemplate kImportDialogTemplate = {
    kImportDialog,
    "Zelmara! Message Import",
    "MS Sans Serif",
    8,
    418,
    82,
    WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
    kImportControls};
