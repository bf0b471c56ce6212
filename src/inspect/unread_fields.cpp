#include "inspect/unread_fields.h"

#include <algorithm>
#include <utility>

#include "inspect/findings.h"

namespace zel::inspect {

namespace {

/// Big-endian; bytes beyond the end of the record are 0.
std::uint32_t ValueAt(std::span<const std::uint8_t> bytes, const UnreadField& field) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < field.size; ++i) {
        value = value << 8 | (field.offset + i < bytes.size() ? bytes[field.offset + i] : 0U);
    }
    return value & field.mask;
}

constexpr UnreadField kPsosFields[] = {{"dword at 4", 4, 4, 0xFFFFFFFF}};
/// Offset and size of type_name.
constexpr std::size_t kTypeName = 8, kTypeNameSize = 128;

}  // namespace

UnreadFields::UnreadFields(std::span<const UnreadField> fields, RecordKind record, const char* section)
    : m_fields(fields), m_findings(fields.size()) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        m_findings[i].rule = Rule::kUnreadField;
        m_findings[i].record = record;
        m_findings[i].section = section;
        m_findings[i].field = fields[i].name;
    }
}

void UnreadFields::Check(std::span<const std::uint8_t> bytes, const Place& place) {
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const UnreadField& field = m_fields[i];
        const std::uint32_t value = ValueAt(bytes, field);
        if (value != 0) m_findings[i].Add({place.offset + field.offset, field.size, value, place.index, place.row});
    }
}

void UnreadFields::Report(FileReport& report) {
    for (Finding& finding : m_findings) AddFinding(report, std::move(finding));
}

void CheckTextRest(std::span<const std::uint8_t> bytes, Finding finding, Place place, FileReport& report) {
    const auto nul = std::ranges::find(bytes, std::uint8_t{0});
    const auto rest = bytes.subspan(static_cast<std::size_t>(nul - bytes.begin()));
    if (std::ranges::all_of(rest, [](std::uint8_t byte) { return byte == 0; })) return;
    place.offset += static_cast<std::uint64_t>(nul - bytes.begin()) + 1;
    place.size = rest.size() - 1;
    finding.rule = Rule::kTextRest;
    finding.Add(place);
    AddFinding(report, std::move(finding));
}

void CheckPsosHeader(std::span<const std::uint8_t> file, FileReport& report) {
    UnreadFields fields(kPsosFields, RecordKind::kFile, "Psos file header");
    fields.Check(file, {});
    fields.Report(report);
    if (file.size() < kTypeName) return;
    CheckTextRest(file.subspan(kTypeName, std::min(kTypeNameSize, file.size() - kTypeName)),
                  {.section = "Psos file header", .field = "type_name"}, {.offset = kTypeName}, report);
}

}  // namespace zel::inspect
