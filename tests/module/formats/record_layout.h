#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zel::formats_test {

/// A field of a record, counted from the record's top bit.
struct FieldRange {
    std::string name;
    std::size_t first_bit = 0;
    std::size_t bits = 0;
};

/// A record of fixed size.
struct RecordLayout {
    std::vector<FieldRange> fields;
    std::size_t bits = 0;
};

/// Layout of a type of a description, from its `seq`.
/// @throws std::exception when there is no such file or type, when the size of a field isn't fixed, or when a field
/// of whole bytes doesn't begin at a byte.
RecordLayout LayoutOf(const std::string& path, const std::string& type);

}  // namespace zel::formats_test
