#pragma once

#include <span>

#include "platform/system/types.h"

/// Dialog templates as data. Positions and sizes are in dialog units: a quarter of the font's average character width,
/// an eighth of its height.

namespace zel::framework {

enum class ControlKind {
    group_box,
    static_text,
    edit,
    /// Drop-down, with an edit field.
    combo_box,
    /// Scrolling, with at most one selected entry.
    list_box,
    push_button,
    default_button,
    multi_line_button,
    check_box,
    radio_button
};

/// Flags of a control, to be combined with |.
namespace ctl {
inline constexpr unsigned none = 0, hidden = 1u << 0, disabled = 1u << 1, password = 1u << 2, auto_scroll = 1u << 3;
/// An edit that keeps its selection, and shows it, when it loses the focus.
inline constexpr unsigned no_hide_selection = 1u << 4;
/// Entries that are added are sorted.
inline constexpr unsigned sorted = 1u << 5;
inline constexpr unsigned tab_stop = 1u << 6;
/// First control of a group, which lasts until the next such control.
inline constexpr unsigned group = 1u << 7;
inline constexpr unsigned centred = 1u << 8, static_edge = 1u << 9;
/// A click changes the state of the check box or radio button.
inline constexpr unsigned automatic = 1u << 10;
}  // namespace ctl

}  // namespace zel::framework

/// Id of a control that needs none.
inline constexpr int IDC_STATIC = -1;

namespace zel::framework {

struct ControlTemplate {
    int id;
    ControlKind kind;
    /// & precedes the access key.
    const char* text;
    int x, y, cx, cy;
    /// ctl:: values.
    unsigned flags;
};

}  // namespace zel::framework

inline constexpr DWORD DS_MODALFRAME = 0x80, DS_SETFONT = 0x40;
inline constexpr DWORD WS_POPUP = 0x80000000, WS_VISIBLE = 0x10000000, WS_CAPTION = 0x00C00000, WS_SYSMENU = 0x00080000;

namespace zel::framework {

struct DialogTemplate {
    UINT id;
    const char* caption;
    const char* font_name;
    int point_size;
    int cx, cy;
    DWORD style;
    std::span<const ControlTemplate> controls;
};

}  // namespace zel::framework

/// What a module handle points to: the module's name and its dialog templates. Each module defines one, of static
/// storage duration.
struct HINSTANCE__ {
    const char* name;
    std::span<const zel::framework::DialogTemplate> dialogs;
};
