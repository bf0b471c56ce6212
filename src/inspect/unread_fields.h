#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "inspect/report.h"

namespace zel::inspect {

/// A field that nothing reads; part of a record.
struct UnreadField {
    const char* name;
    /// In bytes, from the record's beginning.
    std::size_t offset;
    /// In bytes, 1, 2 or 4.
    std::size_t size;
    /// Its bits of these bytes.
    std::uint32_t mask;
};

/// Collects the places where unread fields of one kind of record aren't zero.
class UnreadFields {
  public:
    /// @param fields   a table of static duration.
    /// @param section  the section that the records belong to; may be empty.
    UnreadFields(std::span<const UnreadField> fields, RecordKind record, const char* section);

    /// @param bytes   the record, which may be cut short.
    /// @param place   with the offset of the record, its index and its row.
    void Check(std::span<const std::uint8_t> bytes, const Place& place);

    /// Adds a note for each field with places. They are no lines of `info`.
    void Report(FileReport& report);

  private:
    std::span<const UnreadField> m_fields;
    std::vector<Finding> m_findings;
};

/// Adds a note for a field of text that has bytes after its NUL.
/// @param bytes    the field, which may be cut short.
/// @param finding  with record, section and the name of the field.
/// @param place    with the offset of the field.
void CheckTextRest(std::span<const std::uint8_t> bytes, Finding finding, Place place, FileReport& report);

/// Reports the unread fields of a Psos file header.
void CheckPsosHeader(std::span<const std::uint8_t> file, FileReport& report);

}  // namespace zel::inspect
