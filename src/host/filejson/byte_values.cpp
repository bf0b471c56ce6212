#include "host/filejson/byte_values.h"

#include <algorithm>

#include <nettle/base64.h>

#include "base/utf8.h"

namespace zel::filejson {

std::string Base64(std::span<const std::uint8_t> bytes) {
    std::string text(BASE64_ENCODE_RAW_LENGTH(bytes.size()), '\0');
    base64_encode_raw(text.data(), bytes.size(), bytes.data());
    return text;
}

std::optional<std::vector<std::uint8_t>> FromBase64(std::string_view text) {
    base64_decode_ctx state;
    base64_decode_init(&state);
    std::vector<std::uint8_t> bytes(BASE64_DECODE_LENGTH(text.size()));
    std::size_t size = bytes.size();
    const bool whole = base64_decode_update(&state, &size, bytes.data(), text.size(), text.data()) == 1 &&
                       base64_decode_final(&state) == 1;
    if (!whole) return std::nullopt;
    bytes.resize(size);
    return bytes;
}

std::optional<std::string> Latin1FromUtf8(std::string_view text, char32_t& other) {
    std::string bytes;
    while (!text.empty()) {
        const base::Utf8Character character = base::FirstCharacter(text);
        if (!character.valid || character.code > 0xFF) {
            other = character.code;
            return std::nullopt;
        }
        bytes += static_cast<char>(character.code);
        text.remove_prefix(character.size);
    }
    return bytes;
}

bool AreEqual(std::span<const std::uint8_t> bytes) noexcept {
    return std::ranges::adjacent_find(bytes, std::ranges::not_equal_to{}) == bytes.end();
}

std::vector<std::uint8_t> BytesOfWords(std::span<const std::uint16_t> words) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(2 * words.size());
    for (const std::uint16_t word : words) {
        bytes.push_back(static_cast<std::uint8_t>(word >> 8));
        bytes.push_back(static_cast<std::uint8_t>(word));
    }
    return bytes;
}

std::vector<std::uint16_t> WordsOfBytes(std::span<const std::uint8_t> bytes) {
    std::vector<std::uint16_t> words(bytes.size() / 2);
    for (std::size_t k = 0; k < words.size(); ++k) {
        words[k] = static_cast<std::uint16_t>(bytes[2 * k] << 8 | bytes[2 * k + 1]);
    }
    return words;
}

}  // namespace zel::filejson
