#include "fill/data/data_stream.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace zel::fill {

DataStream::DataStream(const ReadBytes& read) : m_read(read), m_window(std::make_unique<char[]>(kWindow)) {
    const std::string_view begin = Available();
    if (begin.starts_with("\xFF\xFE") || begin.starts_with("\xFE\xFF"))
        throw DataError("line 1: the text is in UTF-16; save the table as UTF-8");
    if (begin.starts_with("\xEF\xBB\xBF")) Consume(3);
}

std::string_view DataStream::Available() {
    if (gptr() == egptr()) underflow();
    return {gptr(), static_cast<std::size_t>(egptr() - gptr())};
}

std::uint64_t DataStream::Line() {
    m_lines += static_cast<std::uint64_t>(std::count(eback() + m_counted, gptr(), '\n'));
    m_counted = static_cast<std::size_t>(gptr() - eback());
    return m_lines + 1;
}

DataStream::int_type DataStream::underflow() {
    if (IsTooLong()) return traits_type::eof();
    Line();
    m_counted = 0;
    m_window_begin = Position();
    const std::span<char> window(m_window.get(), kWindow);
    std::size_t size = 0;
    for (std::size_t count = 1; count != 0 && size < kWindow;) {
        count = m_read(window.subspan(size));
        size += count;
        if (m_has_begun && std::memchr(window.data() + size - count, '\n', count) != nullptr) break;
    }
    m_has_begun = true;
    setg(window.data(), window.data(), window.data() + size);
    return size == 0 ? traits_type::eof() : traits_type::to_int_type(window[0]);
}

}  // namespace zel::fill
