#include "inspect/other_files.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "base/fold_case.h"
#include "inspect/findings.h"
#include "inspect/list_check.h"
#include "inspect/words.h"
#include "module/contract/records/psos_header.h"
#include "module/fontmap/format/name_lists.h"
#include "module/message/format/byte_order.h"
#include "module/message/format/convert_headers.h"

namespace zel::inspect {

namespace {

/// Number of lines at the beginning of every list that aren't entries.
constexpr std::size_t kHeadings = 2;
constexpr std::size_t kShownBytes = 16;

bool IsText(std::string_view bytes) {
    if (bytes.empty()) return false;
    return std::ranges::all_of(bytes, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= ' ' ? byte != 0x7F
                           : byte == '\t' || byte == '\n' || byte == '\r' || byte == '\f' || byte == 0x1A;
    });
}

std::vector<std::string_view> Lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
    }
    return lines;
}

bool LooksLikeTypefaceList(const std::vector<std::string_view>& lines) {
    std::size_t entries = 0;
    for (std::size_t i = kHeadings; i < lines.size(); ++i) {
        const auto entry = fontmap::ReadTypefaceLine(lines[i]);
        if (entry && entry->bitstream_name.ends_with(" BT")) ++entries;
    }
    return entries != 0 && entries + kHeadings == lines.size();
}

bool LooksLikeBitstreamList(const std::vector<std::string_view>& lines) {
    std::size_t entries = 0;
    fontmap::BitstreamLineReader reader;
    fontmap::BitstreamEntry entry;
    for (std::size_t i = kHeadings; i < lines.size(); ++i) entries += reader.Read(lines[i], entry) ? 1 : 0;
    return entries != 0 && entries * 2 + kHeadings >= lines.size();
}

FileKind KindOfText(std::string_view name, bool text, const std::vector<std::string_view>& lines) {
    if (base::EqualsFolded(name, "bitstream_fontlist.txt")) return FileKind::kBitstreamList;
    if (base::EqualsFolded(name, "typeface_list.txt")) return FileKind::kTypefaceList;
    if (!text) return FileKind::kOther;
    if (LooksLikeTypefaceList(lines)) return FileKind::kTypefaceList;
    return LooksLikeBitstreamList(lines) ? FileKind::kBitstreamList : FileKind::kText;
}

std::string FirstBytes(std::span<const std::uint8_t> bytes) {
    std::string hex, text;
    for (const std::uint8_t byte : bytes.first(std::min(bytes.size(), kShownBytes))) {
        char pair[4];
        std::snprintf(pair, sizeof pair, "%02X ", static_cast<unsigned>(byte));
        hex += pair;
        text += byte >= ' ' && byte <= '~' ? static_cast<char>(byte) : '.';
    }
    return "its first bytes are " + hex + " \"" + text + '"';
}

/// Describes a foreign file. A known type in another byte order is the work of a copying program.
std::string ForeignReason(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return "it is empty";
    if (bytes.size() < 4) return FirstBytes(bytes);
    const tag_psos_header header = message::ConvertPsosHeader(bytes);
    for (const std::uint32_t known : {kMessageFileType, kFontFileType, kRgbaFileTypeA, kRgbaFileTypeB}) {
        if (header.file_type == message::SwapLong(known)) {
            return "its file type " + std::to_string(known) +
                   " appears with its bytes reversed: the file may be whole, but in another byte order";
        }
        const std::uint32_t pairs = std::uint32_t{message::SwapWord(static_cast<std::uint16_t>(known))};
        if (header.file_type == pairs) {
            return "its file type " + std::to_string(known) +
                   " appears with each two bytes exchanged: a copying program may have done that";
        }
    }
    const std::string_view type_name = header.TypeName();
    if (header.file_type != 0 && header.file_type < 0x10000 && type_name.size() > 2 &&
        type_name.size() < sizeof header.type_name && IsText(type_name)) {
        return "a file of type " + std::to_string(header.file_type) + ", \"" + Printable(type_name) +
               "\", which the import doesn't read";
    }
    return FirstBytes(bytes);
}

}  // namespace

void InspectOther(std::span<const std::uint8_t> bytes, std::string_view name, FileReport& report) {
    const std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const bool text = IsText(content);
    const auto lines = Lines(content);
    report.kind = KindOfText(name, text, lines);
    if (report.kind == FileKind::kBitstreamList || report.kind == FileKind::kTypefaceList) {
        CheckList(content, report);
        return;
    }
    report.verdict = Verdict::kForeign;
    Place type{.offset = 0, .size = std::min<std::uint64_t>(bytes.size(), 4)};
    if (report.file_type) type.value = *report.file_type;
    AddFinding(report, Rule::kKindOfFile, type);
    report.reason = report.kind == FileKind::kText ? "text, but neither of the two name lists" : ForeignReason(bytes);
}

}  // namespace zel::inspect
