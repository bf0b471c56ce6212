#include "inspect/inspect.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "inspect/font_inspector.h"
#include "inspect/message_inspector.h"
#include "inspect/other_files.h"
#include "module/contract/records/psos_header.h"
#include "module/message/format/big_endian_cursor.h"

namespace zel::inspect {

namespace {

constexpr std::size_t kTypeSize = 4;  // bytes of a Psos file header that tell its file type

FileKind KindOfType(std::uint32_t file_type) {
    if (file_type == kMessageFileType) return FileKind::kMessage;
    if (file_type == kFontFileType) return FileKind::kFont;
    return IsRgbaFileType(file_type) ? FileKind::kRgba : FileKind::kOther;
}

[[noreturn]] void Fail(int error) {
    throw std::runtime_error(std::generic_category().message(error));
}

std::vector<std::uint8_t> ReadWhole(const std::filesystem::path& file, std::uintmax_t size) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file.c_str(), "rb"), &std::fclose);
    if (!stream) Fail(errno);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    const std::size_t came = std::fread(bytes.data(), 1, bytes.size(), stream.get());
    if (came != bytes.size() && std::ferror(stream.get()) != 0) Fail(errno);
    bytes.resize(came);
    return bytes;
}

}  // namespace

FileReport InspectBytes(std::span<const std::uint8_t> bytes, std::string_view name) {
    FileReport report;
    report.name = name;
    report.size = bytes.size();
    if (bytes.size() >= kTypeSize) report.file_type = message::BigEndianCursor(bytes).U32();
    report.kind = KindOfType(report.file_type.value_or(0));
    switch (report.kind) {
        case FileKind::kMessage:
            InspectMessage(bytes, report);
            break;
        case FileKind::kFont:
            InspectFont(bytes, report);
            break;
        case FileKind::kRgba:
            InspectRgba(bytes, report);
            break;
        default:
            InspectOther(bytes, name.substr(name.find_last_of("/\\") + 1), report);
            break;
    }
    return report;
}

FileReport InspectFile(const std::filesystem::path& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (error) throw std::runtime_error(error.message());
    if (std::filesystem::is_directory(status)) throw std::runtime_error("a directory, not a file");
    if (!std::filesystem::is_regular_file(status)) throw std::runtime_error("not a plain file");
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) throw std::runtime_error(error.message());
    if (size > kLargestFile) throw std::runtime_error("larger than 256 MiB, which no message or font is");
    return InspectBytes(ReadWhole(file, size), file.string());
}

}  // namespace zel::inspect
