#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/export/export_options.h"

namespace zel::exporter {

/// How a user gives an option.
enum class OptionKind {
    /// On or off.
    kFlag,
    /// One of several names, the first of which is the default.
    kChoice,
    /// A text, of which `choices` are examples.
    kText,
};

/// An option of the formats, for the command line, for dialogs and for documents.
struct ExportOption {
    struct Choice {
        std::string_view name;
        /// In a dialog.
        std::string_view label;
    };

    /// As the command has it without "--".
    std::string_view name;
    OptionKind kind = OptionKind::kFlag;
    /// In a dialog, without a colon.
    std::string_view label;
    /// One sentence without a capital and a full stop.
    std::string_view help;
    /// Sets the value that a user has given, "" for a flag. @return why it can't be that; empty for success.
    std::string (*set)(ExportOptions& options, const std::string& value) = nullptr;
    std::vector<Choice> choices{};
    /// What stands for a text in help, such as "WxH".
    std::string_view value_name{};
    /// The text that is the default; empty if the option is then off.
    std::string_view default_text{};
    /// The option without which this one has no effect.
    std::string_view needs{};
    /// The option beside which this one has no effect, and why.
    std::string_view excluded_by{}, exclusion{};
};

/// All options of the formats, in the order in which they are listed.
std::span<const ExportOption> ExportOptionTable();

/// @return null for a name that is none of them.
const ExportOption* FindExportOption(std::string_view name);

}  // namespace zel::exporter
