#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "files/byte_writer.h"

/// Each record of a format has one list of its fields, in a structure with
///
///     static constexpr std::size_t kSize;                       // bytes of the record
///     template <class Io, class... Values> static void Each(Io&, Values&...);
///
/// whose `Each` calls the members below in the order of the fields. RecordWriter and RecordReader have the same
/// members, so that writing and reading can't disagree.
///
/// | call                | bytes     | value                                                         |
/// |---------------------|-----------|---------------------------------------------------------------|
/// | Bits(width, value)  | `width`/8 | unsigned, 1 to 32 bits, from the most significant bit          |
/// | Signed(value)       | 2         | a signed word                                                 |
/// | Text(text, width)   | `width`   | text, filled up with zeros                                    |
/// | Array(array)        | its size  | an array of bytes or words                                    |
namespace zel::files {

/// Writes the fields of a record of N bytes. A value too wide for its field is truncated.
template <std::size_t N>
class RecordWriter {
  public:
    template <class T>
    void Bits(unsigned width, const T& value) noexcept {
        m_record.Put(width, static_cast<std::uint32_t>(value));
    }
    void Signed(int value) noexcept { Bits(16, value); }
    void Text(const std::string& text, std::size_t width) noexcept {
        for (std::size_t k = 0; k < width; ++k) Bits(8, k < text.size() ? static_cast<unsigned char>(text[k]) : 0);
    }
    template <class T, std::size_t M>
    void Array(const std::array<T, M>& values) noexcept {
        for (const T value : values) Bits(8 * sizeof(T), value);
    }
    constexpr const std::array<std::uint8_t, N>& Written() const noexcept { return m_record.Written(); }

  private:
    BitRecord<N> m_record;
};

/// Reads the fields of a record. Bytes beyond its end read as zero.
class RecordReader {
  public:
    explicit RecordReader(std::span<const std::uint8_t> bytes) noexcept : m_rest(bytes) {}

    template <class T>
    void Bits(unsigned width, T& value) noexcept {
        value = static_cast<T>(Take(width));
    }
    void Signed(int& value) noexcept { value = static_cast<std::int16_t>(Take(16)); }
    /// The zeros at the end of the field are no part of the text.
    void Text(std::string& text, std::size_t width) {
        text.clear();
        for (std::size_t k = 0; k < width; ++k) text.push_back(static_cast<char>(Take(8)));
        text.erase(text.find_last_not_of('\0') + 1);
    }
    template <class T, std::size_t M>
    void Array(std::array<T, M>& values) noexcept {
        for (T& value : values) Bits(8 * sizeof(T), value);
    }

  private:
    std::uint32_t Take(unsigned width) noexcept {
        while (m_held < width) {
            m_bits = m_bits << 8 | (m_rest.empty() ? 0U : m_rest.front());
            m_rest = m_rest.subspan(m_rest.empty() ? 0 : 1);
            m_held += 8;
        }
        m_held -= width;
        return static_cast<std::uint32_t>(m_bits >> m_held & ((std::uint64_t{1} << width) - 1));
    }

    std::span<const std::uint8_t> m_rest;
    // The low m_held bits are taken from m_rest and not yet read; always fewer than 40.
    std::uint64_t m_bits = 0;
    unsigned m_held = 0;
};

/// The bytes of a record. @param values  what Fields::Each takes.
template <class Fields, class... Values>
std::array<std::uint8_t, Fields::kSize> WriteRecord(const Values&... values) {
    RecordWriter<Fields::kSize> writer;
    Fields::Each(writer, values...);
    return writer.Written();
}

/// Reads a record. @param bytes  missing ones read as zero.
template <class Fields, class... Values>
void ReadRecord(std::span<const std::uint8_t> bytes, Values&... values) {
    RecordReader reader(bytes.first(std::min(bytes.size(), Fields::kSize)));
    Fields::Each(reader, values...);
}

/// One 16-bit or 32-bit value.
template <unsigned kBytes>
struct NumberFields {
    static constexpr std::size_t kSize = kBytes;
    template <class Io, class Number>
    static void Each(Io& io, Number& number) {
        io.Bits(8 * kBytes, number);
    }
};

/// The text before the first zero byte: a text field as the formats' readers take it. What follows stays in the field.
constexpr std::string_view BeforeZero(std::string_view field) noexcept {
    return field.substr(0, field.find('\0'));
}

/// A position in a file that never leaves it.
class FileCursor {
  public:
    explicit FileCursor(std::span<const std::uint8_t> file) noexcept : m_rest(file) {}

    /// The next `count` bytes, fewer at the end of the file.
    std::span<const std::uint8_t> Next(std::uint64_t count) noexcept {
        m_passed_end = m_passed_end || count > m_rest.size();
        const auto bytes = m_rest.first(static_cast<std::size_t>(std::min<std::uint64_t>(count, m_rest.size())));
        m_rest = m_rest.subspan(bytes.size());
        return bytes;
    }
    /// What follows, without moving.
    std::span<const std::uint8_t> Rest() const noexcept { return m_rest; }
    bool AtEnd() const noexcept { return m_rest.empty(); }
    /// Bytes beyond the end were asked for.
    bool PassedEnd() const noexcept { return m_passed_end; }

  private:
    std::span<const std::uint8_t> m_rest;
    bool m_passed_end = false;
};

}  // namespace zel::files
