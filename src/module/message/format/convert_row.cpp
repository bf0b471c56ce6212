#include "module/message/format/convert_row.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "module/message/format/byte_order.h"
#include "module/message/format/msg_chars.h"

namespace zel::message {

namespace {

// A word of the memory form: a 6-bit field in bits 0 to 5 and a 10-bit field in bits 6 to 15. Only the last word of a
// character has another layout.
constexpr std::uint16_t Word(unsigned low_field, unsigned high_field) noexcept {
    return static_cast<std::uint16_t>((low_field & 0x3F) | (high_field & 0x3FF) << 6);
}

// The first word of both records contains six flags. The highest bit in the file is the lowest in memory.
constexpr unsigned ReverseSixFlags(unsigned b0) noexcept {
    return (b0 >> 7 & 1) | (b0 >> 5 & 2) | (b0 >> 3 & 4) | (b0 >> 1 & 8) | (b0 << 1 & 16) | (b0 << 3 & 32);
}
static_assert(ReverseSixFlags(0x80) == 0x01 && ReverseSixFlags(0x20) == 0x04 && ReverseSixFlags(0x04) == 0x20);

}  // namespace

RowHead ConvertRowHead(std::span<const std::uint8_t> bytes) noexcept {
    std::array<std::uint16_t, 4> words{};
    if (bytes.size() >= sizeof words) {  // a copy of constant length compiles to one instruction
        std::memcpy(words.data(), bytes.data(), sizeof words);
    } else if (!bytes.empty()) {
        std::memcpy(words.data(), bytes.data(), bytes.size());
    }
    const unsigned w0 = SwapWord(words[0]), w1 = SwapWord(words[1]), w2 = SwapWord(words[2]), w3 = SwapWord(words[3]);
    RowHead head{};
    head.word0 = Word(ReverseSixFlags(w0 >> 8), w0);  // flags, row_y
    head.word1 = Word(w1 >> 10, w1);                  // first_char, row_top
    head.word2 = Word(w2 >> 10, w2);                  // char_count, row_bottom
    // The legacy form stores the low bits of b6 twice: as a 5-bit field with a flag, and as the top of the 10-bit
    // field.
    const unsigned b6 = w3 >> 8;
    head.word3 = Word((b6 & 0x1F) | (b6 >> 2 & 1) << 5, w3);
    return head;
}

tag_msg_char ConvertMsgChar(std::span<const std::uint8_t> bytes) noexcept {
    std::array<std::uint8_t, sizeof(tag_msg_char)> whole{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), whole.size()), whole.begin());
    tag_msg_char character{};
    msg_chars::Paths().back().convert(whole.data(), &character, 1);
    return character;
}

std::size_t ConvertRow(std::span<const std::uint8_t> bytes, tag_msg_row& row) noexcept {
    const RowHead head = ConvertRowHead(bytes);
    static_cast<RowHead&>(row) = head;
    constexpr std::size_t kRecord = sizeof(tag_msg_char);
    const std::size_t size = head.Empty() ? 0 : static_cast<std::size_t>(head.CharCount()) * kRecord;
    const auto rest = bytes.subspan(std::min(bytes.size(), sizeof head));
    const auto records = rest.first(std::min(rest.size(), size));
    const std::size_t whole = records.size() / kRecord;
    msg_chars::Paths().front().convert(records.data(), row.chars, whole);
    if (records.size() % kRecord != 0) row.chars[whole] = ConvertMsgChar(records.subspan(whole * kRecord));
    return sizeof head + size;
}

}  // namespace zel::message
