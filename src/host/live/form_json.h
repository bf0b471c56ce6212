#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

#include "host/live/live_form.h"

namespace zel::live {

/// How a template shows its picture.
struct LiveLook {
    /// UTF-8.
    std::string title;
    /// How the picture is placed in a page: "pillar", "fill" or "pixel".
    std::string_view fit = "pillar";
    /// Of play and of stop.
    int fade_in_ms = 0, fade_out_ms = 0;
};

/// The form as the scripts read it; described in the README.
nlohmann::ordered_json FormJson(const LiveForm& form, const LiveLook& look);

/// Whether the form has the field in the definitions for playout programs.
inline bool IsDefined(const LiveField& field) noexcept {
    return field.fault.empty();
}

/// The key of a field in the data of playout programs: f0, f1 and so on.
std::string KeyOf(std::size_t field);

/// JSON for use within a script element, or in a script as a value: nothing in it ends the element or a line.
std::string ScriptText(const nlohmann::ordered_json& json);

}  // namespace zel::live
