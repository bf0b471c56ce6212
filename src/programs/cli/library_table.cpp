#include "programs/cli/library_table.h"

#include <array>

#include "base/terminal_text.h"
#include "base/text.h"
#include "base/text_columns.h"
#include "base/utf8.h"
#include "host/export/message_title.h"

namespace zel::cli {

namespace {

constexpr std::size_t kMaxTextWidth = 60;  // in characters

// The first line of a text, shortened for the table.
std::string FirstLine(const std::string& text) {
    std::string line = base::TerminalText(exporter::TitleOf(text));
    if (base::CharacterCount(line) <= kMaxTextWidth) return line;
    std::size_t end = 0;
    for (std::size_t n = 0; n < kMaxTextWidth - 3; ++n) {
        end += base::FirstCharacter(std::string_view(line).substr(end)).size;
    }
    return line.substr(0, end) + "...";
}

}  // namespace

std::string KindName(library::RecordingKind kind) {
    switch (kind) {
        case library::RecordingKind::kMessage:
            break;
        case library::RecordingKind::kRgbaObject:
            return "RGBA object";
        case library::RecordingKind::kRgbaBackground:
            return "RGBA background";
    }
    return "message";
}

std::string LibraryTable(const std::vector<library::LibraryEntry>& entries) {
    std::vector<std::vector<std::string>> lines;
    lines.reserve(entries.size());
    for (const library::LibraryEntry& entry : entries) {
        const auto warnings = static_cast<std::size_t>(entry.warnings);
        lines.push_back({base::NumberedName(entry.key.number), base::TerminalText(entry.key.disk), KindName(entry.kind),
                         warnings == 0 ? "" : base::Counted(warnings, "warning"), FirstLine(entry.text)});
    }
    constexpr base::ColumnStyle kColumn{base::Align::kLeft, true};
    return base::TableText(lines, std::array{kColumn, kColumn, kColumn, kColumn, kColumn});
}

}  // namespace zel::cli
