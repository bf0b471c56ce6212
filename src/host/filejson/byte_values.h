#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::filejson {

/// Largest file that a document is made of or makes, in bytes.
inline constexpr std::size_t kLargestFile = std::size_t{128} << 20;

/// Bytes that nothing reads are kept in a document up to this size together, if they aren't all equal.
inline constexpr std::size_t kMostPassedOver = std::size_t{64} << 10;

/// Bytes as base64 with padding.
std::string Base64(std::span<const std::uint8_t> bytes);
/// The bytes of a base64 text; empty for another text. Blanks and line ends are passed over.
std::optional<std::vector<std::uint8_t>> FromBase64(std::string_view text);

/// Latin-1 of a UTF-8 text.
/// @return empty if a character is outside Latin-1, which `other` receives.
std::optional<std::string> Latin1FromUtf8(std::string_view text, char32_t& other);

/// Whether all bytes are equal.
bool AreEqual(std::span<const std::uint8_t> bytes) noexcept;

/// 16-bit words as big-endian bytes, and back.
std::vector<std::uint8_t> BytesOfWords(std::span<const std::uint16_t> words);
std::vector<std::uint16_t> WordsOfBytes(std::span<const std::uint8_t> bytes);

}  // namespace zel::filejson
