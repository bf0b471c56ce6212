#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "host/picture/picture.h"

namespace zel::picture {

/// A pool of pixel buffers, reused between pictures. The system provides the memory of a new buffer page by page, which
/// takes longer than clearing a used one. Any thread may call.
class PixelPool {
  public:
    /// A buffer of `size` bytes, all 0.
    std::vector<std::uint8_t> Take(std::size_t size);
    /// Clears the pixels of a picture and keeps them for a later Take.
    void Give(Picture picture);

  private:
    std::mutex m_mutex;
    /// All bytes are 0.
    std::vector<std::vector<std::uint8_t>> m_buffers;
};

}  // namespace zel::picture
