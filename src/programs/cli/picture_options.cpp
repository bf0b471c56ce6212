#include "programs/cli/picture_options.h"

#include <algorithm>

#include "host/export/export_formats.h"
#include "host/export/option_table.h"
#include "programs/cli/options.h"

namespace zel::cli {

namespace {

using exporter::ExportOption;
using exporter::OptionKind;

/// What the help has in place of a value: "WxH", or the names that can be chosen.
std::string ValueName(const ExportOption& option) {
    if (option.kind == OptionKind::kText) return std::string(option.value_name);
    std::string names;
    for (const ExportOption::Choice& choice : option.choices)
        names.append(names.empty() ? "" : "|").append(choice.name);
    return names;
}

std::string HelpWithDefault(const ExportOption& option) {
    const std::string_view value =
        option.kind == OptionKind::kChoice ? option.choices.front().name : option.default_text;
    return std::string(option.help) + (value.empty() ? std::string() : " [" + std::string(value) + "]");
}

void AddOption(CLI::App& command, const ExportOption& option, exporter::ExportOptions& options) {
    const std::string name = "--" + std::string(option.name);
    if (option.kind == OptionKind::kFlag) {
        command.add_flag_callback(
            name, [&options, set = option.set] { set(options, {}); }, std::string(option.help));
        return;
    }
    command
        .add_option_function<std::string>(
            name, [&options, set = option.set](const std::string& value) { set(options, value); },
            HelpWithDefault(option))
        ->type_name(ValueName(option))
        ->check(
            [set = option.set](const std::string& value) {
                exporter::ExportOptions unused;
                return set(unused, value);
            },
            "");
}

}  // namespace

std::string CheckFormat(const std::string& name) {
    if (exporter::FindExportFormat(name) != nullptr) return {};
    return "\"" + name + "\" is not a format; see \"zeltrans export --list-formats\"";
}

std::string CheckFillFormat(const std::string& name) {
    const exporter::ExportFormat* const format = exporter::FindExportFormat(name);
    if (format == nullptr || !format->needs_manifest) return CheckFormat(name);
    return "\"" + name + "\" is a format of \"zeltrans export\" alone: record with --library, and export from there";
}

void AddPictureOptions(CLI::App& command, exporter::ExportOptions& options) {
    for (const ExportOption& option : exporter::ExportOptionTable()) AddOption(command, option, options);
}

void RequirePictureOptions(const CLI::App& command, const std::vector<std::string>& formats) {
    const auto is_given = [&](std::string_view name) { return command.count("--" + std::string(name)) > 0; };
    for (const ExportOption& option : exporter::ExportOptionTable()) {
        const std::string name = "--" + std::string(option.name);
        const bool applies = std::ranges::any_of(
            formats, [&](const std::string& format) { return exporter::FindExportFormat(format)->Takes(option.name); });
        Require(command, name, applies, "--format " + exporter::FormatsWith(option.name));
        // A template is placed in the page of its host.
        const bool is_alone = std::ranges::any_of(formats, [&](const std::string& format_name) {
            const exporter::ExportFormat& format = *exporter::FindExportFormat(format_name);
            return format.Takes(option.name) && !format.Takes(option.needs);
        });
        if (!option.needs.empty() && !is_alone)
            Require(command, name, is_given(option.needs), "--" + std::string(option.needs));
        if (!option.excluded_by.empty() && is_given(option.name) && is_given(option.excluded_by))
            throw CLI::ValidationError(name, std::string(option.exclusion));
    }
}

}  // namespace zel::cli
