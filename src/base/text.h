#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zel::base {

/// Decimal digits with leading zeros, at least four.
std::string FourDigits(int number);

/// The file name of a message or font: a dot and at least four digits, ".0012".
std::string NumberedName(int number);

/// A number with commas between its thousands, "1,024".
std::string GroupedDigits(std::uint64_t number);

/// "row" for one, "rows" otherwise. @param plural  of a noun that doesn't form it with an s.
std::string Noun(std::uint64_t count, std::string_view singular, std::string_view plural = {});

/// "1 row", "2 rows".
std::string Counted(std::uint64_t count, std::string_view singular, std::string_view plural = {});

}  // namespace zel::base
