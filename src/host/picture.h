#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/host_observer.h"
#include "host/text_face.h"

inline constexpr int kPictureWidth = 720;  ///< pixels of a line in both video standards.

/// A picture with straight alpha, 8 bits each of red, green, blue and alpha, top row first.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;
};

/// Composes the picture of each message while its characters arrive, the later ones over the earlier ones, on a clear
/// ground: 720 x 486 pixels for NTSC and 720 x 576 for PAL, by the message's own standard.
class PictureComposer : public HostObserver {
  public:
    void OnSend(const SentMessage& message) override;
    void OnChar(const SentCharacter& character) override;

    /// The last message whose characters arrived whole; nothing when there is none, as for an RGBA file. It is given
    /// once.
    std::optional<Picture> TakePicture();

  private:
    void DrawGlyph(const SentCharacter& character);

    std::vector<std::uint8_t> m_canvas;  ///< as high as the higher standard; the message's own is known at its end.
    int m_lines = 0;                     ///< 0 until the characters have arrived.
    TextFaces m_faces;
};
