#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <streambuf>
#include <string_view>

#include "fill/data/data_record.h"

namespace zel::fill {

/// The bytes of a table without a byte order mark, a window at a time, with their lines counted.
class DataStream : public std::streambuf {
  public:
    /// @param read  kept alive by the caller.
    /// @throws DataError for text in UTF-16.
    explicit DataStream(const ReadBytes& read);

    /// Bytes that follow; empty at the end. The first ones are a full window, unless there are fewer; the others have a
    /// whole line at least, unless it is longer than the window.
    std::string_view Available();
    /// Passes over bytes of Available.
    void Consume(std::size_t count) { gbump(static_cast<int>(count)); }

    /// The line of the next byte, from 1.
    std::uint64_t Line();

    /// Begins a record here.
    void BeginRecord() { m_record_begin = Position(); }
    /// The record is longer than kMostRecordBytes. Reading through the streambuf then ends.
    bool IsTooLong() const { return Position() - m_record_begin > kMostRecordBytes; }

  private:
    int_type underflow() override;
    std::uint64_t Position() const { return m_window_begin + static_cast<std::uint64_t>(gptr() - eback()); }

    static constexpr std::size_t kWindow = std::size_t{1} << 16;

    const ReadBytes& m_read;
    std::unique_ptr<char[]> m_window;
    bool m_has_begun = false;
    std::uint64_t m_window_begin = 0, m_record_begin = 0;
    /// Line ends before a place of the window, and that place: what was counted for an earlier record.
    std::uint64_t m_lines = 0;
    std::size_t m_counted = 0;
};

}  // namespace zel::fill
