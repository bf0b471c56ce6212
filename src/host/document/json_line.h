#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace zel::document {

/// Builds one line of JSON in a string that is reused, so that a line allocates nothing. The caller opens and closes
/// objects and arrays in pairs. Keys are not escaped.
class JsonLine {
  public:
    /// The line without a line feed, valid until the next change.
    const std::string& Text() const noexcept { return m_text; }
    void Clear() noexcept { m_text.clear(); }
    void Reserve(std::size_t size) { m_text.reserve(size); }
    std::string Take() noexcept { return std::exchange(m_text, {}); }

    /// Begins a value with '{' or '['.
    JsonLine& Open(char bracket);
    /// Ends it with '}' or ']'.
    JsonLine& Close(char bracket);
    JsonLine& Key(std::string_view key);

    JsonLine& Number(std::integral auto value) {
        if constexpr (std::signed_integral<decltype(value)>) {
            if (value < 0) return Signed(value);
        }
        return Unsigned(static_cast<std::uint64_t>(value));
    }
    /// The shortest digits that give the same value; null for a value that is not finite.
    JsonLine& Float(double value);
    JsonLine& Null();
    JsonLine& Bool(bool value);
    /// A value that is JSON already.
    JsonLine& Written(std::string_view json);
    /// Appends a part of Text again. Both places must need the same separators.
    JsonLine& Repeat(std::size_t begin, std::size_t end) {
        m_text.append(m_text, begin, end - begin);
        return *this;
    }
    /// Text of the module: each byte is the code point of the same value.
    JsonLine& Bytes(std::string_view bytes);

    JsonLine& Number(std::string_view key, std::integral auto value) { return Key(key).Number(value); }
    JsonLine& Bytes(std::string_view key, std::string_view bytes) { return Key(key).Bytes(bytes); }

  private:
    JsonLine& Signed(std::int64_t value);
    JsonLine& Unsigned(std::uint64_t value);
    void Separate();

    std::string m_text;
};

}  // namespace zel::document
