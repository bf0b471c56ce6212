#include "host/export/zip_archive.h"

#include <cstdint>
#include <initializer_list>

#include "base/deflate.h"
#include "host/crc32.h"

namespace zel::exporter {

namespace {

// The records of a ZIP file, as its format's application note 6.3.10 has them; numbers are little-endian.
constexpr std::uint32_t kLocalHeader = 0x04034B50, kCentralHeader = 0x02014B50, kEndRecord = 0x06054B50;
/// Deflate needs version 2.0.
constexpr std::uint16_t kVersion = 20;
/// Names are UTF-8.
constexpr std::uint16_t kUtf8Flag = 1 << 11;
constexpr std::uint16_t kDeflated = 8;
/// 1980-01-01, 00:00.
constexpr std::uint16_t kTime = 0, kDate = 1 << 5 | 1;

void Append16(std::string& bytes, std::initializer_list<std::size_t> values) {
    for (const std::size_t value : values) {
        bytes += static_cast<char>(value & 0xFF);
        bytes += static_cast<char>(value >> 8 & 0xFF);
    }
}

void Append32(std::string& bytes, std::initializer_list<std::size_t> values) {
    for (const std::size_t value : values) Append16(bytes, {value & 0xFFFF, value >> 16 & 0xFFFF});
}

/// The part that both headers of a file have in common.
std::string HeaderOf(const ExportedFile& file, const std::string& stream) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(file.bytes.data()), file.bytes.size());
    std::string header;
    Append16(header, {kVersion, kUtf8Flag, kDeflated, kTime, kDate});
    Append32(header, {host::Crc32(bytes), stream.size(), file.bytes.size()});
    Append16(header, {file.name.size(), 0});  // no extra field
    return header;
}

}  // namespace

std::string ZipArchive(std::span<const ExportedFile> files) {
    std::string archive, directory;
    for (const ExportedFile& file : files) {
        const std::string stream = base::Deflated(file.bytes), header = HeaderOf(file, stream);
        Append32(directory, {kCentralHeader});
        Append16(directory, {kVersion});
        directory += header;
        // Without a comment, on the first disk, without attributes.
        Append16(directory, {0, 0, 0});
        Append32(directory, {0, archive.size()});
        directory += file.name;
        Append32(archive, {kLocalHeader});
        archive.append(header).append(file.name).append(stream);
    }
    std::string end;
    Append32(end, {kEndRecord});
    Append16(end, {0, 0, files.size(), files.size()});
    Append32(end, {directory.size(), archive.size()});
    Append16(end, {0});  // no comment
    return archive + directory + end;
}

}  // namespace zel::exporter
