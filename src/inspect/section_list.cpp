#include "inspect/section_list.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "inspect/findings.h"
#include "inspect/words.h"

namespace zel::inspect {

namespace {

constexpr std::string_view kStoredGlyphSection = "stored glyph";

}  // namespace

void SectionList::OnSection(const char* name, std::uint64_t offset, std::uint64_t size, std::uint64_t present) {
    if (!sections.empty() && name == kStoredGlyphSection && sections.back().name == kStoredGlyphSection) {
        Section& all = sections.back();
        all.size += size;
        all.present += present;
        ++all.count;
        return;
    }
    sections.push_back({name, offset, size, present, 1});
}

const Section* SectionList::Find(std::string_view name) const {
    const auto found = std::ranges::find(sections, name, &Section::name);
    return found != sections.end() ? &*found : nullptr;
}

std::uint64_t SectionList::End() const {
    return sections.empty() ? 0 : sections.back().offset + sections.back().size;
}

void ReportCutSections(FileReport& report, bool refused) {
    std::vector<std::string> missing;
    std::optional<std::size_t> first_missing;
    for (const Section& section : report.sections) {
        if (section.present == section.size) continue;
        const bool needed = refused && &section == &report.sections.back();
        if (!needed && section.name == kStoredGlyphSection) continue;  // reported with the glyph
        Finding& finding = AddFinding(report, needed ? Rule::kSectionNeeded : Rule::kSectionPresent,
                                      {section.offset, section.size, static_cast<std::int64_t>(section.present)});
        finding.section =
            section.count == 1 ? section.name : Count(static_cast<std::uint64_t>(section.count), section.name);
        if (section.present != 0) {
            finding.what = finding.section + " at " + Number(section.offset) + ": cut short, " +
                           Number(section.present) + " of " + Count(section.size, "byte") + " present";
            continue;
        }
        missing.push_back(section.name);
        if (!first_missing) first_missing = report.findings.size() - 1;
    }
    if (first_missing) {
        report.findings[*first_missing].what =
            "missing, as the file ends at " + Number(report.size) + ": " + Listed(missing);
    }
}

void ReportTrailingBytes(std::span<const std::uint8_t> rest, FileReport& report) {
    if (rest.empty()) return;
    const std::uint64_t offset = report.size - rest.size();
    const std::string where = Count(rest.size(), "byte") + " after the last section, at " + Number(offset);
    // Equal to itself one byte further on: faster than byte by byte for the rest of a large file.
    const bool zeros = rest.front() == 0 && std::memcmp(rest.data(), rest.data() + 1, rest.size() - 1) == 0;
    AddFinding(report, zeros ? Rule::kPaddingAfterEnd : Rule::kNothingAfterEnd, {offset, rest.size()}).what =
        where + (zeros ? ", all zero" : ", which nothing reads");
}

}  // namespace zel::inspect
