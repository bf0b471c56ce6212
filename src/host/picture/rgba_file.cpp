#include "host/picture/rgba_file.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include "base/regular_file.h"
#include "module/contract/records/psos_header.h"
#include "module/font/format/stored_glyph.h"
#include "module/message/format/convert_headers.h"

namespace zel::picture {

namespace {

/// Bytes of a file with the largest picture.
constexpr std::size_t kLargestRgbaFile =
    sizeof(tag_psos_header) + font::kStoredGlyphHeadSize + std::size_t{4} * kLargestRgbaSide * kLargestRgbaSide;

RgbaPicture Failure(std::string reason) {
    return {std::nullopt, std::move(reason)};
}

std::string SizeText(const font::StoredGlyphHead& head) {
    return std::to_string(head.width) + " x " + std::to_string(head.height) + " pixels";
}

/// Why a record gives no picture; empty when it gives one.
std::string ErrorOf(const font::StoredGlyphHead& head, std::size_t present) {
    switch (font::CheckStoredGlyph(head, present)) {
        case font::StoredGlyphFault::kNone:
            break;
        case font::StoredGlyphFault::kHeadCutShort:
            return "the picture's size is missing";
        case font::StoredGlyphFault::kNoPixels:
            return "the picture's size is " + SizeText(head);
        case font::StoredGlyphFault::kTooSmall:
            return "the picture's record is too small for " + SizeText(head);
        case font::StoredGlyphFault::kPixelsCutShort:
            return "the picture is cut short by the file's end";
    }
    if (head.width <= kLargestRgbaSide && head.height <= kLargestRgbaSide) return {};
    return "the picture's size is " + SizeText(head) + ", more than " + std::to_string(kLargestRgbaSide) + " each way";
}

}  // namespace

RgbaPicture ConvertRgbaFile(std::span<const std::uint8_t> file) {
    if (!IsRgbaFileType(message::ConvertPsosHeader(file).file_type)) return Failure("it is not an RGBA file");
    if (file.size() < sizeof(tag_psos_header)) return Failure("the picture's size is missing");
    const auto record = file.subspan(sizeof(tag_psos_header));
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(record);
    std::string error = ErrorOf(head, record.size());
    if (!error.empty()) return Failure(std::move(error));
    Picture picture{head.width, head.height, {}};
    const std::size_t size = PixelBytes(head.width, head.height);
    const auto pixels = record.subspan(font::kStoredGlyphHeadSize, size);
    picture.rgba.assign(pixels.begin(), pixels.end());
    font::StraightenPixels(picture.rgba);
    for (std::size_t n = 0; n < size; n += 4) std::swap(picture.rgba[n], picture.rgba[n + 2]);  // blue and red
    return {std::move(picture), {}};
}

RgbaPicture ReadRgbaFile(const std::string& path) {
    std::vector<std::uint8_t> bytes;
    try {
        bytes = base::ReadFileBytes(path, kLargestRgbaFile);  // any further bytes are ignored
    } catch (const std::runtime_error& error) {
        return Failure(std::string("the picture can't be read: ") + error.what());
    }
    return ConvertRgbaFile(bytes);
}

}  // namespace zel::picture
