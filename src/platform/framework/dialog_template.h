#pragma once

#include <span>

#include "platform/system/types.h"

/// Dialog templates as data. Rectangles are in dialog units: a quarter of the font's average width, an eighth of its
/// height.

enum class ControlKind {
    group_box,
    static_text,
    edit,
    combo_box,  // drop-down, with an edit field
    list_box,   // scrolling, at most one entry selected; ctl_sorted keeps its entries in order
    push_button,
    default_button,
    multi_line_button,
    check_box,
    radio_button
};

/// Properties of a control, to be combined with |.
enum ControlFlag : unsigned {
    ctl_none = 0,
    ctl_hidden = 1u << 0,
    ctl_disabled = 1u << 1,
    ctl_password = 1u << 2,
    ctl_auto_scroll = 1u << 3,
    ctl_no_hide_selection = 1u << 4,
    ctl_sorted = 1u << 5,
    ctl_tab_stop = 1u << 6,
    ctl_group = 1u << 7,  // first control of a group, which lasts until the next such control
    ctl_centred = 1u << 8,
    ctl_static_edge = 1u << 9,
    ctl_auto = 1u << 10  // a click changes the state of the check box or radio button
};

inline constexpr int IDC_STATIC = -1;  // a control without an id

struct ControlTemplate {
    int id;  // IDC_STATIC for none
    ControlKind kind;
    const char* text;  // & stands before the access key
    int x, y, cx, cy;
    unsigned flags;
};

inline constexpr DWORD DS_MODALFRAME = 0x80, DS_SETFONT = 0x40;
inline constexpr DWORD WS_POPUP = 0x80000000, WS_VISIBLE = 0x10000000, WS_CAPTION = 0x00C00000, WS_SYSMENU = 0x00080000;

struct DialogTemplate {
    UINT id;
    const char* caption;
    const char* font_name;
    int point_size;
    int cx, cy;
    DWORD style;
    std::span<const ControlTemplate> controls;
};

/// What a module handle points to: the module's name and its dialog templates. The module defines one, of static
/// duration.
struct ModuleInstance {
    const char* name;
    std::span<const DialogTemplate> dialogs;
};
