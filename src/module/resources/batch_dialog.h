#pragma once

#include "module/tools/zel_trans_batch.h"
#include "platform/framework/dialog_template.h"

namespace zel::resources {

namespace ctl = framework::ctl;

// The options are hidden and lie under the two buttons.
inline constexpr framework::ControlTemplate kBatchControls[] = {
    {IDC_STATIC, framework::ControlKind::static_text, "&Start ID:", 7, 10, 34, 8, ctl::none},
    {tools::kStartIdEdit, framework::ControlKind::edit, "", 45, 7, 60, 14, ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::static_text, "&End ID:", 7, 30, 34, 8, ctl::none},
    {tools::kEndIdEdit, framework::ControlKind::edit, "", 45, 27, 60, 14, ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::group_box, "Options", 118, 2, 62, 44, ctl::hidden},
    {tools::kBatchSkipWarningsCheck, framework::ControlKind::check_box, "Skip &Warnings", 121, 13, 57, 10,
     ctl::automatic | ctl::hidden | ctl::tab_stop},
    {tools::kSkipNuvoOutCheck, framework::ControlKind::check_box, "Skip &Nuvo Out", 121, 29, 57, 10,
     ctl::automatic | ctl::hidden | ctl::tab_stop},
    {tools::kBatchStatusLabel, framework::ControlKind::static_text, "", 7, 49, 168, 8, ctl::none},
    {IDC_STATIC, framework::ControlKind::static_text, "Press ESC to exit conversion.", 7, 61, 168, 8, ctl::none},
    {IDOK, framework::ControlKind::default_button, "OK", 122, 7, 53, 16, ctl::tab_stop},
    {IDCANCEL, framework::ControlKind::push_button, "Cancel", 122, 27, 53, 16, ctl::tab_stop},
};

inline constexpr framework::DialogTemplate kBatchDialogTemplate = {
    tools::kBatchDialog,
    "Batch Convert",
    "MS Sans Serif",
    8,
    182,
    76,
    WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
    kBatchControls};

}  // namespace zel::resources
