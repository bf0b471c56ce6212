#pragma once

#include "platform/framework/dialog_template.h"
#include "module/tools/zel_trans_batch.h"

// The options are hidden and lie under the two buttons.
inline constexpr ControlTemplate kBatchControls[] = {
    {IDC_STATIC, ControlKind::static_text, "&Start ID:", 7, 10, 34, 8, ctl_none},
    {kStartIdEdit, ControlKind::edit, "", 45, 7, 60, 14, ctl_tab_stop | ctl_auto_scroll},
    {IDC_STATIC, ControlKind::static_text, "&End ID:", 7, 30, 34, 8, ctl_none},
    {kEndIdEdit, ControlKind::edit, "", 45, 27, 60, 14, ctl_tab_stop | ctl_auto_scroll},
    {IDC_STATIC, ControlKind::group_box, "Options", 118, 2, 62, 44, ctl_hidden},
    {kBatchSkipWarningsCheck, ControlKind::check_box, "Skip &Warnings", 121, 13, 57, 10,
     ctl_auto | ctl_hidden | ctl_tab_stop},
    {kSkipNuvoOutCheck, ControlKind::check_box, "Skip &Nuvo Out", 121, 29, 57, 10,
     ctl_auto | ctl_hidden | ctl_tab_stop},
    {kBatchStatusLabel, ControlKind::static_text, "", 7, 49, 168, 8, ctl_none},
    {IDC_STATIC, ControlKind::static_text, "Press ESC to exit conversion.", 7, 61, 168, 8, ctl_none},
    {IDOK, ControlKind::default_button, "OK", 122, 7, 53, 16, ctl_tab_stop},
    {IDCANCEL, ControlKind::push_button, "Cancel", 122, 27, 53, 16, ctl_tab_stop},
};

inline constexpr DialogTemplate kBatchDialogTemplate = {kBatchDialog,
                                                        "Batch Convert",
                                                        "MS Sans Serif",
                                                        8,
                                                        182,
                                                        76,
                                                        WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
                                                        kBatchControls};
