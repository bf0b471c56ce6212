#include "programs/cli/help_formatter.h"

#include <algorithm>
#include <string_view>

#include "programs/cli/terminal_width.h"

namespace zel::cli {

namespace {

constexpr std::size_t kLeastWidth = 40;
/// Names and descriptions are in two columns, unless a terminal is too narrow for that.
constexpr std::size_t kNameWidth = 28;
constexpr std::size_t kLeastTwoColumns = 64;
constexpr std::size_t kNameIndent = 2;
constexpr std::size_t kNarrowIndent = 6;

struct Layout {
    /// Columns of a line, with its indentation.
    std::size_t width;
    /// Of each line after the first.
    std::size_t indent = 0;
    /// At the end of each line but the last.
    std::string_view joint = {};
};

/// Breaks a line at blanks. A longer word is not broken.
std::string Wrapped(std::string_view text, const Layout& layout) {
    std::string lines;
    std::size_t room = layout.width;
    while (text.size() > room) {
        const std::size_t most = room - layout.joint.size();
        std::size_t end = text.find_first_not_of(' ');
        end = text.rfind(' ', most) > end ? text.rfind(' ', most) : std::string_view::npos;
        if (end == std::string_view::npos || end > most) end = std::min(text.find(' ', most), text.size());
        lines.append(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (text.empty()) return lines;
        lines.append(layout.joint).append("\n").append(layout.indent, ' ');
        room = layout.width - layout.indent;
    }
    return lines.append(text);
}

}  // namespace

HelpFormatter::HelpFormatter() : m_width(std::max(TerminalWidth(), kLeastWidth)) {
    label("Positionals", "Arguments");
    label("REQUIRED", "(required)");
    label("SUBCOMMAND", "COMMAND");
}

std::string HelpFormatter::Entry(const std::string& name, std::string_view description) const {
    std::string lines = std::string(kNameIndent, ' ') + name;
    const std::size_t indent = m_width < kLeastTwoColumns ? kNarrowIndent : kNameWidth;
    if (indent == kNarrowIndent || lines.size() >= indent) {
        lines.append("\n").append(indent, ' ');
    } else {
        lines.resize(indent, ' ');
    }
    std::string text = Wrapped(description, {m_width - indent});
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
        text.insert(at + 1, indent, ' ');
    return lines + text + "\n";
}

std::string HelpFormatter::make_description(const CLI::App* app) const {
    return Wrapped(app->get_description(), {m_width}) + "\n\n";
}

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const {
    std::string required;
    for (const CLI::Option* option : app->get_options()) {
        if (option->nonpositional() && option->get_required())
            required += option->get_name() + " " + option->get_type_name() + " ";
    }
    // Every command has --help, so that its usage contains "[OPTIONS] ".
    std::string usage = Formatter::make_usage(app, std::move(name));
    if (!required.empty()) usage.insert(usage.find("] ") + 2, required);
    usage.pop_back();
    return Wrapped(usage, {m_width, kNarrowIndent}) + "\n";
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
    return Entry(command->get_display_name(true), command->get_description());
}

std::string HelpFormatter::make_option(const CLI::Option* option, bool is_positional) const {
    return Entry(make_option_name(option, is_positional) + make_option_opts(option), option->get_description());
}

// Which options go together is in their descriptions.
std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
    std::string text;
    if (option->get_type_size() != 0 && !option->get_type_name().empty()) text += " " + option->get_type_name();
    if (option->get_expected_max() >= CLI::detail::expected_max_vector_size) text += " ...";
    if (option->get_required()) text += " " + get_label("REQUIRED");
    return text;
}

std::string HelpFormatter::make_option_usage(const CLI::Option* option) const {
    std::string text = make_option_name(option, true);
    if (option->get_expected_max() >= CLI::detail::expected_max_vector_size) text += "...";
    return option->get_required() ? text : "[" + text + "]";
}

// An indented line is an example, which can be copied as it is.
std::string HelpFormatter::make_footer(const CLI::App* app) const {
    const std::string footer = app->get_footer();
    std::string lines;
    for (std::size_t begin = 0; begin < footer.size();) {
        const std::size_t end = std::min(footer.find('\n', begin), footer.size());
        const std::string line = footer.substr(begin, end - begin);
        const bool is_example = line.starts_with(' ');
        lines += Wrapped(line, is_example ? Layout{m_width, kNarrowIndent, " \\"} : Layout{m_width}) + "\n";
        begin = end + 1;
    }
    return lines;
}

}  // namespace zel::cli
