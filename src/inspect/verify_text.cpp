#include "inspect/verify_text.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

#include "base/terminal_text.h"
#include "inspect/report_text.h"
#include "inspect/words.h"

namespace zel::inspect {

namespace {

/// Places that a line names after the first one.
constexpr std::size_t kListedPlaces = 4;

/// All findings about one rule and one field.
struct Group {
    std::vector<const Finding*> findings;
    std::uint64_t count = 0;

    const Finding& First() const { return *findings.front(); }
    bool Takes(const Finding& finding) const {
        const Finding& first = First();
        return first.rule == finding.rule && first.record == finding.record && first.Kind() == finding.Kind() &&
               std::string_view(first.Field() != nullptr ? first.Field() : "") ==
                   (finding.Field() != nullptr ? finding.Field() : "") &&
               (first.record != RecordKind::kFile || first.section == finding.section);
    }
};

std::vector<Group> GroupsOf(const FileReport& report, Severity severity) {
    std::vector<Group> groups;
    for (const Finding& finding : report.findings) {
        if (finding.Kind() != severity) continue;
        auto group = std::ranges::find_if(groups, [&](const Group& of) { return of.Takes(finding); });
        if (group == groups.end()) group = groups.insert(groups.end(), Group());
        group->findings.push_back(&finding);
        group->count += finding.count;
    }
    return groups;
}

std::string HexOffset(std::uint64_t offset) {
    char text[24];
    std::snprintf(text, sizeof text, "0x%04llX", static_cast<unsigned long long>(offset));
    return text;
}

std::string OffsetText(std::uint64_t offset) {
    return HexOffset(offset) + " (" + std::to_string(offset) + ")";
}

std::string NounOf(RecordKind record, std::uint64_t count) {
    switch (record) {
        case RecordKind::kFile:
            break;
        case RecordKind::kRow:
            return Count(count, "row");
        case RecordKind::kCharacter:
            return Count(count, "character");
        case RecordKind::kTabField:
            return Count(count, "tab field");
        case RecordKind::kGlyph:
            return Count(count, "glyph");
        case RecordKind::kLine:
            return Count(count, "line");
    }
    return Count(count, "place");
}

/// What a place has: "char_font is 20", "12 bytes".
std::string ValueText(const Finding& finding, const Place& place) {
    const char* const field = finding.Field();
    if (finding.rule == Rule::kSectionPresent || finding.rule == Rule::kSectionNeeded ||
        finding.rule == Rule::kRowHeadPresent)
        return Number(static_cast<std::uint64_t>(place.value)) + " of " + Count(place.size, "byte") + " present";
    if (finding.rule == Rule::kRowsPresent)
        return Count(static_cast<std::uint64_t>(place.value), "row") + " from here on not in the file";
    if (place.value == Place::kNoValue)
        return field != nullptr ? std::string(field) + ", " + Count(place.size, "byte") : Count(place.size, "byte");
    const bool is_hex = finding.rule == Rule::kBackgroundKind || finding.rule == Rule::kPlainFont;
    return std::string(field != nullptr ? field : "value") + " is " +
           (is_hex ? Hex(static_cast<std::uint32_t>(place.value)) : std::to_string(place.value));
}

std::string WhereText(const Finding& finding, const Place& place) {
    const std::string record = RecordName(finding, place);
    return record.empty() ? finding.section : record;
}

class VerificationWriter {
  public:
    VerificationWriter(const FileReport& report, bool all) : m_report(report), m_all(all) {}

    std::string Write();

  private:
    void Head();
    void Notes();
    void Line(const char* kind, const Group& group);
    void EveryPlace(const Group& group);
    /// One line for all unread fields.
    void UnreadLine(const std::vector<Group>& groups);

