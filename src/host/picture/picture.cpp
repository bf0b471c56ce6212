#include "host/picture/picture.h"

#include <utility>
#include <variant>

#include "host/glyph_bitmaps.h"
#include "host/picture/rgba_file.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/system/files.h"

namespace zel::picture {

namespace {

/// Lines by which a font's characters lie higher than in a row that is set in this font alone.
int LiftInRow(const CZelFont& fonts, int slot, const tag_msg_row& row) noexcept {
    const tag_font_header* header = fonts.m_Slots[slot].font_header;
    return header != nullptr ? row.Top() - header->row_inset - header->row_top_offset : 0;
}

/// Baseline of a row whose characters are aligned on it: that of the first one.
int RowBaseline(const CZelFont& fonts, const tag_msg_row& row, int y) noexcept {
    if (row.FirstChar() >= row.CharCount()) return y + row.Bottom();
    const tag_msg_char& first = row.chars[row.FirstChar()];
    const int lift = first.Font() < kFontSlots ? LiftInRow(fonts, first.Font(), row) : 0;
    return y + first.Y() - lift;
}

/// Line that a character in text form stands on. base_shift leads to the top of its glyph; with Baseline Align it is 0.
int TextBaseline(const CZelFont& fonts, const CZelMessage& message, const tag_CharInf& info,
                 unsigned character) noexcept {
    const bool aligned = message.m_pOwner != nullptr && message.m_pOwner->m_bBaselineAlign != 0;
    if (aligned) return RowBaseline(fonts, message.m_pRows[info.row_index], info.y);
    const tag_char_entry* entry = fonts.m_Slots[info.slot].Entry(character);
    return info.y + info.base_shift + (entry != nullptr ? entry->Top() : 0);
}

}  // namespace

std::vector<std::uint8_t> SparePixels::Take(std::size_t size) {
    std::vector<std::uint8_t> pixels;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_spare.empty()) {
            pixels = std::move(m_spare.back());
            m_spare.pop_back();
        }
    }
    pixels.assign(size, 0);
    return pixels;
}

void SparePixels::Give(std::vector<std::uint8_t> pixels) {
    const std::lock_guard lock(m_mutex);
    m_spare.push_back(std::move(pixels));
}

void PictureComposer::OnSend(const host::SentMessage& sent) {
    if (const auto* ready = std::get_if<host::FontsReady>(&sent.event)) BeginMessage(ready->fonts);
    if (const auto* chosen = std::get_if<host::RgbaChosen>(&sent.event)) LoadRgba(chosen->dialog);
    if (const auto* done = std::get_if<host::RowsDone>(&sent.event)) Compose(done->message);
}

void PictureComposer::BeginMessage(CZelFont& fonts) {
    m_fonts = &fonts;
    m_bitmaps = nullptr;
    m_arrived.clear();
    m_picture.reset();
    m_trouble.clear();
}

void PictureComposer::OnChar(const host::SentCharacter& character) {
    if (character.info.slot < 0) return;  // a row without characters
    m_bitmaps = &character.glyphs;
    const LOGFONT* font = character.info.log_font;
    m_arrived.push_back({character.info, font != nullptr ? *font : LOGFONT{}, character.character});
}

void PictureComposer::LoadRgba(const CZelTransDlg& dialog) {
    const std::string file = std::string(dialog.m_sMessageDir.GetString()) + '\\' + dialog.m_sMessageID.GetString();
    RgbaPicture rgba = ReadRgbaFile(system::NativePath(file.c_str()));
    m_picture = std::move(rgba.picture);
    m_trouble = std::move(rgba.trouble);
}

void PictureComposer::Compose(const CZelMessage& message) {
    if (m_fonts == nullptr) return;
    Picture& picture = m_picture.emplace();
    picture.width = kPictureWidth;
    picture.height = message.m_pMsgFlags->Lines();
    picture.rgba = m_spare.Take(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 4);
    const Canvas canvas{picture.width, picture.height, picture.rgba};
    for (const Arrived& arrived : m_arrived) {
        if (arrived.info.font_copy == nullptr) {
            LayText(canvas, arrived, message);
            continue;
        }
        const host::GlyphBitmap& glyph = m_bitmaps->Get(arrived.info, arrived.character);
        if (glyph.pixels.empty()) continue;
        LayBitmap(canvas, arrived.info.x, arrived.info.y + arrived.info.base_shift, glyph.rect.Width(),
                  glyph.rect.Height(), glyph.pixels);
    }
    m_arrived.clear();
    m_fonts = nullptr;
}

void PictureComposer::LayText(const Canvas& canvas, const Arrived& arrived, const CZelMessage& message) {
    const tag_CharInf& info = arrived.info;
    const TextGlyph* glyph = m_faces.Get(arrived.log_font, info, arrived.character);
    if (glyph == nullptr) return;
    const int baseline = TextBaseline(*m_fonts, message, info, arrived.character);
    const auto lay = [&](const Coverage& coverage, COLORREF colour) {
        LayColour(canvas, info.x + coverage.left, baseline - coverage.top, coverage.width, coverage.height,
                  coverage.bytes, colour);
    };
    lay(glyph->edge, info.edge_colour);
    lay(glyph->face, info.face_colour);
}

std::optional<Picture> PictureComposer::TakePicture() {
    return std::exchange(m_picture, std::nullopt);
}

void PictureComposer::GiveBack(Picture picture) {
    // One of an RGBA file has a size of its own.
    if (picture.width == kPictureWidth) m_spare.Give(std::move(picture.rgba));
}

}  // namespace zel::picture
