#include "host/picture/picture_composer.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "host/glyph_bitmaps.h"
#include "host/picture/composite.h"
#include "host/picture/rgba_file.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/system/files.h"

namespace zel::picture {

namespace {

/// Pixels that the characters of one message may cover together, 40 times the picture. A character is as large as its
/// file says, and a message of a few KB has hundreds of them.
constexpr std::int64_t kMaxCovered = std::int64_t{16} << 20;
constexpr const char* kTooManyPixels = "the characters cover more than 40 times the picture";

PixelBox BoxOf(int x, int baseline, const Coverage& coverage) noexcept {
    const int left = x + coverage.left, top = baseline - coverage.top;
    return {left, top, left + coverage.width, top + coverage.height};
}

/// Pixels by which a font's characters are higher in this row than in a row that contains this font alone.
int LiftInRow(const CZelFont& fonts, int slot, const tag_msg_row& row) noexcept {
    const tag_font_header* header = fonts.m_Slots[slot].font_header;
    return header != nullptr ? row.Top() - header->row_inset - header->row_top_offset : 0;
}

/// Common baseline of a row with Baseline Align: that of the first character.
int RowBaseline(const CZelFont& fonts, const tag_msg_row& row, int y) noexcept {
    if (row.FirstChar() >= row.CharCount()) return y + row.Bottom();
    const tag_msg_char& first = row.chars[row.FirstChar()];
    const int lift = first.Font() < kFontSlots ? LiftInRow(fonts, first.Font(), row) : 0;
    return y + first.Y() - lift;
}

/// Baseline of a character in text form. base_shift is the distance to the top of its glyph; with Baseline Align it
/// is 0.
int TextBaseline(const CZelFont& fonts, const CZelMessage& message, const tag_CharInf& info,
                 unsigned character) noexcept {
    const bool aligned = message.m_pOwner != nullptr && message.m_pOwner->m_bBaselineAlign != 0;
    if (aligned) return RowBaseline(fonts, message.m_pRows[info.row_index], info.y);
    const tag_char_entry* entry = fonts.m_Slots[info.slot].Entry(character);
    return info.y + info.base_shift + (entry != nullptr ? entry->Top() : 0);
}

}  // namespace

void PictureComposer::OnSend(const host::SentMessage& sent) {
    if (const auto* ready = std::get_if<host::FontsReady>(&sent.event)) BeginMessage(ready->fonts);
    if (const auto* chosen = std::get_if<host::RgbaChosen>(&sent.event)) LoadRgba(chosen->dialog);
    if (const auto* done = std::get_if<host::RowsDone>(&sent.event)) Compose(done->message);
}

void PictureComposer::BeginMessage(CZelFont& fonts) {
    m_fonts = &fonts;
    m_bitmaps = nullptr;
    m_pending.clear();
    m_picture.reset();
    m_rgba_error.clear();
    m_left = kMaxCovered;
    m_text.BeginMessage();
}

bool PictureComposer::TakePixels(PixelView view, const PixelBox& box) noexcept {
    const PixelBox visible = Intersection(box, view.Bounds());
    if (visible.IsEmpty()) return true;
    const std::int64_t pixels = std::int64_t{visible.Width()} * visible.Height();
    if (pixels > m_left) return false;
    m_left -= pixels;
    std::fill(m_drawn_rows.begin() + visible.top, m_drawn_rows.begin() + visible.bottom, true);
    return true;
}

void PictureComposer::OnChar(const host::SentCharacter& character) {
    if (character.info.slot < 0) return;  // a row without characters
    m_bitmaps = &character.glyphs;
    const LOGFONT* font = character.info.log_font;
    m_pending.push_back({character.info, font != nullptr ? *font : LOGFONT{}, character.character});
}

void PictureComposer::LoadRgba(const CZelTransDlg& dialog) {
    const std::string file = std::string(dialog.m_sMessageDir.GetString()) + '\\' + dialog.m_sMessageID.GetString();
    RgbaPicture rgba = ReadRgbaFile(system::NativePath(file.c_str()));
    m_picture = std::move(rgba.picture);
    m_rgba_error = std::move(rgba.error);
}

void PictureComposer::Compose(const CZelMessage& message) {
    if (m_fonts == nullptr) return;
    Picture& picture = m_picture.emplace();
    picture.width = kPictureWidth;
    picture.height = message.m_pMsgFlags->Lines();
    picture.rgba = m_pool.Take(PixelBytes(picture.width, picture.height));
    const PixelView view = picture.View();
    m_drawn_rows.assign(static_cast<std::size_t>(picture.height), false);
    for (const PendingCharacter& pending : m_pending) {
        const tag_CharInf& info = pending.info;
        if (info.font_copy == nullptr) {
            DrawText(view, pending, message);
            continue;
        }
        const host::GlyphBitmap& glyph = m_bitmaps->Get(info, pending.character);
        if (glyph.pixels.empty()) continue;
        const int top = info.y + info.base_shift;
        if (!TakePixels(view, {info.x, top, info.x + glyph.rect.Width(), top + glyph.rect.Height()})) {
            m_bitmaps->AddFailure(info, pending.character, kTooManyPixels);
            continue;
        }
        BlendBitmap(view, info.x, top, {glyph.rect.Width(), glyph.rect.Height(), glyph.pixels});
    }
    picture.drawn_rows = m_drawn_rows;
    m_pending.clear();
    m_fonts = nullptr;
}

void PictureComposer::DrawText(PixelView view, const PendingCharacter& pending, const CZelMessage& message) {
    const tag_CharInf& info = pending.info;
    const TextGlyph* glyph = m_text.Get(pending.log_font, info, pending.character);
    if (glyph == nullptr) {
        if (m_text.IsExhausted()) m_bitmaps->AddFailure(info, pending.character, "the typeface is too large");
        return;
    }
    const int baseline = TextBaseline(*m_fonts, message, info, pending.character);
    if (!TakePixels(view, BoxOf(info.x, baseline, glyph->edge)) ||
        !TakePixels(view, BoxOf(info.x, baseline, glyph->face))) {
        m_bitmaps->AddFailure(info, pending.character, kTooManyPixels);
        return;
    }
    BlendCoverage(view, info.x, baseline, glyph->edge, info.edge_colour);
    BlendCoverage(view, info.x, baseline, glyph->face, info.face_colour);
}

std::optional<Picture> PictureComposer::TakePicture() {
    return std::exchange(m_picture, std::nullopt);
}

void PictureComposer::GiveBack(Picture picture) {
    // The picture of an RGBA file has a size of its own.
    if (picture.width == kPictureWidth) m_pool.Give(std::move(picture));
}

}  // namespace zel::picture
