#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zel::message {

/// An open file, as ByteSource requires it.
class FileBytes {
  public:
    /// Length of the file in bytes.
    virtual std::uint64_t Size() const noexcept = 0;
    /// Copies bytes that start at `offset` to `out`.
    /// @return the number of bytes copied; fewer than out.size() at the end of the file or on an error.
    virtual std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> out) = 0;

  protected:
    ~FileBytes() = default;
};

/// Random access to the bytes of one file: in memory (tests, fuzzers, benchmarks, other programs) or open, through a
/// buffered window. Through the window an ordinary message or font costs one read, and a section that is skipped none.
class ByteSource {
  public:
    /// @param bytes  the whole file; must outlive the source.
    explicit ByteSource(std::span<const std::uint8_t> bytes) noexcept;
    /// @param file  must outlive the source.
    explicit ByteSource(FileBytes& file) noexcept;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// Length of the file in bytes when the source was made.
    std::uint64_t Size() const noexcept { return m_size; }

    /// Number of bytes from `offset` to the end of the file.
    std::uint64_t Left(std::uint64_t offset) const noexcept { return offset < m_size ? m_size - offset : 0; }

    /// Up to `count` bytes that start at `offset`, fewer at the end of the file. Valid until the next call.
    /// @param count  at most kSmallWindow.
    std::span<const std::uint8_t> At(std::uint64_t offset, std::size_t count) {
        if (offset >= m_window_offset) {
            const std::uint64_t start = offset - m_window_offset;
            if (start <= m_window.size() && count <= m_window.size() - start)
                return m_window.subspan(static_cast<std::size_t>(start), count);
        }
        return Fetch(offset, count);
    }

    /// Copies bytes that start at `offset` to `out`. Many bytes outside the window are read directly into `out`.
    /// @return the number of bytes copied; fewer than out.size() at the end of the file, then the rest of `out` is not
    /// written.
    std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> out);

    /// A file of at most this size is read at once. It covers every ordinary message and most fonts.
    static constexpr std::size_t kWholeFile = 32768;
    /// Size of the window of a larger file, whose large blocks are read directly to their destination.
    static constexpr std::size_t kSmallWindow = 4096;
    /// A block of at most this size is read with what follows it, since small blocks come one after another.
    static constexpr std::size_t kSmallBlock = 512;

  private:
    std::span<const std::uint8_t> Fetch(std::uint64_t offset, std::size_t count);

    // The bytes of the file that start at m_window_offset.
    std::span<const std::uint8_t> m_window;
    std::uint64_t m_window_offset = 0;
    std::uint64_t m_size = 0;
    // Null for bytes in memory, which the window then covers.
    FileBytes* m_file = nullptr;
    // Storage of an open file's window.
    std::array<std::uint8_t, kWholeFile> m_buffer;
};

}  // namespace zel::message
