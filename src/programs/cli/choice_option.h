#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <CLI/App.hpp>

namespace zel::cli {

/// Adds an option that takes one of several names.
/// @param value  contains the default and receives the value of the name; must be among the choices.
// CLI::CheckedTransformer does not fit: it also accepts each enumerator's number, and lists the numbers in the help.
template <typename T>
void AddChoice(CLI::App& command, const std::string& name, T& value,
               const std::vector<std::pair<std::string, T>>& choices, const std::string& description) {
    std::string names;
    for (const auto& choice : choices) names += (names.empty() ? "" : "|") + choice.first;
    const std::string& default_name = std::ranges::find(choices, value, &std::pair<std::string, T>::second)->first;
    const auto set_value = [&value, choices](const std::string& chosen) {
        value = std::ranges::find(choices, chosen, &std::pair<std::string, T>::first)->second;
    };
    command.add_option_function<std::string>(name, set_value, description + " [" + default_name + "]")
        ->type_name(names)
        ->check(CLI::IsMember(choices).description(""));
}

}  // namespace zel::cli
