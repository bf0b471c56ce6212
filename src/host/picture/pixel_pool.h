#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace zel::picture {

/// A pool of pixel buffers, reused between pictures: the system would have to provide the memory of each new one page
/// by page. Any thread may call.
class PixelPool {
  public:
    /// A buffer of so many bytes, all 0.
    std::vector<std::uint8_t> Take(std::size_t size);
    /// Keeps a buffer for a later Take.
    void Give(std::vector<std::uint8_t> pixels);

  private:
    std::mutex m_mutex;
    std::vector<std::vector<std::uint8_t>> m_buffers;
};

}  // namespace zel::picture
