#pragma once

#include "module/contract/dialog_ids.h"
#include "platform/framework/dialog_template.h"

namespace zel::resources {

namespace ctl = framework::ctl;

// The options are hidden; the two buttons are in their place.
inline constexpr framework::ControlTemplate kBatchControls[] = {
    {IDC_STATIC, framework::ControlKind::static_text, "&Start ID:", 7, 10, 34, 8, ctl::none},
    {BatchControl::kStartIdEdit, framework::ControlKind::edit, "", 45, 7, 60, 14, ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::static_text, "&End ID:", 7, 30, 34, 8, ctl::none},
    {BatchControl::kEndIdEdit, framework::ControlKind::edit, "", 45, 27, 60, 14, ctl::tab_stop | ctl::auto_scroll},
    {IDC_STATIC, framework::ControlKind::group_box, "Options", 118, 2, 62, 44, ctl::hidden},
    {BatchControl::kSkipWarningsCheck, framework::ControlKind::check_box, "Skip &Warnings", 121, 13, 57, 10,
     ctl::automatic | ctl::hidden | ctl::tab_stop},
    {BatchControl::kSkipNuvoOutCheck, framework::ControlKind::check_box, "Skip &Nuvo Out", 121, 29, 57, 10,
     ctl::automatic | ctl::hidden | ctl::tab_stop},
    {BatchControl::kStatusLabel, framework::ControlKind::static_text, "", 7, 49, 168, 8, ctl::none},
    {IDC_STATIC, framework::ControlKind::static_text, "Press ESC to exit conversion.", 7, 61, 168, 8, ctl::none},
    {IDOK, framework::ControlKind::default_button, "OK", 122, 7, 53, 16, ctl::tab_stop},
    {IDCANCEL, framework::ControlKind::push_button, "Cancel", 122, 27, 53, 16, ctl::tab_stop},
};

inline constexpr framework::DialogTemplate kBatchDialogTemplate = {
    kBatchDialog,
    "Batch Convert",
    "MS Sans Serif",
    8,
    182,
    76,
    WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
    kBatchControls};

}  // namespace zel::resources
