#include "host/picture/png_reader.h"

#include <stdexcept>
#include <string>

#include <png.h>

namespace zel::picture {

namespace {

/// Owns the library's state of a picture that is being read.
class Image {
  public:
    Image() noexcept { m_image.version = PNG_IMAGE_VERSION; }
    ~Image() { png_image_free(&m_image); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    png_image* operator->() noexcept { return &m_image; }
    png_image* Get() noexcept { return &m_image; }

  private:
    png_image m_image{};
};

[[noreturn]] void Fail(const std::string& reason) {
    throw std::runtime_error("the PNG picture can't be read: " + reason);
}

}  // namespace

Picture DecodePng(std::string_view bytes) {
    Image image;
    if (png_image_begin_read_from_memory(image.Get(), bytes.data(), bytes.size()) == 0) Fail(image->message);
    const png_uint_32 width = image->width, height = image->height;
    if (width > kMaxPngSide || height > kMaxPngSide || width * height > kMaxPngPixels) {
        Fail(std::to_string(width) + " x " + std::to_string(height) + " pixels are too many");
    }
    image->format = PNG_FORMAT_RGBA;
    image->flags |= PNG_IMAGE_FLAG_16BIT_sRGB;  // otherwise 16 bits are read as linear light
    Picture picture = ClearPicture(static_cast<int>(width), static_cast<int>(height));
    if (png_image_finish_read(image.Get(), nullptr, picture.rgba.data(), 0, nullptr) == 0) Fail(image->message);
    return picture;
}

}  // namespace zel::picture
