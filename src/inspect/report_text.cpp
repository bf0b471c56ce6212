#include "inspect/report_text.h"

#include <algorithm>
#include <cstdio>

#include "base/terminal_text.h"
#include "base/text_columns.h"
#include "inspect/words.h"

namespace zel::inspect {

namespace {

constexpr std::size_t kListedRows = 24, kListedTabs = 12, kListedFindings = 16;
constexpr int kLabelWidth = 12;
constexpr std::size_t kColumns = 118;

std::string Left(const std::string& text, std::size_t width) {
    return base::Padded(text, width);
}

std::string Right(const std::string& text, std::size_t width) {
    return base::Padded(text, width, base::Align::kRight);
}

std::string Right(int number, std::size_t width) {
    return Right(std::to_string(number), width);
}

std::string Colour(std::uint32_t rgb) {
    char text[16];
    std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(rgb));
    return text;
}

std::string Joined(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers) {
        if (!text.empty()) text += ' ';
        text += std::to_string(number);
    }
    return text;
}

std::string RunsText(const std::vector<std::string>& runs) {
    std::string text;
    for (const std::string& run : runs) text.append(text.empty() ? "\"" : " \"").append(run).append("\"");
    return text.empty() ? "-" : text;
}

std::size_t CountOf(int number) {
    return static_cast<std::size_t>(std::max(number, 0));
}

/// Writes one report, line by line.
class Writer {
  public:
    explicit Writer(const FileReport& report) : m_report(report) {}

    std::string Write();

  private:
    void Head();
    void Sections();
    void Message(const MessageReport& message);
    void Fonts(const MessageReport& message);
    void Palette(const MessageReport& message);
    void Rows(const MessageReport& message);
    void Tabs(const MessageReport& message);
    void Font(const FontReport& font);
    void Findings(const char* title, const std::vector<std::string>& findings);

    void Line(const std::string& text) { m_text.append(text).append("\n"); }
    void Labelled(const std::string& label, const std::string& text) { Line("  " + Left(label, kLabelWidth) + text); }
    void Title(const std::string& title) {
        m_text += '\n';
        Line("  " + title);
    }

    const FileReport& m_report;
    std::string m_text;
};

std::string Writer::Write() {
    Head();
    if (m_report.message) Message(*m_report.message);
    if (m_report.font) Font(*m_report.font);
    if (m_report.kind == FileKind::kRgba) {
        if (m_report.picture) Labelled("Picture", Contents(m_report) + " pixels");
        Labelled("Import", "passes it to the host, as an object or as a background; the module reads no further");
    }
    if (m_report.list) {
        const bool bitstream = m_report.kind == FileKind::kBitstreamList;
        Labelled("Lines", Number(CountOf(m_report.list->lines)));
        Labelled("Entries", Count(CountOf(m_report.list->entries), bitstream ? "Bitstream number" : "Bitstream name"));
    }
    Sections();
    if (m_report.message) {
        Rows(*m_report.message);
        Tabs(*m_report.message);
    }
    Findings("Defects", m_report.defects);
    Findings("Remarks", m_report.remarks);
    return m_text;
}

void Writer::Head() {
    const std::string kind = m_report.kind == FileKind::kOther ? "" : KindName(m_report.kind) + ", ";
    Line(base::TerminalText(m_report.name) + ": " + kind + VerdictText(m_report));
    std::string size = Count(m_report.size, "byte");
    if (m_report.file_type && m_report.kind != FileKind::kText && !m_report.list) {
        size += ", file type " + std::to_string(*m_report.file_type);
        const std::string name = m_report.message ? m_report.message->type_name
                                 : m_report.font  ? m_report.font->type_name
                                                  : std::string();
        if (!name.empty()) size += " \"" + name + '"';
    }
    Labelled("Size", size);
}

void Writer::Sections() {
    if (m_report.sections.empty()) return;
    Title(Left("Section", 24) + Right("offset", 10) + Right("bytes", 12));
    for (const Section& section : m_report.sections) {
        std::string name = section.name;
        if (section.count > 1) name += "s (" + Number(CountOf(section.count)) + ")";
        std::string line = "  " + Left(name, 24) + Right(Number(section.offset), 10) + Right(Number(section.size), 12);
        if (section.present < section.size)
            line += section.present == 0 ? "  missing" : "  only " + Number(section.present) + " present";
        Line(line);
    }
}

