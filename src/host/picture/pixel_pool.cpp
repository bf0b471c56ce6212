#include "host/picture/pixel_pool.h"

#include <cstring>
#include <utility>

namespace zel::picture {

std::vector<std::uint8_t> PixelPool::Take(std::size_t size) {
    std::vector<std::uint8_t> pixels;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_buffers.empty()) {
            pixels = std::move(m_buffers.back());
            m_buffers.pop_back();
        }
    }
    pixels.resize(size);
    return pixels;
}

void PixelPool::Give(Picture picture) {
    const std::size_t row_bytes = PixelBytes(picture.width, 1);
    for (int y = 0; y < picture.height; ++y) {
        if (picture.MayBeDrawn(y)) std::memset(&picture.rgba[static_cast<std::size_t>(y) * row_bytes], 0, row_bytes);
    }
    const std::lock_guard lock(m_mutex);
    m_buffers.push_back(std::move(picture.rgba));
}

}  // namespace zel::picture
