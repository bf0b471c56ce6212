#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/composite.h"
#include "host/host_observer.h"
#include "host/text_face.h"

class CZelFont;
class CZelMessage;

inline constexpr int kPictureWidth = 720;  ///< pixels of a line in both video standards.

/// A picture with straight alpha, 8 bits each of red, green, blue and alpha, top row first.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;
};

/// Composes the picture of each message on a clear ground, a later character over the earlier ones: 720 x 486 pixels
/// for NTSC and 720 x 576 for PAL, by the message's own standard. A character in bitmap form lies where its record
/// says; one in text form stands on the baseline that its bitmap would have stood on.
class PictureComposer : public HostObserver {
  public:
    void OnSend(const SentMessage& message) override;
    void OnChar(const SentCharacter& character) override;

    /// The picture of the last message that arrived whole; nothing when there is none, as for an RGBA file. It is given
    /// once.
    std::optional<Picture> TakePicture();

  private:
    /// A character as it came, kept until the message with its rows arrives.
    struct Arrived {
        tag_CharInf info;
        LOGFONT log_font;
        unsigned character;
    };

    void Compose(const CZelMessage& message);
    void LayText(const Canvas& canvas, const Arrived& arrived, const CZelMessage& message);

    CZelFont* m_fonts = nullptr;        ///< of the message under way.
    GlyphBitmaps* m_bitmaps = nullptr;  ///< of the message under way; null until a character has come.
    std::vector<Arrived> m_arrived;
    std::optional<Picture> m_picture;
    TextFaces m_faces;
};
