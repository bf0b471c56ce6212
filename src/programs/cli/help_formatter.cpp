#include "programs/cli/help_formatter.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace zel::cli {

namespace {

constexpr std::size_t kMaxWidth = 80;
constexpr std::size_t kNameWidth = 28;

// Breaks a text at blanks into lines of at most a width in characters. A longer word is not broken.
std::string Wrapped(std::string_view text, std::size_t width) {
    std::string lines;
    while (text.size() > width) {
        std::size_t end = text.rfind(' ', width);
        if (end == std::string_view::npos) end = std::min(text.find(' '), text.size());
        lines.append(text.substr(0, end)).append(end < text.size() ? "\n" : "");
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines.append(text);
}

}  // namespace

HelpFormatter::HelpFormatter() {
    column_width(kNameWidth);
    label("Positionals", "Arguments");
    label("REQUIRED", "(required)");
    label("SUBCOMMAND", "COMMAND");
}

std::string HelpFormatter::make_description(const CLI::App* app) const {
    return Wrapped(app->get_description(), kMaxWidth) + "\n\n";
}

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const {
    std::string required;
    for (const CLI::Option* option : app->get_options()) {
        if (option->nonpositional() && option->get_required())
            required += option->get_name() + " " + option->get_type_name() + " ";
    }
    // Every command has --help, so that its usage contains "[OPTIONS] ".
    std::string usage = Formatter::make_usage(app, std::move(name));
    return required.empty() ? usage : usage.insert(usage.find("] ") + 2, required);
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
    std::ostringstream line;
    CLI::detail::format_help(line, command->get_display_name(true),
                             Wrapped(command->get_description(), kMaxWidth - kNameWidth), kNameWidth);
    return line.str();
}

std::string HelpFormatter::make_option_desc(const CLI::Option* option) const {
    return Wrapped(option->get_description(), kMaxWidth - kNameWidth);
}

}  // namespace zel::cli
