#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Formatting of numbers, bytes and lists in a report.
namespace zel::inspect {

/// Bytes as text: printable ASCII as it is, all others and the backslash as \xNN.
std::string Printable(std::string_view bytes);

/// A character code likewise; codes of 256 and above with three digits.
std::string PrintableCode(int code);

/// A code for a list: "65 'A'", or "7" for one that isn't printable.
std::string CodeName(int code);

/// "1 row", "1,024 rows". @param plural  of a noun that doesn't form it with an s.
std::string Count(std::uint64_t count, std::string_view one, std::string_view plural = {});

/// A number with commas between its thousands.
std::string Number(std::uint64_t number);

/// 0x and at least four hexadecimal digits.
std::string Hex(std::uint32_t value);

/// "a, b, c and 12 more". @param most  number of items that are named.
std::string Listed(const std::vector<std::string>& items, std::size_t most = 8);

}  // namespace zel::inspect