void Writer::Message(const MessageReport& message) {
    Labelled("Standard",
             std::string(NameOf(message.standard)) + ", " + std::to_string(ActiveLines(message.standard)) + " lines");
    Labelled("Frame", "left " + std::to_string(message.frame[0]) + ", top " + std::to_string(message.frame[1]) +
                          ", right " + std::to_string(message.frame[2]) + ", bottom " +
                          std::to_string(message.frame[3]));
    Fonts(message);
    Palette(message);
    if (message.background) Labelled("Background", *message.background);
    if (message.flash_font) Labelled("Flash font", *message.flash_font);
}

void Writer::Fonts(const MessageReport& message) {
    std::string line;
    for (const SlotReport& slot : message.slots) {
        std::string item = "slot " + std::to_string(slot.slot) + ": " +
                           (slot.number ? std::to_string(*slot.number) : "none") + " (" +
                           (slot.characters == 0 ? "not used" : Count(CountOf(slot.characters), "character")) + ")";
        if (!line.empty() && kLabelWidth + line.size() + item.size() > kColumns) {
            Labelled(m_text.ends_with(",\n") ? "" : "Fonts", line + ",");
            line.clear();
        }
        if (!line.empty()) line += ", ";
        line += item;
    }
    Labelled(m_text.ends_with(",\n") ? "" : "Fonts", line.empty() ? "none" : line);
}

void Writer::Palette(const MessageReport& message) {
    if (message.palette.empty()) {
        Labelled("Palette", "missing");
        return;
    }
    std::string faces = "face  ", edges = "edge  ";
    for (const SetColours& set : message.palette) {
        faces += Colour(set.face) + ' ';
        edges += Colour(set.edge) + ' ';
    }
    Labelled("Palette", faces + (message.own_palette ? " the message's own" : " the default"));
    edges.pop_back();
    Labelled("", edges);
}

void Writer::Rows(const MessageReport& message) {
    const auto size = message.rows.size();
    std::string title = Count(CountOf(message.row_count), "row");
    if (message.y_offset != 0) title += ", moved up by " + Count(CountOf(message.y_offset), "line") + " on import";
    Title(title);
    if (size == 0) return;
    std::size_t slots = 7, colours = 9;  // widths
    for (const RowReport& row : message.rows) {
        slots = std::max(slots, Joined(row.slots).size() + 2);
        colours = std::max(colours, Joined(row.colour_sets).size() + 2);
    }
    Line("    row     y   top  bottom  " + Left("slots", slots) + Left("colours", colours) + "chars  text");
    std::size_t listed = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const RowReport& row = message.rows[i];
        if (listed == kListedRows) {
            Line("    and " + Count(size - i, "more row", "more rows"));
            break;
        }
        ++listed;
        std::size_t same = i;  // the last of consecutive rows without characters
        while (row.characters == 0 && same + 1 < size && message.rows[same + 1].characters == 0) ++same;
        if (same > i + 1) {
            Line("    rows " + std::to_string(row.index) + " to " + std::to_string(message.rows[same].index) +
                 " have no characters");
            i = same;
            continue;
        }
        Line("  " + Right(row.index, 5) + Right(row.y, 6) + Right(row.top, 6) + Right(row.bottom, 8) + "  " +
             Left(Joined(row.slots), slots) + Left(Joined(row.colour_sets), colours) + Right(row.characters, 5) + "  " +
             RunsText(row.runs));
    }
}

void Writer::Tabs(const MessageReport& message) {
    if (message.tabs.empty()) return;
    std::size_t width = 8;
    for (const TabReport& tab : message.tabs) width = std::max(width, tab.name.size());
    Title(Count(message.tabs.size(), "tab field"));
    Line("    " + Left("name", width) + "  start   end   row  slot  colour");
    for (std::size_t i = 0; i < message.tabs.size(); ++i) {
        const TabReport& tab = message.tabs[i];
        if (i == kListedTabs) {
            Line("    and " + Count(message.tabs.size() - i, "more tab field"));
            break;
        }
        std::string line = "    " + Left(tab.name.empty() ? "-" : tab.name, width) + Right(tab.start, 7) +
                           Right(tab.end, 6) + Right(tab.row, 6) +
                           Right(tab.slot ? std::to_string(*tab.slot) : "none", 6) + Right(tab.colour_set, 8);
        if (!tab.rejected.empty()) line += "  left out";
        Line(line);
    }
}

