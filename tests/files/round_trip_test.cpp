// Reading without loss: the bytes of a file, of every cut of it and of every mutation of it come back, and a
// description that is written and read is the same description.

#include <algorithm>

#include <gtest/gtest.h>

#include "files/font_reader.h"
#include "files/message_fields.h"
#include "files/message_reader.h"
#include "files/random_files.h"

namespace zel::files {
namespace {

using namespace files_test;

/// The bytes come back.
void ExpectSameBytesOfFont(std::span<const std::uint8_t> bytes, const std::string& what) {
    const auto read = ReadFont(bytes);
    const bool is_font = bytes.size() >= 2184 && bytes[0] == 0 && bytes[1] == 0 && bytes[2] == 1 && bytes[3] == 0xF4;
    ASSERT_EQ(bool(read), is_font) << what;
    if (read) {
        ASSERT_TRUE(std::ranges::equal(WriteFont(*read), bytes)) << what;
    }
}

/// As above.
void ExpectSameBytes(std::span<const std::uint8_t> bytes, const std::string& what) {
    const auto read = ReadMessage(bytes);
    const bool is_message = bytes.size() >= 152 && bytes[0] == 0 && bytes[1] == 0 && bytes[2] == 2 && bytes[3] == 0xBE;
    ASSERT_EQ(bool(read), is_message) << what;
    if (read) {
        ASSERT_TRUE(std::ranges::equal(WriteMessage(*read), bytes)) << what;
    }
}

TEST(ReadMessageTest, ReadsBackADescription) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        Dice dice(seed);
        const MessageFile message = RandomMessage(dice);
        const auto read = ReadMessage(WriteMessage(message));
        ASSERT_TRUE(read) << seed;
        ASSERT_TRUE(*read == message) << seed;
    }
}

TEST(ReadMessageTest, KeepsTheBytesOfEveryCutAndOfChangedFiles) {
    for (unsigned seed = 0; seed < 2; ++seed) {
        Dice dice(seed);
        Bytes bytes = WriteMessage(RandomMessage(dice));
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            ExpectSameBytes(std::span(bytes).first(size), "cut at " + std::to_string(size));
        }
        for (unsigned n = 0; n < 500; ++n) {
            Bytes changed = bytes;
            const std::size_t front = dice.Chance(2) ? std::min<std::size_t>(400, bytes.size()) : bytes.size();
            for (unsigned k = 1 + dice.Below(3); k > 0; --k) {
                changed[4 + dice.Below(static_cast<unsigned>(front - 4))] = static_cast<std::uint8_t>(dice.Bits(8));
            }
            ExpectSameBytes(changed, "seed " + std::to_string(seed) + ", change " + std::to_string(n));
        }
    }
}

TEST(ReadMessageTest, SaysWhyAFileIsNoMessage) {
    Bytes bytes = WriteMessage({});
    EXPECT_EQ(ReadMessage(std::span(bytes).first(151)).reason, NoDescription::kShort);
    bytes[3] = 0xBF;
    EXPECT_EQ(ReadMessage(bytes).reason, NoDescription::kOtherType);
    EXPECT_EQ(ReadMessage(bytes).file_type, 703u);
}

/// What no other file has: each is kept, and where an import stops, the rest is the tail.
TEST(ReadMessageTest, TakesTheSectionsWhereAnImportReadsThem) {
    MessageFile message;
    message.rows = {EmptyRow(5)};
    message.palette = PaletteBlock{.palette_words = 600, .entries = std::vector<std::uint32_t>(256, 7)};
    message.tail = Bytes(176, 9);
    message.section_flags = kPaletteFlag | kTabFlag;
    message.tabs = TabTable{.tab_version = 0x0909, .tab_words = 0x0909, .third_word = 0x0909};
    const auto read = ReadMessage(WriteMessage(message));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->palette->entries.size(), 256u);
    EXPECT_EQ(read->tabs->tab_version, 0x0909u);
    EXPECT_TRUE(read->tabs->fields.empty());
    EXPECT_EQ(read->tail.size(), 176u);
    EXPECT_FALSE(read->size);
}

TEST(ReadFontTest, ReadsBackADescription) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        Dice dice(seed);
        const FontFile font = RandomFont(dice);
        const auto read = ReadFont(WriteFont(font));
        ASSERT_TRUE(read) << seed;
        ASSERT_TRUE(*read == font) << seed;
    }
}

TEST(ReadFontTest, KeepsTheBytesOfEveryCutAndOfChangedFiles) {
    for (unsigned seed = 0; seed < 2; ++seed) {
        Dice dice(seed);
        const Bytes bytes = WriteFont(RandomFont(dice));
        for (std::size_t size = 2180; size <= bytes.size(); ++size) {
            ExpectSameBytesOfFont(std::span(bytes).first(size), "cut at " + std::to_string(size));
        }
        for (unsigned n = 0; n < 500; ++n) {
            Bytes changed = bytes;
            const std::size_t first = dice.Chance(2) ? 234 : 4;  // the sizes and flags, or anything
            const std::size_t count = first == 4 ? bytes.size() - 4 : 30;
            for (unsigned k = 1 + dice.Below(3); k > 0; --k) {
                changed[first + dice.Below(static_cast<unsigned>(count))] =
                    dice.Chance(2) ? static_cast<std::uint8_t>(dice.Bits(8)) : std::uint8_t{0};
            }
            ExpectSameBytesOfFont(changed, "seed " + std::to_string(seed) + ", change " + std::to_string(n));
        }
    }
}

/// Records that overlap because a length is below 12, and one that has no end, as an import takes them.
TEST(ReadFontTest, TakesStoredRecordsBackToBack) {
    FontFile font;
    font.AddStored(1, {.width = 2, .height = 1, .pixels = Bytes(8, 5)}, 0, 0);
    font.AddStored(2, {.width = 2, .height = 1, .pixels = Bytes(8, 6), .length = 11}, 0, 0);
    font.AddStored(3, {.width = 2, .height = 1, .pixels = Bytes(8, 7), .length = 4000}, 0, 0);
    EXPECT_EQ(ReadFont(WriteFont(font))->stored.size(), 1u);
    EXPECT_EQ(ReadFont(WriteFont(font))->tail.size(), 40u);
    font.stored[2].length.reset();
    EXPECT_TRUE(*ReadFont(WriteFont(font)) == font);
}

}  // namespace
}  // namespace zel::files
