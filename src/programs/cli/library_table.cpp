#include "programs/cli/library_table.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "host/export/message_title.h"
#include "programs/cli/text_columns.h"

namespace zel::cli {

namespace {

constexpr std::size_t kMaxTextWidth = 60;  // in characters

// The character that a text begins with: its bytes, or none for what is no UTF-8.
std::size_t CharacterSize(std::string_view text) {
    const auto byte = [text](std::size_t n) { return static_cast<std::uint8_t>(text[n]); };
    const unsigned first = byte(0);
    const std::size_t size = first < 0x80 ? 1 : first >= 0xC2 && first < 0xE0 ? 2 : first >> 4 == 0xE ? 3 : 4;
    if ((first >= 0x80 && first < 0xC2) || first > 0xF4 || size > text.size()) return 0;
    for (std::size_t n = 1; n < size; ++n) {
        if (byte(n) >> 6 != 2) return 0;
    }
    const bool overlong = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xF0 && byte(1) < 0x90);
    const bool beyond = (first == 0xED && byte(1) >= 0xA0) || (first == 0xF4 && byte(1) >= 0x90);
    return overlong || beyond ? 0 : size;
}

bool IsControl(std::string_view character) {
    const auto first = static_cast<std::uint8_t>(character[0]);
    return first < ' ' || first == 0x7F || (first == 0xC2 && static_cast<std::uint8_t>(character[1]) < 0xA0);
}

// The first line of a text, shortened for the table.
std::string FirstLine(const std::string& text) {
    std::string line = TerminalText(exporter::TitleOf(text));
    if (Characters(line) <= kMaxTextWidth) return line;
    std::size_t end = 0;
    for (std::size_t n = 0; n < kMaxTextWidth - 3; ++n) end += CharacterSize(std::string_view(line).substr(end));
    return line.substr(0, end) + "...";
}

}  // namespace

std::string TerminalText(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t size = CharacterSize(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(size, 1));
        shown += size == 0 || IsControl(character) ? std::string_view("?") : character;
        text.remove_prefix(character.size());
    }
    return shown;
}

std::string NumberName(int number) {
    char name[16];
    std::snprintf(name, sizeof name, ".%04d", number);
    return name;
}

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

std::string CountOf(std::size_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string LibraryTable(const std::vector<library::LibraryEntry>& entries) {
    using Cells = std::array<std::string, 5>;
    std::vector<Cells> lines;
    lines.reserve(entries.size());
    std::array<std::size_t, 5> widths{};
    for (const library::LibraryEntry& entry : entries) {
        const auto warnings = static_cast<std::size_t>(entry.warnings);
        const Cells& cells =
            lines.emplace_back(Cells{NumberName(entry.key.number), TerminalText(entry.key.disk), KindName(entry.kind),
                                     warnings == 0 ? "" : CountOf(warnings, "warning"), FirstLine(entry.text)});
        for (std::size_t n = 0; n < cells.size(); ++n) widths[n] = std::max(widths[n], Characters(cells[n]));
    }
    std::string table;
    for (const Cells& cells : lines) {
        std::string line;
        for (std::size_t n = 0; n < cells.size(); ++n) {
            if (widths[n] != 0) line += "  " + Padded(cells[n], widths[n]);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        table += line + '\n';
    }
    return table;
}

}  // namespace zel::cli
