#include "inspect/inspect.h"

#include <stdexcept>
#include <system_error>

#include "base/regular_file.h"
#include "inspect/font_inspector.h"
#include "inspect/message_inspector.h"
#include "inspect/other_files.h"
#include "module/contract/records/psos_header.h"
#include "module/message/format/big_endian_cursor.h"

namespace zel::inspect {

namespace {

/// Size in bytes of the file type at the beginning of a Psos file header.
constexpr std::size_t kTypeSize = 4;

FileKind KindOfType(std::uint32_t file_type) {
    if (file_type == kMessageFileType) return FileKind::kMessage;
    if (file_type == kFontFileType) return FileKind::kFont;
    return IsRgbaFileType(file_type) ? FileKind::kRgba : FileKind::kOther;
}

}  // namespace

FileReport InspectBytes(std::span<const std::uint8_t> bytes, std::string_view name, Depth depth) {
    FileReport report;
    report.depth = depth;
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

FileReport InspectFile(const std::filesystem::path& file, Depth depth) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (error) throw std::runtime_error(error.message());
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw std::runtime_error(base::OtherFileKind(file) + ", not a file");
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) throw std::runtime_error(error.message());
    if (size > kLargestFile) throw std::runtime_error("larger than 80 MiB, which no message or font is");
    return InspectBytes(base::ReadFileBytes(file, kLargestFile), file.string(), depth);
}

}  // namespace zel::inspect
