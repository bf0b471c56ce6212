#pragma once

#include "platform/framework/dialog_template.h"
#include "module/tools/zel_rgba.h"

inline constexpr ControlTemplate kRgbaControls[] = {
    {kRgbaObjectRadio, ControlKind::radio_button, "Insert as &Object", 10, 9, 78, 10,
     ctl_auto | ctl_group | ctl_tab_stop},
    {kRgbaBackgroundRadio, ControlKind::radio_button, "Insert as &Background", 10, 23, 90, 10, ctl_auto},
    {IDOK, ControlKind::default_button, "OK", 110, 7, 53, 16, ctl_group | ctl_tab_stop},
    {IDCANCEL, ControlKind::push_button, "Cancel", 110, 27, 53, 16, ctl_tab_stop},
};

inline constexpr DialogTemplate kRgbaDialogTemplate = {kRgbaDialog,
                                                       "Zelmara! RGBA Import",
                                                       "MS Sans Serif",
                                                       8,
                                                       170,
                                                       50,
                                                       WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
                                                       kRgbaControls};
