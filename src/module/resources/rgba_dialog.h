#pragma once

#include "module/contract/dialog_ids.h"
#include "platform/framework/dialog_template.h"

namespace zel::resources {

namespace ctl = framework::ctl;

inline constexpr framework::ControlTemplate kRgbaControls[] = {
    {RgbaControl::kObjectRadio, framework::ControlKind::radio_button, "Insert as &Object", 10, 9, 78, 10,
     ctl::automatic | ctl::group | ctl::tab_stop},
    {RgbaControl::kBackgroundRadio, framework::ControlKind::radio_button, "Insert as &Background", 10, 23, 90, 10,
     ctl::automatic},
    {IDOK, framework::ControlKind::default_button, "OK", 110, 7, 53, 16, ctl::group | ctl::tab_stop},
    {IDCANCEL, framework::ControlKind::push_button, "Cancel", 110, 27, 53, 16, ctl::tab_stop},
};

inline constexpr framework::DialogTemplate kRgbaDialogTemplate = {
    kRgbaDialog,
    "Zelmara! RGBA Import",
    "MS Sans Serif",
    8,
    170,
    50,
    WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
    kRgbaControls};

}  // namespace zel::resources
