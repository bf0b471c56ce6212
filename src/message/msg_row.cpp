#include "message/msg_row.h"

#include "message/big_endian_cursor.h"

namespace {

// A word of the memory form: a field of `low_width` bits from bit 0, its bits in the file's order, and the 10-bit
// position that every word but a character's last carries in bits 6 to 15.
constexpr std::uint16_t Word(unsigned low_field, unsigned position) noexcept {
    return static_cast<std::uint16_t>((low_field & 0x3F) | (position & 0x3FF) << 6);
}

// The first word of both records holds six flags; the file's top bit is the memory's lowest.
constexpr unsigned ReverseSixFlags(unsigned b0) noexcept {
    return (b0 >> 7 & 1) | (b0 >> 6 & 1) << 1 | (b0 >> 5 & 1) << 2 | (b0 >> 4 & 1) << 3 | (b0 >> 3 & 1) << 4 |
           (b0 >> 2 & 1) << 5;
}
static_assert(ReverseSixFlags(0x80) == 0x01 && ReverseSixFlags(0x20) == 0x04 && ReverseSixFlags(0x04) == 0x20);

}  // namespace

RowHead ConvertRowHead(std::span<const std::uint8_t> bytes) noexcept {
    BigEndianCursor in(bytes);
    const unsigned w0 = in.U16(), w1 = in.U16(), w2 = in.U16(), w3 = in.U16();
    RowHead head{};
    head.word0 = Word(ReverseSixFlags(w0 >> 8), w0);  // flags, row_y
    head.word1 = Word(w1 >> 10, w1);                  // first_char, row_top
    head.word2 = Word(w2 >> 10, w2);                  // char_count, row_bottom
    // The legacy form lays the low bits of b6 down twice, as a 5-bit field with a flag and as the top of the 10 bits.
    const unsigned b6 = w3 >> 8;
    head.word3 = Word((b6 & 0x1F) | (b6 >> 2 & 1) << 5, w3);
    return head;
}

tag_msg_char ConvertMsgChar(std::span<const std::uint8_t> bytes) noexcept {
    BigEndianCursor in(bytes);
    const unsigned w0 = in.U16(), w1 = in.U16(), w2 = in.U16(), w3 = in.U16();
    tag_msg_char character{};
    character.word0 = Word(ReverseSixFlags(w0 >> 8), w0);  // place_flag, chain_end, char_x
    // b2 bits 7-6 stay in order in bits 1-0, bit 5 goes to bit 2, bits 4-2 (colour_set) to bits 5-3.
    const unsigned b2 = w1 >> 8;
    character.word1 = Word((b2 >> 6 & 3) | (b2 >> 5 & 1) << 2 | (b2 >> 2 & 7) << 3, w1);  // colour_set, char_y
    character.word2 = Word(w2 >> 10, w2);                                                 // char_font, char_code
    character.word3 = static_cast<std::uint16_t>(w3 >> 6 | (w3 & 0x3F) << 10);            // next_char on top
    return character;
}
