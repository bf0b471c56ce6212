#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/host_observer.h"
#include "host/picture/picture.h"
#include "host/picture/pixel_pool.h"
#include "host/picture/text_renderer.h"

class CZelFont;
class CZelMessage;
class CZelTransDlg;

namespace zel::picture {

/// Composes the picture of each message on a clear ground, each character over the earlier ones: 720 x 486 pixels for
/// NTSC and 720 x 576 for PAL, by the message's own standard. A character in bitmap form is at the position in its
/// record; one in text form is on the baseline that its bitmap would have. An RGBA file's picture is the file's own, in
/// its own size, inserted as an object or as a background.
class PictureComposer : public host::HostObserver {
  public:
    void OnSend(const host::SentMessage& sent) override;
    void OnChar(const host::SentCharacter& character) override;

    /// Moves out the picture of the last completed message; empty if there is none, or if it has been taken.
    std::optional<Picture> TakePicture();

    /// Returns the memory of a picture for reuse. Any thread may call.
    void GiveBack(Picture picture);

    /// Why the last RGBA file has no picture, as text to follow the file's name; empty if it has one.
    const std::string& RgbaError() const noexcept { return m_rgba_error; }

  private:
    /// A character as it arrived, kept until the message with its rows arrives.
    struct PendingCharacter {
        tag_CharInf info;
        LOGFONT log_font;
        unsigned character;
    };

    void BeginMessage(CZelFont& fonts);
    void LoadRgba(const CZelTransDlg& dialog);
    void Compose(const CZelMessage& message);
    /// Takes the visible part of a box, which is then drawn, from the pixels that the message may still cover.
    /// @return false if too few are left.
    bool TakePixels(PixelView view, const PixelBox& box) noexcept;
    void DrawText(PixelView view, const PendingCharacter& pending, const CZelMessage& message);

    /// Of the current message.
    CZelFont* m_fonts = nullptr;
    /// Of the current message; null until a character has arrived.
    host::GlyphBitmaps* m_bitmaps = nullptr;
    std::vector<PendingCharacter> m_pending;
    /// Pixels that the characters of the current message may still cover.
    std::int64_t m_left = 0;
    /// Of the current message's picture.
    std::vector<bool> m_drawn_rows;
    std::optional<Picture> m_picture;
    PixelPool m_pool;
    std::string m_rgba_error;
    TextRenderer m_text;
};

}  // namespace zel::picture
