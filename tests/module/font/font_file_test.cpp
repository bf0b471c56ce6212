// The records and sections of a font file in memory.
#include <algorithm>
#include <cstring>
#include <random>

#include <gmock/gmock.h>

#include "module/font/format/convert_char_entry.h"
#include "module/font/format/convert_font_header.h"
#include "module/font/format/font_loader.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using files::Bytes;
using files::FontFile;
using testing::Each;
using testing::ElementsAre;

struct Loaded : font::LoadedFont {
    explicit Loaded(std::span<const std::uint8_t> bytes, message::SectionObserver* observer = nullptr)
        : outcome(font::LoadFont(bytes, *this, observer)) {}
    const font::FontOutcome outcome;
};

class SectionNames : public message::SectionObserver {
  public:
    void OnSection(const char* name, std::uint64_t, std::uint64_t, std::uint64_t) override {
        all += (all.empty() ? "" : ", ") + std::string(name);
    }
    std::string all;
};

TEST(FontHeader, ConvertsEachFieldInPlace) {
    std::mt19937 random(4711);
    for (int round = 0; round < 200; ++round) {
        std::array<std::uint8_t, 128> file{};
        for (std::uint8_t& byte : file) byte = static_cast<std::uint8_t>(random());
        std::array<std::uint8_t, 128> expected = file;
        for (const int at : {78, 80, 82, 102, 104, 106, 108, 110, 112, 114, 116, 118, 124})
            std::reverse(expected.begin() + at, expected.begin() + at + 2);
        for (const int at : {94, 98, 120}) std::reverse(expected.begin() + at, expected.begin() + at + 4);
        expected[84] = static_cast<std::uint8_t>(file[84] >> 4 | file[84] << 4);
        const unsigned v = file[86] * 256U + file[87], split = v >> 9 | (v & 0x1FF) << 7;
        expected[86] = static_cast<std::uint8_t>(split & 255);
        expected[87] = static_cast<std::uint8_t>(split >> 8);
        const tag_font_header header = font::ConvertFontHeader(file);
        ASSERT_EQ(std::memcmp(&header, expected.data(), sizeof header), 0) << round;
    }
}

TEST(DirectoryEntry, BitFieldsStartAtTheLowestBit) {
    const tag_char_entry entry =
        font::ConvertCharEntry(std::array<std::uint8_t, 10>{170, 85, 0x08, 0x10, 0x10, 0x21, 1, 2, 3, 4});
    EXPECT_EQ(entry.unread_1, 85);
    EXPECT_EQ(std::uint32_t{entry.glyph_word}, 2U | 1U << 6 | 4U << 12 | 33U << 22);
    EXPECT_EQ(std::uint32_t{entry.glyph_offset}, 0x01020304U);
    EXPECT_EQ(entry.Top(), 4);
    EXPECT_EQ(entry.Metric(), 33);
    EXPECT_FALSE(entry.IsRunCoded()) << "170 has one of its bits, but is a stored glyph";
    const tag_char_entry ones =
        font::ConvertCharEntry(std::array<std::uint8_t, 10>{0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0});
    EXPECT_EQ(std::uint32_t{ones.glyph_word}, 0xFFFFFFFFU);
    EXPECT_EQ(ones.Top(), 1023);
    EXPECT_EQ(ones.Metric(), 1023);
}

FontFile WithFlags(unsigned font_flags) {
    FontFile font = GoodFont();
    font.header.font_flags = font_flags;
    if (font_flags == 18) font.first_sample = files::SampleBlock{9, {1, 1, {8}}, {0, 0, {}}};
    return font;
}

struct BlocksCase {
    const char* name;
    unsigned font_flags;
    bool tessor;
    std::string sections;  // between the directory and the stored glyphs
};

TEST(FontSections, FollowFromTheFlags) {
    const std::string tables = "character table a, character table b, ";
    const BlocksCase kCases[] = {
        {"plain", 0x20, false, "encoding data, auxiliary block, word table, "},
        {"plain with tables", 0x24, false, "encoding data, auxiliary block, word table, " + tables},
        {"leading sample", 18, true, "encoding data, sample block, auxiliary block, word table, "},
        {"18 and another bit", 19, true, "auxiliary block, word table, "},
        {"no encoding data", 0, true, "auxiliary block, word table, "},
    };
    for (const BlocksCase& row : kCases) {
        SCOPED_TRACE(row.name);
        files::FontOffsets at;
        SectionNames names;
        const Loaded loaded(files::WriteFont(WithFlags(row.font_flags), &at), &names);
        ASSERT_EQ(loaded.outcome, font::FontOutcome::kRead);
        EXPECT_EQ(loaded.tessor, row.tessor);
        EXPECT_EQ(names.all, "Psos file header, font header, character directory, " + row.sections +
                                 "sample block, stored glyph, stored glyph");
        EXPECT_EQ(std::uint32_t{loaded.slot.char_directory[67].glyph_offset}, at.stored[67]);
        EXPECT_EQ(std::uint32_t{loaded.slot.char_directory[68].glyph_offset}, at.stored[68]);
        EXPECT_EQ(loaded.slot.encoding_data != nullptr, row.font_flags == 18 || (row.font_flags & 0x20) != 0);
        EXPECT_THAT(std::vector<int>(loaded.slot.aux_block, loaded.slot.aux_block + 10), Each(7));
        EXPECT_THAT(std::vector<int>(loaded.slot.word_table, loaded.slot.word_table + 3), ElementsAre(1, 2, 3));
        const tag_graphic_rectangle& a = loaded.slot.sample_a;
        EXPECT_THAT(std::vector<int>(a.data, a.data + 4), Each(1)) << "the second block's";
    }
}

