#pragma once

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

#include <CLI/App.hpp>

#include "host/reference_host.h"
#include "host/run/dialog_script.h"
#include "host/user_desktop.h"

namespace zel::cli {

/// Exit codes of the command.
enum class ExitCode : int { kDone = 0, kNotDone = 1, kWrongArguments = 2 };

/// The work wasn't done; what() names the file and the reason in one line.
class CommandError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What a command does once its arguments are known to be right; returns the exit code.
using CommandRun = std::function<ExitCode()>;

/// One line on standard error: what went wrong, or what a person should know of work that is done.
void SayError(const std::string& text);
void SayNote(const std::string& text);

/// A path as it can be typed into a shell.
std::string ShellWord(const std::string& path);

/// An option whose values are words. `value` holds the default, and takes what the word stands for.
template <typename T>
void AddChoice(CLI::App& command, const std::string& name, T& value, const std::map<std::string, T>& words,
               const std::string& description) {
    std::string allowed, at_first;
    for (const auto& [word, meaning] : words) {
        allowed += (allowed.empty() ? "" : "|") + word;
        if (meaning == value) at_first = word;
    }
    const auto take = [&value, words, allowed, name](const std::string& word) {
        const auto found = words.find(word);
        if (found == words.end()) throw CLI::ValidationError(name, "\"" + word + "\" is none of " + allowed);
        value = found->second;
    };
    command.add_option_function<std::string>(name, take, description + " [" + at_first + "]")->type_name(allowed);
}

/// Says what is wrong with an empty path, for CLI::Option::check.
std::string NotEmpty(const std::string& path);

/// A path that may be left out, but not empty.
void AddPath(CLI::App& command, const std::string& name, std::optional<std::string>& path, const std::string& type,
             const std::string& description);

/// The directory of the name lists, and how a prompt for a missing font is answered.
void AddMaps(CLI::App& command, std::optional<std::string>& directory);
void AddFontPrompt(CLI::App& command, host::BoxAnswer& answer, std::optional<std::string>& browse);

/// What the host sets in the module's dialog, and how the choice for an RGBA picture is answered.
void AddHostOptions(CLI::App& command, host::HostOptions& options, run::RgbaAnswer& rgba);

/// The directory of the stored settings, and an example of the command in its help.
void AddSettings(CLI::App& command, std::optional<std::string>& directory);
void AddExample(CLI::App& command, const std::string& example);

}  // namespace zel::cli
