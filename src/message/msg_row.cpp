#include "message/msg_row.h"

#include <algorithm>
#include <bit>
#include <cstring>

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

namespace {

// All four words of a record in one value, the first lowest. The memory form has the file's fields at the other end of
// each word: six bits below and the ten bits of a position on top, in the last word the other way round.
std::uint64_t ConvertRecord(std::uint64_t file) noexcept {
    constexpr std::uint64_t kEachWord = 0x0001000100010001;
    const std::uint64_t words =
        (file & 0xFF * kEachWord) << 8 | (file >> 8 & 0xFF * kEachWord);  // each word's two bytes exchanged
    const std::uint64_t positions = (words & 0x3FF * kEachWord) << 6, fields = words >> 10 & 0x3F * kEachWord;
    const std::uint64_t flags = fields & 0x3F, set = fields >> 16 & 0x3F, last = words >> 48;
    // place_flag and chain_end: the file's top bit is the memory's lowest.
    const std::uint64_t reversed =
        (flags & 1) << 5 | (flags & 2) << 3 | (flags & 4) << 1 | (flags >> 1 & 4) | (flags >> 3 & 2) | flags >> 5;
    // b2 bits 7-6 stay in order in bits 1-0, bit 5 goes to bit 2, bits 4-2 (colour_set) to bits 5-3.
    const std::uint64_t turned = set >> 4 | (set >> 1 & 4) | (set & 7) << 3;
    constexpr std::uint64_t kThreePositions = 0x0000FFC0FFC0FFC0;
    return (positions & kThreePositions) | (fields & 0x0000003F00000000) | reversed | turned << 16 |
           (last >> 6 | (last & 0x3F) << 10) << 48;
}

}  // namespace

tag_msg_char ConvertMsgChar(std::span<const std::uint8_t> bytes) noexcept {
    std::uint64_t record = 0;
    if (!bytes.empty()) std::memcpy(&record, bytes.data(), std::min(bytes.size(), sizeof record));
    return std::bit_cast<tag_msg_char>(ConvertRecord(record));
}

void ConvertMsgChars(std::span<const std::uint8_t> bytes, tag_msg_char* chars) noexcept {
    for (; bytes.size() >= sizeof *chars; bytes = bytes.subspan(sizeof *chars), ++chars) {
        std::uint64_t record = 0;
        std::memcpy(&record, bytes.data(), sizeof record);
        *chars = std::bit_cast<tag_msg_char>(ConvertRecord(record));
    }
    if (!bytes.empty()) *chars = ConvertMsgChar(bytes);
}
