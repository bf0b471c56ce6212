#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "host/host_observer.h"
#include "host/picture/composite.h"
#include "host/picture/text_face.h"

class CZelFont;
class CZelMessage;
class CZelTransDlg;

namespace zel::picture {

inline constexpr int kPictureWidth = 720;  ///< pixels of a line in both video standards.

/// A picture with straight alpha, 8 bits each of red, green, blue and alpha, top row first.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;
};

/// The memory of pictures that are done with, for those to come: fresh memory would have to be had from the system,
/// page by page, for each. May be asked from several threads.
class SparePixels {
  public:
    /// Room for so many bytes, all of them 0.
    std::vector<std::uint8_t> Take(std::size_t size);
    void Give(std::vector<std::uint8_t> pixels);

  private:
    std::mutex m_mutex;
    std::vector<std::vector<std::uint8_t>> m_spare;
};

/// Composes the picture of each message on a clear ground, a later character over the earlier ones: 720 x 486 pixels
/// for NTSC and 720 x 576 for PAL, by the message's own standard. A character in bitmap form lies where its record
/// says; one in text form stands on the baseline that its bitmap would have stood on. The picture of an RGBA file is
/// the file's own, in its own size, whether it is inserted as an object or as a background.
class PictureComposer : public host::HostObserver {
  public:
    void OnSend(const host::SentMessage& sent) override;
    void OnChar(const host::SentCharacter& character) override;

    /// The picture of the last message that arrived whole; nothing when there is none. It is given once.
    std::optional<Picture> TakePicture();

    /// Gives a picture back that is done with; from any thread.
    void GiveBack(Picture picture);

    /// Why the last RGBA file gave no picture, in words that follow the file's name; empty when it gave one.
    const std::string& Trouble() const noexcept { return m_trouble; }

  private:
    /// A character as it came, kept until the message with its rows arrives.
    struct Arrived {
        tag_CharInf info;
        LOGFONT log_font;
        unsigned character;
    };

    void BeginMessage(CZelFont& fonts);
    void LoadRgba(const CZelTransDlg& dialog);
    void Compose(const CZelMessage& message);
    void LayText(const Canvas& canvas, const Arrived& arrived, const CZelMessage& message);

    CZelFont* m_fonts = nullptr;              ///< of the message under way.
    host::GlyphBitmaps* m_bitmaps = nullptr;  ///< of the message under way; null until a character has come.
    std::vector<Arrived> m_arrived;
    std::optional<Picture> m_picture;
    SparePixels m_spare;
    std::string m_trouble;
    TextFaces m_faces;
};

}  // namespace zel::picture
