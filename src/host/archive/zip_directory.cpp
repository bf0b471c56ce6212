#include "host/archive/zip_directory.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include <sys/stat.h>

#include "base/file_descriptor.h"

namespace zel::archive {

namespace {

// The layout is that of the zip format; numbers are little-endian.
constexpr std::string_view kEndMark{"PK\5\6", 4}, kEntryMark{"PK\1\2", 4};
constexpr std::size_t kEndSize = 22, kLongestComment = 65535;
constexpr std::size_t kEndDirectorySize = 12, kEndDirectoryOffset = 16;
constexpr std::size_t kEntrySize = 46, kNameLength = 28, kExtraLength = 30, kCommentLength = 32;
/// More than a box of disks needs.
constexpr std::uint32_t kLargestDirectory = 64 << 20;

/// A number at a place that has been checked.
std::uint32_t Number(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t n = size; n-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + n]);
    return value;
}

/// Up to `size` bytes from an offset.
std::string BytesAt(int file, std::uint64_t offset, std::size_t size) {
    std::string bytes(size, '\0');
    bytes.resize(base::ReadFullyAt(file, bytes.data(), size, offset));
    return bytes;
}

void CollectNames(std::string_view entries, ZipDirectory& directory) {
    while (entries.size() >= kEntrySize && entries.starts_with(kEntryMark)) {
        const std::string_view name = entries.substr(kEntrySize, Number(entries, kNameLength, 2));
        const std::size_t nul = name.find('\0');
        if (nul != std::string_view::npos) directory.names_with_nul.emplace(name.substr(0, nul), name);
        const std::size_t size = kEntrySize + Number(entries, kNameLength, 2) + Number(entries, kExtraLength, 2) +
                                 Number(entries, kCommentLength, 2);
        entries.remove_prefix(std::min(size, entries.size()));
    }
}

}  // namespace

ZipDirectory ReadZipDirectory(int file) {
    ZipDirectory directory;
    struct stat status {};
    if (::fstat(file, &status) != 0) return directory;
    const auto size = static_cast<std::uint64_t>(status.st_size);
    const std::size_t wanted = std::min<std::uint64_t>(size, kEndSize + kLongestComment);
    const std::string tail = BytesAt(file, size - wanted, wanted);
    const std::size_t end = tail.rfind(kEndMark);
    directory.has_end = end != std::string::npos && tail.size() - end >= kEndSize;
    if (!directory.has_end) return directory;
    const std::uint32_t list_size = Number(tail, end + kEndDirectorySize, 4);
    if (list_size <= kLargestDirectory)
        CollectNames(BytesAt(file, Number(tail, end + kEndDirectoryOffset, 4), list_size), directory);
    return directory;
}

}  // namespace zel::archive
