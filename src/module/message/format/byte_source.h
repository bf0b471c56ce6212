#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zel::message {

/// An open file as a ByteSource needs it.
class FileBytes {
  public:
    /// Length of the file in bytes.
    virtual std::uint64_t Size() const noexcept = 0;
    /// Copies bytes from `offset` to `out`. @return how many there were, fewer at the end of the file or on an error.
    virtual std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> out) = 0;

  protected:
    ~FileBytes() = default;
};

/// The bytes of one file by position: from memory (tests, fuzzers, benchmarks, other programs) or from an open file,
/// through a window, so that an ordinary message or font costs one read and a part that is passed over costs none.
class ByteSource {
  public:
    /// @param bytes  must outlive the source.
    explicit ByteSource(std::span<const std::uint8_t> bytes) noexcept;
    /// @param file  must outlive the source.
    explicit ByteSource(FileBytes& file) noexcept;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// Length of the file in bytes, as it was when the source was made.
    std::uint64_t Size() const noexcept { return m_size; }

    /// Bytes from `offset` to the end of the file.
    std::uint64_t Left(std::uint64_t offset) const noexcept { return offset < m_size ? m_size - offset : 0; }

    /// Up to `count` bytes from `offset`, fewer at the end of the file. Good until the next call.
    /// @param count  at most kSmallWindow.
    std::span<const std::uint8_t> At(std::uint64_t offset, std::size_t count) {
        if (offset >= m_window_offset) {
            const std::uint64_t start = offset - m_window_offset;
            if (start <= m_window.size() && count <= m_window.size() - start)
                return m_window.subspan(static_cast<std::size_t>(start), count);
        }
        return Fetch(offset, count);
    }

    /// Copies bytes from `offset` to `out`; what the window doesn't hold is read straight to its place.
    /// @return how many came, fewer than asked at the end of the file; the rest of `out` is not written.
    std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> out);

    /// A file of this size and below is read in one: that is every ordinary message and most fonts.
    static constexpr std::size_t kWholeFile = 32768;
    /// Window of a larger file, whose large blocks are read straight to their places.
    static constexpr std::size_t kSmallWindow = 4096;

  private:
    std::span<const std::uint8_t> Fetch(std::uint64_t offset, std::size_t count);

    std::span<const std::uint8_t> m_window;  // the bytes at m_window_offset
    std::uint64_t m_window_offset = 0;
    std::uint64_t m_size = 0;
    FileBytes* m_file = nullptr;
    std::array<std::uint8_t, kWholeFile> m_buffer;  // of a file only
};

}  // namespace zel::message
