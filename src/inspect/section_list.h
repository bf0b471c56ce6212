#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "inspect/report.h"
#include "module/message/format/section_observer.h"

namespace zel::inspect {

/// Collects the sections that a reader announces. Records of a font's stored glyphs, which stand back to back, become
/// one entry.
class SectionList final : public message::SectionObserver {
  public:
    void OnSection(const char* name, std::uint64_t offset, std::uint64_t size, std::uint64_t present) override;

    /// The section of a name; null when the file ended, or was refused, before it.
    const Section* Find(std::string_view name) const;

    /// Offset behind the last section.
    std::uint64_t End() const;

    std::vector<Section> sections;
};

/// Adds a defect for each section that the file cuts short.
void ReportCutSections(FileReport& report);

/// Reports the bytes behind the last section: zeros, as they come from padding, in a remark, others as a defect.
/// @param rest  those bytes.
void ReportTrailingBytes(std::span<const std::uint8_t> rest, FileReport& report);

}  // namespace zel::inspect
