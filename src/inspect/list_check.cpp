#include "inspect/list_check.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "inspect/findings.h"
#include "inspect/words.h"
#include "module/fontmap/format/name_lists.h"
#include "module/fontmap/format/text_lines.h"

namespace zel::inspect {

namespace {

/// In characters, without the line end.
constexpr std::size_t kLongestLine = fontmap::TextLines::kMaxLine - 1;
constexpr std::size_t kLongestName = 59;
constexpr std::size_t kLongestNumber = 4;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether a byte may occur in a text. A NUL is reported by itself.
bool MayBeText(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= ' ' ? byte != 0x7F : byte == '\t' || byte == '\n' || byte == '\r' || byte == '\f' || byte == '\0';
}

/// Digits of an entry's number, of which only the first ones are read.
std::size_t NumberLength(std::string_view line) {
    line.remove_prefix(std::min(line.find('\t', line.starts_with('\t') ? 1 : 0), line.size()));
    const auto first = std::ranges::find_if(line, IsDigit);
    return static_cast<std::size_t>(std::find_if_not(first, line.end(), IsDigit) - first);
}

Finding Collected(Rule rule) {
    Finding finding;
    finding.rule = rule;
    finding.record = RecordKind::kLine;
    return finding;
}

class ListChecker {
  public:
    ListChecker(std::string_view file, FileReport& report)
        : m_file(file), m_report(report), m_bitstream(report.kind == FileKind::kBitstreamList) {}

    void Check();

  private:
    void CheckEnd();
    void CheckLines();
    void CheckEntries();
    void CheckBitstreamLine(std::string_view line, const Place& place);
    void CheckTypefaceLine(std::string_view line, const Place& place);
    void AddKey(std::string key, const Place& place);
    void CheckName(std::string_view name, Place place);
    void ReportAll();