    const FileReport& m_report;
    const bool m_all;
    std::string m_text;
};

std::string VerificationWriter::Write() {
    Head();
    for (const Group& group : GroupsOf(m_report, Severity::kFault)) Line("fault", group);
    Notes();
    return m_text;
}

void VerificationWriter::Head() {
    const FindingCounts counts = CountFindings(m_report);
    m_text = base::TerminalText(m_report.name) + ": ";
    if (m_report.kind != FileKind::kOther) m_text += KindName(m_report.kind) + ", ";
    m_text += m_report.verdict == Verdict::kReadable ? "readable" : VerdictText(m_report);
    if (counts.faults != 0) m_text += "; " + Count(counts.faults, "fault");
    if (counts.notes != 0) m_text += "; " + Count(counts.notes, "note");
    m_text += '\n';
}

void VerificationWriter::Notes() {
    std::vector<Group> unread;
    for (const Group& group : GroupsOf(m_report, Severity::kNote)) {
        const Rule rule = group.First().rule;
        if (!m_all && (rule == Rule::kUnreadField || rule == Rule::kTextRest)) {
            unread.push_back(group);
        } else {
            Line("note ", group);
        }
    }
    if (!unread.empty()) UnreadLine(unread);
}

void VerificationWriter::Line(const char* kind, const Group& group) {
    const Finding& first = group.First();
    const Place& place = first.places.front();
    const RuleText& rule = TextOf(first.rule);
    m_text += std::string("  ") + kind + "  " + OffsetText(place.offset) + "  ";
    if (group.count > 1) m_text += NounOf(first.record, group.count) + ", first ";
    const std::string where = WhereText(first, place);
    if (!where.empty()) m_text += where + ": ";
    m_text += ValueText(first, place) + "; ";
    if (rule.severity == Severity::kFault) m_text += "rule: ";
    m_text += std::string(rule.requirement) + "; import " + rule.effect;
    if (group.count > 1 && !m_all) {
        std::vector<std::string> others;
        for (const Finding* finding : group.findings) {
            for (const Place& other : finding->places) {
                if (&other != &place && others.size() < kListedPlaces) others.push_back(HexOffset(other.offset));
            }
        }
        m_text += "; also at " + Listed(others);
        if (group.count - 1 > others.size()) m_text += " and " + Number(group.count - 1 - others.size()) + " more";
    }
    m_text += '\n';
    if (group.count > 1 && m_all) EveryPlace(group);
}

void VerificationWriter::EveryPlace(const Group& group) {
    std::uint64_t named = 0;
    for (const Finding* finding : group.findings) {
        for (const Place& place : finding->places) {
            const std::string where = WhereText(*finding, place);
            m_text += "           " + OffsetText(place.offset) + "  " + (where.empty() ? "" : where + ": ") +
                      ValueText(*finding, place) + "\n";
            ++named;
        }
    }
    if (named < group.count) m_text += "           and " + Number(group.count - named) + " more\n";
}

void VerificationWriter::UnreadLine(const std::vector<Group>& groups) {
    m_text += "  note   " + OffsetText(groups.front().First().places.front().offset) +
              "  not zero, though nothing reads it: ";
    std::string_view section;
    for (const Group& group : groups) {
        const Finding& first = group.First();
        if (&group == &groups.front() || first.section != section) {
            section = first.section;
            m_text += (&group == &groups.front() ? "" : "; ") + first.section + (section.empty() ? "" : ": ");
        } else {
            m_text += ", ";
        }
        m_text += first.Field();
        if (group.count > 1) m_text += " (" + Number(group.count) + ")";
    }
    m_text += '\n';
}

}  // namespace

FindingCounts CountFindings(const FileReport& report) {
    FindingCounts counts;
    for (const Finding& finding : report.findings)
        (finding.Kind() == Severity::kFault ? counts.faults : counts.notes) += finding.count;
    return counts;
}

std::string RecordName(const Finding& finding, const Place& place) {
    switch (finding.record) {
        case RecordKind::kFile:
            break;
        case RecordKind::kRow:
            return "row " + std::to_string(place.index);
        case RecordKind::kCharacter:
            return "row " + std::to_string(place.row) + ", record " + std::to_string(place.index);
        case RecordKind::kTabField:
            return "tab field " + std::to_string(place.index);
        case RecordKind::kGlyph:
            return "code " + CodeName(place.index);
        case RecordKind::kLine:
            return "line " + std::to_string(place.index + 1);
    }
    return {};
}

std::string VerifyText(const FileReport& report, bool all) {
    return VerificationWriter(report, all).Write();
}

}  // namespace zel::inspect
