#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace zel::document {

/// Builds one line of JSON in a string that is used again and again, so that a line costs no allocation. The caller
/// opens and closes objects and arrays in pairs. Keys are written as they are.
class JsonLine {
  public:
    /// The line without its line feed, good until the next Clear.
    const std::string& Text() const noexcept { return m_text; }
    void Clear() noexcept { m_text.clear(); }
    void Reserve(std::size_t size) { m_text.reserve(size); }
    std::string Take() noexcept { return std::exchange(m_text, {}); }

    JsonLine& Open(char bracket);   ///< '{' or '[', as a value.
    JsonLine& Close(char bracket);  ///< '}' or ']'.
    JsonLine& Key(std::string_view key);

    JsonLine& Number(std::integral auto value) {
        if constexpr (std::signed_integral<decltype(value)>) {
            if (value < 0) return Signed(value);
        }
        return Unsigned(static_cast<std::uint64_t>(value));
    }
    JsonLine& Float(double value);  ///< the shortest digits that give the value again; null when it isn't finite.
    JsonLine& Null();
    JsonLine& Bool(bool value);
    JsonLine& Written(std::string_view json);  ///< a value that is JSON already.
    /// Writes a part of Text once more, which was written in a place of the same kind.
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