// tests/faults checks the outcome of every prefix.
struct SizeCase {
    const char* name;
    void (*change)(FontFile&);
    font::FontOutcome outcome;
};

template <int width, int height>
void WithSample(FontFile& font) {
    font.sample = files::SampleBlock{0, {}, {width, height, {}}};
}

TEST(FontSizes, AreCheckedAgainstTheFileBeforeAllocation) {
    const SizeCase kCases[] = {
        {"a negative auxiliary block", [](FontFile& f) { f.header.aux_block_size = -1; }, font::FontOutcome::kNoMemory},
        {"a negative word table", [](FontFile& f) { f.header.word_table_size = 0x8000; }, font::FontOutcome::kNoMemory},
        {"a word table without low 16 bits", [](FontFile& f) { f.header.word_table_size = 0x12340000; },
         font::FontOutcome::kRead},
        {"a word table of an odd size", [](FontFile& f) { f.header.word_table_size = 3; },
         font::FontOutcome::kShortBlock},
        {"the largest encoding data", [](FontFile& f) { f.header.encoding_size = 0xFFFFFFFF; },
         font::FontOutcome::kShortEncoding},
        {"a sample of negative height", WithSample<5, -1>, font::FontOutcome::kNoMemory},
        {"a sample of negative width", WithSample<-1, 2>, font::FontOutcome::kNoMemory},
        {"a sample of both negative", WithSample<-5, -5>, font::FontOutcome::kRead},
        {"a sample without rows", WithSample<5, 0>, font::FontOutcome::kRead},
        {"a row of width 0", WithSample<0, 1>, font::FontOutcome::kShortSampleRow},
        {"the largest sample", WithSample<32767, 32767>, font::FontOutcome::kShortSampleRow},
    };
    for (const SizeCase& row : kCases) {
        FontFile font;
        row.change(font);
        EXPECT_EQ(Loaded(files::WriteFont(font)).outcome, row.outcome) << row.name;
    }
}

TEST(FontSizes, AreLimitedForAllBlocksTogether) {
    constexpr std::size_t kMost = font::kMaxFontBytes;
    const struct {
        std::size_t encoding;
        int sample_rows;  // of 1024 bytes
        font::FontOutcome outcome;
    } cases[] = {
        {kMost, 0, font::FontOutcome::kRead},
        {kMost + 4, 0, font::FontOutcome::kTooLarge},
        {kMost - 2048, 2, font::FontOutcome::kRead},
        {kMost - 2044, 2, font::FontOutcome::kTooLarge},
    };
    for (const auto& [encoding, rows, outcome] : cases) {
        FontFile font;
        font.header.font_flags = 0x20;
        font.encoding.resize(encoding);
        if (rows != 0) {
            const files::Sample sample{1024, rows, Bytes(static_cast<std::size_t>(rows) * 1024)};
            font.sample = files::SampleBlock{0, sample, {}};
        }
        EXPECT_EQ(Loaded(files::WriteFont(font)).outcome, outcome) << encoding;
    }
}

TEST(StoredGlyphs, LengthPastTheEndFailsOnlyForTheNextGlyph) {
    FontFile font = GoodFont();
    font.stored[68].length = 0xFFFFFFFF;
    EXPECT_EQ(Loaded(files::WriteFont(font)).outcome, font::FontOutcome::kRead);
    font.stored[67].length = 0xFFFFFFFF;
    EXPECT_EQ(Loaded(files::WriteFont(font)).outcome, font::FontOutcome::kShortBlock);
    font.stored[67].length = 0;  // the next record is then the same
    const Loaded same(files::WriteFont(font));
    EXPECT_EQ(same.outcome, font::FontOutcome::kRead);
    EXPECT_EQ(std::uint32_t{same.slot.char_directory[67].glyph_offset},
              std::uint32_t{same.slot.char_directory[68].glyph_offset});
}

}  // namespace

}  // namespace zel::test
