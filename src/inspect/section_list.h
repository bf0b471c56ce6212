#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "inspect/report.h"
#include "module/message/format/section_observer.h"

namespace zel::inspect {

/// Collects the sections that a reader reports. Consecutive stored glyphs of a font become one entry.
class SectionList final : public message::SectionObserver {
  public:
    void OnSection(const char* name, std::uint64_t offset, std::uint64_t size, std::uint64_t present) override;

    /// The section of a name; null if reading ended before it.
    const Section* Find(std::string_view name) const;

    /// Offset of the end of the last section.
    std::uint64_t End() const;

    std::vector<Section> sections;
};

/// Adds a fault for each section that the file cuts short, apart from the stored glyphs of a font that is read.
/// @param refused  the file is refused. If the last section is cut, that is why.
void ReportCutSections(FileReport& report, bool refused);

/// Reports the bytes after the last section: zeros, which are padding, as a note, others as a fault.
/// @param rest  those bytes; may be empty.
void ReportTrailingBytes(std::span<const std::uint8_t> rest, FileReport& report);

}  // namespace zel::inspect
