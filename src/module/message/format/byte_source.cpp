#include "module/message/format/byte_source.h"

#include <algorithm>
#include <cstring>

namespace zel::message {

ByteSource::ByteSource(std::span<const std::uint8_t> bytes) noexcept : m_window(bytes), m_size(bytes.size()) {}

ByteSource::ByteSource(FileBytes& file) noexcept : m_size(file.Size()), m_file(&file) {}

// Serves a range that the window doesn't contain completely.
std::span<const std::uint8_t> ByteSource::Fetch(std::uint64_t offset, std::size_t count) {
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, Left(offset)));
    if (count == 0) return {};
    if (m_file != nullptr && (offset < m_window_offset || offset - m_window_offset > m_window.size() ||
                              count > m_window.size() - (offset - m_window_offset))) {
        const std::size_t window = m_size <= kWholeFile ? static_cast<std::size_t>(m_size) : kSmallWindow;
        const std::size_t size = static_cast<std::size_t>(std::min<std::uint64_t>(window, Left(offset)));
        m_window_offset = offset;
        m_window = {m_buffer.data(), m_file->Read(offset, {m_buffer.data(), size})};
    }
    const std::span<const std::uint8_t> rest = m_window.subspan(static_cast<std::size_t>(offset - m_window_offset));
    return rest.first(std::min(count, rest.size()));
}

std::size_t ByteSource::Read(std::uint64_t offset, std::span<std::uint8_t> out) {
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(out.size(), Left(offset)));
    if (wanted == 0) return 0;
    std::size_t done = 0;
    if (offset >= m_window_offset && offset - m_window_offset < m_window.size()) {
        const auto buffered = m_window.subspan(static_cast<std::size_t>(offset - m_window_offset));
        done = std::min(wanted, buffered.size());
        std::memcpy(out.data(), buffered.data(), done);
    }
    if (done == wanted || m_file == nullptr) return done;
    if (wanted - done > kSmallBlock) return done + m_file->Read(offset + done, out.subspan(done, wanted - done));
    const std::span<const std::uint8_t> rest = Fetch(offset + done, wanted - done);
    std::memcpy(out.data() + done, rest.data(), rest.size());
    return done + rest.size();
}

}  // namespace zel::message