    const std::string_view m_file;
    FileReport& m_report;
    const bool m_bitstream;
    /// What an import reads of the file.
    std::string_view m_text;
    /// Of each line of the text, in the file.
    std::vector<Place> m_lines;
    fontmap::BitstreamLineReader m_reader;
    std::set<std::string> m_keys, m_repeated;
    Finding m_wrong_bytes = Collected(Rule::kListText), m_long_lines = Collected(Rule::kListLine),
            m_long_names = Collected(Rule::kListField), m_nuls = Collected(Rule::kListNul),
            m_long_numbers = Collected(Rule::kListNumber), m_no_entries = Collected(Rule::kListEntry),
            m_repetitions = Collected(Rule::kListRepeated);
};

void ListChecker::Check() {
    CheckEnd();
    CheckLines();
    CheckEntries();
    m_report.list = ListReport{static_cast<int>(m_lines.size()), static_cast<int>(m_keys.size())};
    ReportAll();
    Conclude(m_report, false);
}

void ListChecker::CheckEnd() {
    m_text = m_file.substr(0, fontmap::kMaxListSize);
    if (m_text.size() < m_file.size()) {
        AddFinding(m_report, Rule::kListSize, {.offset = m_text.size(), .size = m_file.size() - m_text.size()}).what =
            "it is longer than " + Count(fontmap::kMaxListSize, "byte") + ", and read no further";
    }
    const std::size_t end = m_text.find(fontmap::kEndOfText);
    if (end == std::string_view::npos) return;
    const std::string_view rest = m_text.substr(end + 1);
    m_text = m_text.substr(0, end);
    // Old systems fill up the last block of a text.
    if (std::ranges::all_of(rest, [](char c) { return c == '\0' || c == fontmap::kEndOfText; })) return;
    AddFinding(m_report, Rule::kListEndOfText,
               {.offset = end, .size = m_file.size() - end, .value = fontmap::kEndOfText})
        .what = Count(m_file.size() - end, "byte") + " from byte 26 at " + Number(end) + " on, which nothing reads";
}

void ListChecker::CheckLines() {
    for (std::size_t start = 0; start < m_text.size();) {
        const std::size_t end = std::min(m_text.find('\n', start), m_text.size());
        std::string_view line = m_text.substr(start, end - start);
        if (end < m_text.size() && line.ends_with('\r')) line.remove_suffix(1);
        Place place{.offset = start, .size = line.size(), .index = static_cast<std::int32_t>(m_lines.size())};
        m_lines.push_back(place);
        if (line.size() > kLongestLine) {
            place.value = static_cast<std::int64_t>(line.size());
            m_long_lines.Add(place);
        }
        if (const std::size_t nul = line.find('\0'); nul != std::string_view::npos)
            m_nuls.Add({.offset = start + nul, .size = line.size() - nul, .index = place.index});
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (MayBeText(line[i])) continue;
            m_wrong_bytes.Add(
                {.offset = start + i, .size = 1, .value = static_cast<unsigned char>(line[i]), .index = place.index});
        }
        start = end + 1;
    }
}

/// Reads the entries as an import does.
void ListChecker::CheckEntries() {
    std::string text(m_text);
    fontmap::ConvertToText(text);
    fontmap::TextLines lines(text);
    lines.SkipHeadings();
    std::size_t line_index = 0;
    const char* counted = text.data();
    while (const auto line = lines.Next()) {
        line_index += static_cast<std::size_t>(std::count(counted, line->data(), '\n'));
        counted = line->data();
        const Place& place = m_lines[std::min(line_index, m_lines.size() - 1)];
        if (m_bitstream) {
            CheckBitstreamLine(*line, place);
        } else {
            CheckTypefaceLine(*line, place);
        }
    }
}

void ListChecker::CheckBitstreamLine(std::string_view line, const Place& place) {
    fontmap::BitstreamEntry entry;
    if (!m_reader.Read(line, entry)) {
        // An entry with a blank after its number counts as a heading.
        std::string_view visible = line;
        while (visible.ends_with(' ') || visible.ends_with('\t')) visible.remove_suffix(1);
        const bool has_number = !visible.empty() && IsDigit(visible.back());
        if (has_number && visible.find('\t') != std::string_view::npos) m_no_entries.Add(place);
        return;
    }
    AddKey(std::to_string(entry.number), place);
    CheckName(entry.name, place);
    if (entry.indented) CheckName(entry.family, place);
    if (const std::size_t length = NumberLength(line); length > kLongestNumber) {
        Place number = place;
        number.value = static_cast<std::int64_t>(length);
        m_long_numbers.Add(number);
    }
}

void ListChecker::CheckTypefaceLine(std::string_view line, const Place& place) {
    const auto entry = fontmap::ReadTypefaceLine(line);
    if (!entry) {
        if (!line.empty()) m_no_entries.Add(place);
        return;
    }
    AddKey(std::string(entry->bitstream_name), place);
    CheckName(entry->typeface, place);
    CheckName(entry->bitstream_name, place);
}

void ListChecker::AddKey(std::string key, const Place& place) {
    if (m_keys.insert(key).second) return;
    m_repeated.insert(std::move(key));
    m_repetitions.Add(place);
}

void ListChecker::CheckName(std::string_view name, Place place) {
    if (name.size() <= kLongestName) return;
    place.value = static_cast<std::int64_t>(name.size());
    m_long_names.Add(place);
}

void ListChecker::ReportAll() {
    const auto lines = [](const Finding& finding, std::string_view one, std::string_view several) {
        return Count(finding.count, one, several);
    };
    AddFinding(m_report, std::move(m_wrong_bytes), "it contains bytes that are not text");
    if (!m_repeated.empty()) {
        std::vector<std::string> names;
        for (const std::string& key : m_repeated) names.push_back(m_bitstream ? key : '"' + Printable(key) + '"');
        AddFinding(m_report, std::move(m_repetitions),
                   (m_bitstream ? "repeated numbers, of which the last counts: "
                                : "repeated names, of which the last counts: ") +
                       Listed(names));
    }
    AddFinding(m_report, m_long_lines,
               lines(m_long_lines, "line is", "lines are") + " longer than " + std::to_string(kLongestLine) +
                   " characters, and read as several");
    AddFinding(m_report, m_nuls,
               lines(m_nuls, "line contains", "lines contain") + " a NUL, after which nothing is read");
    AddFinding(
        m_report, m_long_names,
        lines(m_long_names, "name is", "names are") + " longer than " + std::to_string(kLongestName) + " characters");
    AddFinding(m_report, m_long_numbers,
               lines(m_long_numbers, "number has", "numbers have") + " more than 4 digits, of which the first 4 count");
    AddFinding(m_report, std::move(m_no_entries));
    if (!m_text.empty() && !m_text.ends_with('\n') && m_text.size() == m_file.size()) {
        Finding& last = AddFinding(m_report, Rule::kListLastLine, m_lines.back(), RecordKind::kLine);
        last.what = "the last line has no line end";
    }
}

}  // namespace

void CheckList(std::string_view file, FileReport& report) {
    ListChecker(file, report).Check();
}

}  // namespace zel::inspect
