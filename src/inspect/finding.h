#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "inspect/rules.h"

namespace zel::inspect {

/// What the places of a finding are counted by.
enum class RecordKind : std::uint8_t { kFile, kRow, kCharacter, kTabField, kGlyph, kLine };

/// Where a rule isn't kept.
struct Place {
    static constexpr std::int64_t kNoValue = std::numeric_limits<std::int64_t>::min();

    /// Of the field or the bytes, from the file's beginning.
    std::uint64_t offset = 0;
    /// In bytes.
    std::uint64_t size = 0;
    /// Of the field, or kNoValue.
    std::int64_t value = kNoValue;
    /// Of the row, the tab field or the line, from 0; the code of a glyph; of a character, its record in the row.
    std::int32_t index = 0;
    /// Of a character.
    std::int32_t row = 0;
};

/// One rule that isn't kept, at one or more places of a file.
struct Finding {
    Rule rule{};
    /// Of the file, or of the record that has the places.
    RecordKind record = RecordKind::kFile;
    /// Name of the section that has the places; may be empty.
    std::string section{};
    /// Replaces the rule's own field; a string literal or null.
    const char* field = nullptr;
    /// The line of `info`; empty if `info` reports the same by another finding.
    std::string what{};
    /// Number of places.
    std::uint64_t count = 0;
    /// The first kMostPlaces of them.
    std::vector<Place> places{};

    /// More than the characters of the 64 rows that tab fields can address. Bounds the memory that a file of many
    /// faults takes.
    static constexpr std::size_t kMostPlaces = 8192;

    Severity Kind() const noexcept { return TextOf(rule).severity; }
    const char* Field() const noexcept { return field != nullptr ? field : TextOf(rule).field; }
    void Add(const Place& place) {
        ++count;
        if (places.size() < kMostPlaces) places.push_back(place);
    }
};

}  // namespace zel::inspect
