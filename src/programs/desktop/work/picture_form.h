#pragma once

#include <QString>
#include <string>

namespace zel::desktop {

/// How a picture with alpha is saved as PNG.
enum class PictureForm {
    /// As recorded: colours and straight alpha.
    kStraight,
    /// The colours multiplied by their alpha.
    kPremultiplied,
    /// The alpha alone, as grey.
    kKey,
};

/// @param png  a recorded picture.
/// @throws std::runtime_error when `png` is not valid or memory is exhausted.
std::string PngIn(PictureForm form, const std::string& png);

/// The end of a file's name: ".png", " premultiplied.png", " key.png".
QString FileEnding(PictureForm form);

}  // namespace zel::desktop
