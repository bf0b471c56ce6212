#include "host/thumbnail/thumbnail.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "base/regular_file.h"
#include "host/picture/composite.h"
#include "host/picture/resample.h"
#include "host/thumbnail/font_thumbnail.h"
#include "host/thumbnail/grounds.h"
#include "host/thumbnail/message_thumbnail.h"
#include "host/thumbnail/stand_in.h"
#include "module/contract/records/psos_header.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/message_loader.h"

namespace zel::thumbnail {

namespace {

/// In bytes; more than a message or a font has.
constexpr std::size_t kLargestFile = std::size_t{16} << 20;
constexpr int kSquare = 16;

/// The picture at half its size, each pixel the mean of four: much faster than a filter, which follows.
picture::Picture Halved(const picture::Picture& opaque) {
    picture::Picture half = picture::ClearPicture(opaque.width / 2, opaque.height / 2);
    for (int y = 0; y < half.height; ++y) {
        const std::span<const picture::Rgba> upper = opaque.View().Row(2 * y), lower = opaque.View().Row(2 * y + 1);
        std::size_t from = 0;
        for (picture::Rgba& pixel : half.View().Row(y)) {
            const auto mean = [&](std::uint8_t picture::Rgba::*channel) {
                const int sum =
                    upper[from].*channel + upper[from + 1].*channel + lower[from].*channel + lower[from + 1].*channel;
                return static_cast<std::uint8_t>((sum + 2) / 4);
            };
            pixel = {mean(&picture::Rgba::red), mean(&picture::Rgba::green), mean(&picture::Rgba::blue), 255};
            from += 2;
        }
    }
    return half;
}

picture::Picture MessageThumbnail(const std::filesystem::path& file, std::span<const std::uint8_t> bytes, int side) {
    std::optional<picture::Picture> picture = ImportedPicture(file);
    if (!picture) {
        message::LoadedMessage message;
        LoadMessage(bytes, message);
        picture = StandIn(message);
    }
    picture::Picture frame = picture::ClearPicture(picture->width, picture->height);
    picture::FillCheckerboard(frame.View(), kSquare, kDarkSquare, kLightSquare);
    picture::BlendPixels(frame.View(), 0, 0, picture->View());
    // Square pixels, and the longer side as long as wanted.
    const double ratio = picture::VideoAspect(frame.height).Ratio() * frame.width / frame.height;
    const int width = ratio >= 1 ? side : std::max(1, static_cast<int>(std::lround(side * ratio)));
    const int height = ratio >= 1 ? std::max(1, static_cast<int>(std::lround(side / ratio))) : side;
    while (frame.width >= 2 * width && frame.height >= 2 * height) frame = Halved(frame);
    return picture::Stretched(frame, width, height);
}

}  // namespace

picture::Picture MakeThumbnail(const std::filesystem::path& file, int side) {
    const std::vector<std::uint8_t> bytes = base::ReadFileBytes(file, kLargestFile);
    const std::uint32_t type = bytes.size() < sizeof(tag_psos_header) ? 0 : message::BigEndianCursor(bytes).U32();
    if (type == kMessageFileType) return MessageThumbnail(file, bytes, side);
    if (type == kFontFileType) return FontThumbnail(bytes, side);
    throw std::runtime_error("neither a message nor a font");
}

}  // namespace zel::thumbnail
