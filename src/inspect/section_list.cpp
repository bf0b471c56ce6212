#include "inspect/section_list.h"

#include <algorithm>

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

void ReportCutSections(FileReport& report) {
    std::vector<std::string> missing;
    for (const Section& section : report.sections) {
        if (section.present == section.size) continue;
        if (section.present == 0) {
            missing.push_back(section.name);
            continue;
        }
        const std::string what =
            section.count == 1 ? section.name : Count(static_cast<std::uint64_t>(section.count), section.name);
        report.defects.push_back(what + " at " + Number(section.offset) + ": cut short, " + Number(section.present) +
                                 " of " + Count(section.size, "byte") + " present");
    }
    if (!missing.empty())
        report.defects.push_back("missing, as the file ends at " + Number(report.size) + ": " + Listed(missing));
}

void ReportTrailingBytes(std::span<const std::uint8_t> rest, FileReport& report) {
    if (rest.empty()) return;
    const std::string where =
        Count(rest.size(), "byte") + " after the last section, at " + Number(report.size - rest.size());
    if (std::ranges::all_of(rest, [](std::uint8_t byte) { return byte == 0; })) {
        report.remarks.push_back(where + ", all zero");
    } else {
        report.defects.push_back(where + ", which nothing reads");
    }
}

}  // namespace zel::inspect
