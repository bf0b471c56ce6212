#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "host/host_observer.h"
#include "host/user_desktop.h"

class CZelFont;

namespace zel::run {

/// One font, read without a message. Paths are this system's; a relative one is taken from the current directory.
struct FontRunRequest {
    std::string file;       ///< named by a dot and a number, as the module wants it.
    bool warnings = false;  ///< Skip Warnings off: the module prompts for a font that it doesn't find.
    host::BoxAnswer box_answer = host::BoxAnswer::kNo;
    std::optional<std::string> browse;  ///< file that the file dialog gives; without it the dialog is cancelled.
    std::optional<std::string> maps;    ///< directory of the name lists; without it none is registered.
};

struct FontRunOutcome {
    std::optional<std::string> read_from;  ///< another file than the one asked for, in this system's form.
    std::string failure;                   ///< one line that names the file and the reason; empty when all went well.

    bool Done() const noexcept { return failure.empty(); }
};

/// Calls CZelTransExport::MakeTavroFont inside a host of its own and a desktop without a screen; both are gone when it
/// returns. Skip Warnings is set before the call, in the module and in the current SettingsStore, and left so.
/// @param observers  hear what happens; not owned, none of them null.
/// @param use        gets the font set with the font in slot 0, when there is one. It is called after OnEnd, and what
///                   the module says meanwhile isn't heard; the font is released when it returns.
/// What can't be begun (a maps directory that is too long) is told in `failure`; nothing is thrown but std::bad_alloc
/// and what `use` throws.
FontRunOutcome RunFont(const FontRunRequest& request, std::span<host::HostObserver* const> observers = {},
                       const std::function<void(CZelFont&)>& use = {});

}  // namespace zel::run
