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
    /// The file's name is a dot and a number, as the module requires.
    std::string file;
    /// Skip Warnings off: the module prompts for a missing font.
    bool warnings = false;
    host::BoxAnswer box_answer = host::BoxAnswer::kNo;
    /// File chosen in the file dialog; empty: the dialog is cancelled.
    std::optional<std::string> browse;
    /// Directory of the name lists; empty: none is registered.
    std::optional<std::string> maps;
};

struct FontRunOutcome {
    /// The file that was read instead of the requested one, in this system's form.
    std::optional<std::string> read_from;
    /// One line with the file's name and the reason; empty after success.
    std::string failure;

    bool Done() const noexcept { return failure.empty(); }
};

/// Calls CZelTransExport::MakeTavroFont inside its own host and a desktop without a screen. Skip Warnings is set before
/// the call, in the module and in the current SettingsStore, and stays set. Failures to start (a maps directory that is
/// too long) are reported in `failure` too; throws only std::bad_alloc and what `use` throws.
/// @param observers  not owned, none of them null.
/// @param use        receives the font set with the font in slot 0, if there is one. It is called after OnEnd and not
///                   observed; the font is released when it returns.
FontRunOutcome RunFont(const FontRunRequest& request, std::span<host::HostObserver* const> observers = {},
                       const std::function<void(CZelFont&)>& use = {});

}  // namespace zel::run
