// The bit fields of rows, characters and tab fields, bit by bit.
#include <array>

#include <gtest/gtest.h>

#include "module/contract/records/msg_row.h"
#include "module/contract/records/tab_field.h"
#include "module/message/format/convert_row.h"
#include "module/message/format/convert_tab_field.h"
#include "module/message/format/msg_chars.h"

namespace zel::test {

namespace {

/// A field of `width` bits. In the file its highest bit is `file`, where bit 0 is the highest bit of byte 0. In memory
/// its highest bit is `memory`, where bit 16 * n + b is bit b of word n.
struct Field {
    const char* name;
    unsigned file, width, memory;
};

constexpr Field kRowHead[] = {
    {"b0 bit 7", 0, 1, 0},
    {"b0 bit 6", 1, 1, 1},
    {"row_empty", 2, 1, 2},
    {"b0 bit 4", 3, 1, 3},
    {"b0 bit 3", 4, 1, 4},
    {"b0 bit 2", 5, 1, 5},
    {"row_y", 6, 10, 15},
    {"first_char", 16, 6, 16 + 5},
    {"row_top", 22, 10, 16 + 15},
    {"char_count", 32, 6, 32 + 5},
    {"row_bottom", 38, 10, 32 + 15},
    {"b6 bit 2", 53, 1, 48 + 5},
    {"b6 bits 4 to 0", 51, 5, 48 + 4},
    {"b6 bits 1 to 0, b7", 54, 10, 48 + 15},
};
constexpr Field kChar[] = {
    {"b0 bit 7", 0, 1, 0},          {"place_flag", 1, 1, 1},
    {"chain_end", 2, 1, 2},         {"b0 bit 4", 3, 1, 3},
    {"b0 bit 3", 4, 1, 4},          {"b0 bit 2", 5, 1, 5},
    {"char_x", 6, 10, 15},          {"b2 bits 7 to 6", 16, 2, 16 + 1},
    {"b2 bit 5", 18, 1, 16 + 2},    {"colour_set", 19, 3, 16 + 5},
    {"char_y", 22, 10, 16 + 15},    {"char_font", 32, 6, 32 + 5},
    {"char_code", 38, 10, 32 + 15}, {"b6, b7 bits 7 to 6", 48, 10, 48 + 9},
    {"next_char", 58, 6, 48 + 15},
};
constexpr Field kTabBits[] = {
    {"tab_row", 0, 6, 5},      {"tab_a", 6, 4, 9},       {"tab_font", 10, 5, 14},
    {"tab_colour", 15, 4, 18}, {"b24 bit 4", 19, 1, 19}, {"b24 bit 3", 20, 1, 20},
    {"b24 bit 2", 21, 1, 21},  {"b24 bit 1", 22, 1, 22}, {"b24 bit 0", 23, 1, 23},
};

std::uint64_t Expected(std::span<const Field> fields, unsigned file_bit) {
    std::uint64_t memory = 0;
    for (const Field& field : fields) {
        if (file_bit >= field.file && file_bit < field.file + field.width)
            memory |= std::uint64_t{1} << (field.memory - (file_bit - field.file));
    }
    return memory;
}

template <typename Record>
std::uint64_t Words(const Record& record) {
    return record.word0 | std::uint64_t{record.word1} << 16 | std::uint64_t{record.word2} << 32 |
           std::uint64_t{record.word3} << 48;
}

template <std::size_t N>
std::array<std::uint8_t, N> OneBit(unsigned bit) {
    std::array<std::uint8_t, N> bytes{};
    bytes[bit / 8] = static_cast<std::uint8_t>(0x80U >> bit % 8);
    return bytes;
}

TEST(RowBits, EachBitOfAHeadGoesToItsPlace) {
    for (unsigned bit = 0; bit < 64; ++bit)
        EXPECT_EQ(Words(message::ConvertRowHead(OneBit<8>(bit))), Expected(kRowHead, bit)) << "bit " << bit;
}

// All numbers of records, to cover each position in a vector and each remainder.
TEST(RowBits, EveryPathConvertsCharactersAlike) {
    std::array<std::uint8_t, 8 * 64> file{};
    for (unsigned bit = 0; bit < 8 * file.size(); ++bit) {
        const unsigned byte = file[bit / 8] | ((bit * 40503U >> 7 & 1) << (7 - bit % 8));
        file[bit / 8] = static_cast<std::uint8_t>(byte);
    }
    const std::size_t most = file.size() / 8;
    for (const message::msg_chars::Path& path : message::msg_chars::Paths()) {
        for (std::size_t count = 0; count <= most; ++count) {
            std::array<tag_msg_char, 65> chars;
            chars.fill({0xA5A5, 0, 0, 0});
            path.convert(file.data(), chars.data(), count);
            for (std::size_t n = 0; n < count; ++n)
                ASSERT_EQ(chars[n], message::ConvertMsgChar(std::span(file).subspan(8 * n, 8)))
                    << path.name << ' ' << n;
            EXPECT_EQ(chars[count].word0, 0xA5A5) << path.name << " wrote after " << count;
        }
        for (unsigned bit = 0; bit < 64; ++bit) {
            std::array<tag_msg_char, 8> chars;
            std::array<std::uint8_t, 64> records{};
            records[8 * (bit % 8) + bit / 8] = static_cast<std::uint8_t>(0x80U >> bit % 8);
            path.convert(records.data(), chars.data(), 8);
            EXPECT_EQ(Words(chars[bit % 8]), Expected(kChar, bit)) << path.name << ' ' << bit;
        }
    }
}

TEST(RowBits, EachBitOfATabFieldGoesToItsPlace) {
    for (unsigned bit = 0; bit < 24; ++bit) {
        const auto bytes = OneBit<3>(bit);
        EXPECT_EQ(message::RepackTabBits(bytes[0], bytes[1], bytes[2]), Expected(kTabBits, bit)) << "bit " << bit;
    }
}

TEST(RowFields, SettersLeaveOtherFieldsUnchanged) {
    tag_msg_char character =
        message::ConvertMsgChar(std::array<std::uint8_t, 8>{255, 255, 255, 255, 255, 255, 255, 255});
    character.SetX(0);
    character.SetNext(0);
    character.SetColourSet(0);
    character.SetY(0x155);
    EXPECT_EQ(character.word0, 0x003F);
    EXPECT_EQ(character.word1, 0x0007 | 0x155 << 6);
    EXPECT_EQ(character.word3, 0x03FF);
}

}  // namespace

}  // namespace zel::test
