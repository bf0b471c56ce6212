#include "base/text.h"

#include <cstdio>

namespace zel::base {

std::string FourDigits(int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04d", number);
    return digits;
}

std::string NumberedName(int number) {
    return "." + FourDigits(number);
}

std::string GroupedDigits(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, 1, ',');
    return digits;
}

std::string Noun(std::uint64_t count, std::string_view singular, std::string_view plural) {
    if (count == 1) return std::string(singular);
    return plural.empty() ? std::string(singular) + "s" : std::string(plural);
}

std::string Counted(std::uint64_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + Noun(count, singular, plural);
}

}  // namespace zel::base
