#include "host/export/file_names.h"

#include <algorithm>
#include <stdexcept>

#include "base/sha256.h"
#include "base/text.h"

namespace zel::exporter {

namespace {

/// In bytes.
constexpr std::size_t kLongestDiskName = 40;

constexpr bool IsPlain(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

std::string PlainDiskName(const std::string& disk) {
    std::string name = disk.substr(0, kLongestDiskName);
    std::ranges::replace_if(
        name, [](char c) { return !IsPlain(c); }, '_');
    return name == disk ? name : name + '-' + base::Sha256(disk).substr(0, 6);
}

}  // namespace

std::string FileNumber(int number) {
    if (number < 0 || number > 9999) throw std::runtime_error("the number isn't 0 to 9999");
    return base::FourDigits(number);
}

std::string StemOf(const std::string& disk, int number) {
    return (disk.empty() ? disk : PlainDiskName(disk) + '_') + FileNumber(number);
}

}  // namespace zel::exporter
