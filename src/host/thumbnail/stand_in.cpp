#include "host/thumbnail/stand_in.h"

#include <algorithm>
#include <string_view>

#include "host/picture/composite.h"
#include "module/contract/records/tab_field.h"
#include "module/message/format/message_loader.h"

namespace zel::thumbnail {

namespace {

// Shares of a row's height, in percent, about those of common typefaces.
constexpr int kCapitalHeight = 62;
constexpr int kSmallHeight = 46;
constexpr int kMarkHeight = 14;
constexpr int kCommonWidth = 50;
/// Between two characters, in percent of a character's step.
constexpr int kGap = 14;

/// Pixels that all bars may cover together, 40 times the picture: a small file can have a million characters.
constexpr std::int64_t kMaxCovered = std::int64_t{16} << 20;

/// Height of a character's bar above the baseline in percent of the row's; 0 for a blank. Codes are ASCII in common
/// fonts.
int HeightOf(int code) noexcept {
    constexpr std::string_view kMarks = ".,:;'`-_~\"";
    constexpr std::string_view kSmall = "acegmnopqrsuvwxyz";
    if (code <= ' ') return 0;
    const char letter = static_cast<char>(code);
    if (code < 128 && kMarks.find(letter) != std::string_view::npos) return kMarkHeight;
    return code < 128 && kSmall.find(letter) != std::string_view::npos ? kSmallHeight : kCapitalHeight;
}

/// @param left_to_cover  pixels, reduced by those of the row.
void DrawRow(picture::PixelView view, const tag_msg_row& row, const tag_palete& palette, std::int64_t& left_to_cover) {
    const int height = std::max(row.Bottom() - row.Top(), 8);
    const int count = row.CharCount();
    for (int step = 0, index = row.FirstChar(); step < count && index != kChainEnd && left_to_cover > 0; ++step) {
        const tag_msg_char& character = row.chars[index];
        index = character.Next();
        const bool last = step + 1 == count || index == kChainEnd;
        const int common = height * kCommonWidth / 100;
        const int advance = last ? common : row.chars[index].X() - character.X();
        const int width = std::clamp(advance, 2, height * 2);
        const int baseline = row.Y() + character.Y();
        const int left = character.X() + kXOffset;
        const picture::PixelBox box{left, baseline - height * HeightOf(character.Code() & 0xFF) / 100,
                                    left + std::max(width - width * kGap / 100, 1), baseline};
        const COLORREF colour = PackColour(palette.colour_sets[character.ColourSet()][kFaceEntry]);
        const picture::PixelView bar = view.Part(box);
        left_to_cover -= std::int64_t{bar.Width()} * bar.Height();
        picture::Fill(bar, picture::RgbaOf(colour, 255));
    }
}

}  // namespace

picture::Picture StandIn(const message::LoadedMessage& message) {
    const int lines = message.flags ? message.flags->Lines() : ActiveLines(VideoStandard::kNtsc);
    picture::Picture picture = picture::ClearPicture(picture::kPictureWidth, lines);
    if (!message.rows || !message.palette) return picture;
    std::int64_t left_to_cover = kMaxCovered;
    for (int r = 0; r < message.header->RowCount(); ++r) {
        if (!message.rows[r].Empty()) DrawRow(picture.View(), message.rows[r], *message.palette, left_to_cover);
    }
    return picture;
}

}  // namespace zel::thumbnail