std::string EdgeText(const FontReport& font) {
    const std::string size = Count(CountOf(font.edge_size), "pixel");
    switch (font.edge_type) {
        case 0:
            return "none";
        case 1:
            return "border of " + size;
        case 2:
            return "drop shadow of " + size + " at " + std::to_string(font.edge_angle) + " degrees";
        case 3:
            return "offset of " + size + " at " + std::to_string(font.edge_angle) + " degrees";
        default:
            return "type " + std::to_string(font.edge_type) + ", which draws none";
    }
}

std::string GlyphText(const GlyphReport& glyph) {
    return std::to_string(glyph.width) + " x " + std::to_string(glyph.height) + " (code " + CodeName(glyph.code) + ")";
}

void Writer::Font(const FontReport& font) {
    Labelled("Name", '"' + font.name + "\", id \"" + font.id + '"');
    Labelled("Height", Count(CountOf(font.height), "line") + ", row top offset " + std::to_string(font.row_top_offset) +
                           ", row inset " + std::to_string(font.row_inset));
    Labelled("Edge", EdgeText(font));
    Labelled("Flags", Hex(static_cast<std::uint32_t>(font.flags)) + ": " + font.flags_in_words);
    Labelled("Encoding", Count(font.encoding_size, "byte"));
    Labelled("Glyphs", std::to_string(font.stored_glyphs) + " stored, " + std::to_string(font.run_coded_glyphs) +
                           " run-coded, " + std::to_string(font.without_glyph) + " codes without");
    if (font.smallest && font.largest)
        Labelled("Bitmaps", "from " + GlyphText(*font.smallest) + " to " + GlyphText(*font.largest) + " pixels");
}

void Writer::Findings(const char* title, const std::vector<std::string>& findings) {
    if (findings.empty()) return;
    Title(title);
    for (std::size_t i = 0; i < findings.size() && i < kListedFindings; ++i) Line("    - " + findings[i]);
    if (findings.size() > kListedFindings) Line("    and " + Number(findings.size() - kListedFindings) + " more");
}

}  // namespace

std::string ReportText(const FileReport& report) {
    return Writer(report).Write();
}

std::string KindName(FileKind kind) {
    switch (kind) {
        case FileKind::kMessage:
            return "message";
        case FileKind::kFont:
            return "font";
        case FileKind::kRgba:
            return "RGBA picture";
        case FileKind::kBitstreamList:
            return "Bitstream list";
        case FileKind::kTypefaceList:
            return "typeface list";
        case FileKind::kText:
            return "text";
        case FileKind::kOther:
            break;
    }
    return "foreign";
}

std::string VerdictText(const FileReport& report) {
    switch (report.verdict) {
        case Verdict::kWhole:
            return "whole";
        case Verdict::kReadable:
            return "readable, with defects";
        case Verdict::kBroken:
            return "broken: " + report.reason;
        case Verdict::kForeign:
            break;
    }
    return "not a kind that the import reads: " + report.reason;
}

std::string Contents(const FileReport& report) {
    if (report.message) {
        std::size_t characters = 0;
        for (const RowReport& row : report.message->rows) characters += CountOf(row.characters);
        std::vector<int> numbers;
        for (const SlotReport& slot : report.message->slots) {
            if (slot.number) numbers.push_back(*slot.number);
        }
        std::string text = Count(CountOf(report.message->row_count), "row") + ", " + Count(characters, "character");
        if (!numbers.empty()) text += (numbers.size() == 1 ? ", font " : ", fonts ") + Joined(numbers);
        if (!report.message->tabs.empty()) text += ", " + Count(report.message->tabs.size(), "tab");
        return text;
    }
    if (report.font) {
        return '"' + report.font->name + "\", " + Count(CountOf(report.font->height), "line") + ", " +
               Count(CountOf(report.font->stored_glyphs + report.font->run_coded_glyphs), "glyph");
    }
    if (report.picture) return std::to_string(report.picture->width) + " x " + std::to_string(report.picture->height);
    if (report.list) return Count(CountOf(report.list->entries), "entry", "entries");
    return {};
}

}  // namespace zel::inspect
