#include "host/picture/pixel_pool.h"

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
    pixels.assign(size, 0);
    return pixels;
}

void PixelPool::Give(std::vector<std::uint8_t> pixels) {
    const std::lock_guard lock(m_mutex);
    m_buffers.push_back(std::move(pixels));
}

}  // namespace zel::picture
