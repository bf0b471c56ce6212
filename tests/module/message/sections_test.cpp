// The sections of a message file in memory: positions, contents, and truncated files.
#include <cstring>
#include <map>

#include <gmock/gmock.h>

#include "module/contract/records/effpar.h"
#include "module/message/format/message_loader.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using files::Bytes;
using testing::ElementsAre;

class Sections : public message::SectionObserver {
  public:
    void OnSection(const char* name, std::uint64_t offset, std::uint64_t, std::uint64_t) override {
        offsets[name] = offset;
    }
    std::map<std::string, std::uint64_t> offsets;
};

message::MessageOutcome Load(const files::MessageFile& file, message::LoadedMessage& message) {
    return message::LoadMessage(files::WriteMessage(file), message);
}

files::TabField Tab(unsigned start, unsigned end, unsigned row, const std::string& name = "NAME") {
    return {.tab_start = start, .tab_end = end, .tab_name = name, .tab_row = row};
}

files::MessageFile WithFlashFont() {
    files::MessageFile file = GoodMessage();
    file.flash_font.emplace();
    file.flash_font->encoding_size = 30;
    file.flash_font->word_table_size = 7;
    return file;
}

TEST(MessageSections, ArePositionedAsTheFormatDefines) {
    files::MessageOffsets at;
    files::MessageFile file = WithFlashFont();
    file.header.frame_top = 60;
    file.header.frame_bottom = 400;
    file.header.font_numbers[15] = 4711;
    file.palette->entries[255] = 0x102030FF;
    const Bytes bytes = files::WriteMessage(file, &at);
    message::LoadedMessage message;
    Sections sections;
    ASSERT_EQ(message::LoadMessage(bytes, message, &sections), message::MessageOutcome::kRead);
    EXPECT_EQ(sections.offsets, (std::map<std::string, std::uint64_t>{{"Psos file header", 0},
                                                                      {"section flags", 136},
                                                                      {"flash font", at.flash_font},
                                                                      {"message header", at.header},
                                                                      {"rows", at.rows},
                                                                      {"palette", at.palette},
                                                                      {"background", at.background},
                                                                      {"tab table", at.tabs}}));
    EXPECT_TRUE(message.flash_font);
    EXPECT_EQ(message.header->frame_left, 40);
    EXPECT_EQ(message.header->frame_top, 40);
    EXPECT_EQ(message.header->frame_bottom, 380);
    EXPECT_EQ(message.header->font_numbers[1], kNoFont);
    EXPECT_EQ(message.header->font_numbers[15], 4711);
    const tag_msg_char& last = message.rows[0].chars[3];
    EXPECT_THAT((std::vector<int>{last.Code(), last.Next(), last.word0 >> 2 & 1}), ElementsAre('S', kChainEnd, 1));
    EXPECT_EQ(message.rows[1].chars[0].Code(), 'a');
    EXPECT_TRUE(message.rows[2].Empty());
    EXPECT_EQ(message.palette->colour_sets[7][31], 0x102030FFU);
    EXPECT_EQ(message.tab_count, 2);
}

TEST(MessageSections, FileOfRowsOnlyHasTheDefaultPalette) {
    files::MessageFile file{.rows = {files::EmptyRow(0)}};
    message::LoadedMessage message;
    ASSERT_EQ(Load(file, message), message::MessageOutcome::kRead);
    struct Set {
        std::uint32_t face, edge, first, last;
    };
    constexpr Set kSets[8] = {
        {0x0000FF00, 0x8080FF80, 0x0808FF08, 0xE8E8FFE8}, {0xBF00FF00, 0x8000FF00, 0xFF08FF00, 0xFFE8FF00},
        {0x00BFFF00, 0x0080FF00, 0x00FFFF08, 0x00FFFFE8}, {0xBFBFFF00, 0x8080FF00, 0xFFFFFF08, 0xFFFFFFE8},
        {0x0000FFBF, 0x0000FF80, 0x0800FFFF, 0xE800FFFF}, {0xBF00FFBF, 0x8000FF80, 0xFF08FFFF, 0xFFE8FFFF},
        {0x00BFFFBF, 0x0080FF80, 0x08FFFFFF, 0xE8FFFFFF}, {0xD9D9FFD9, 0x8080FF80, 0xF8F8FFF8, 0x1818FF18},
    };
    for (int set = 0; set < 8; ++set) {
        SCOPED_TRACE(set);
        const auto& entries = message.palette->colour_sets[set];
        EXPECT_EQ(entries[0], 0x0000FE00U);
        EXPECT_EQ(entries[1], kSets[set].face);
        EXPECT_EQ(entries[2], kSets[set].edge);
        EXPECT_EQ(entries[3], kSets[set].first);
        EXPECT_EQ(entries[31], kSets[set].last);
        EXPECT_EQ(entries[17] - entries[3], (entries[4] - entries[3]) * 14);
    }
}

TEST(PaletteSection, DependsOnItsWordCount) {
    for (const unsigned words : {0U, 1U, 3U, 512U, 513U}) {  // the last is one more than the block holds
        SCOPED_TRACE(words);
        const unsigned present = std::min(words, 512U);
        files::MessageFile file{.rows = {files::EmptyRow(0)}};
        file.palette = files::PaletteBlock{.palette_lead = 0x1234, .palette_words = words, .entries = {}};
        file.palette->entries.assign((present + 1) / 2, 0xA1B2C3D4);
        message::LoadedMessage message;
        ASSERT_EQ(Load(file, message) == message::MessageOutcome::kShortPalette, words == 0);
        if (words == 0) continue;
        EXPECT_EQ(message.palette->palette_lead, 0x3412) << "not converted";
        EXPECT_EQ(message.palette->palette_words, words);
        for (unsigned i = 0; i < 256; ++i) {
            const std::uint32_t half = i == present / 2 && present % 2 != 0 ? 0xA1B20000 : 0;
            EXPECT_EQ(message.palette->colour_sets[i / 32][i % 32], i < present / 2 ? 0xA1B2C3D4 : half) << i;
        }
    }
}

TEST(PaletteSection, BeyondItsLimitTheNextSectionBeginsInItsRemainder) {
    files::MessageFile file{.rows = {files::EmptyRow(0)}};
    file.palette.emplace();
    file.palette->entries.assign(300, 0xBBBD0000);  // the 513th word is the tag of a background
    file.background.emplace();
    file.background->tag = 0x1111;
    file.background->words = 974 - 88 + 1;  // starts 88 words early, after a tag that isn't read
    message::LoadedMessage message;
    EXPECT_EQ(Load(file, message), message::MessageOutcome::kRead);
    file.background->words = 974 - 88 - 1;
    EXPECT_EQ(Load(file, message), message::MessageOutcome::kShortBackground);
}

TEST(PaletteSection, FindsTheFirstSetOfAnEffect) {
    tag_palete palette{};
    for (std::uint32_t set = 0; set < 8; ++set) palette.colour_sets[set][1] = palette.colour_sets[set][2] = set << 24;
    palette.colour_sets[5][1] = palette.colour_sets[3][1];
    struct Case {
        COLORREF face, edge;
        int on, set;
    };
    for (const Case& row : {Case{0x0300, 0x9999, 0, 3}, Case{0x0300, 0x0300, 1, 3}, Case{0x0300, 0x0500, 7, 5},
                            Case{0x0300, 0x0400, 1, -1}, Case{0x0900, 0, 0, -1}, Case{0, 0, 1, 0}}) {
        EFFPAR effect{};
        effect.face_colour = row.face;
        effect.edge_colour = row.edge;
        effect.edge_on = row.on;
        EXPECT_EQ(palette.FindPaletteEntry(effect), row.set) << row.face << " " << row.edge << " " << row.on;
    }
}

struct LineCase {
    const char* name;
    bool pal;
    std::vector<unsigned> rows;
    int offset;
    std::vector<int> corrected;
};

TEST(VerticalCorrection, MovesUpByTheSmallestRowAtMostByTheLineOffset) {
    const LineCase kCases[] = {
        {"rows below the offset keep their distance", false, {40, 400}, 20, {20, 380}},
        {"a row above it is what counts", false, {40, 5, 7}, 5, {35, 0, 2}},
        {"a row at 0 moves nothing", false, {0, 1023}, 0, {0, 1023}},
        {"a PAL message has 33 lines above its picture", true, {33, 34}, 33, {0, 1}},
    };
    for (const LineCase& row : kCases) {
        SCOPED_TRACE(row.name);
        files::MessageFile file;
        file.pal = row.pal;
        for (std::size_t i = 0; i < row.rows.size(); ++i) {
            file.rows.push_back(i % 2 == 0 ? files::RowFromText(row.rows[i], "A", 0, 0) : files::EmptyRow(row.rows[i]));
        }
        message::LoadedMessage message;
        ASSERT_EQ(Load(file, message), message::MessageOutcome::kRead);
        EXPECT_EQ(message.y_offset, row.offset);
        for (std::size_t i = 0; i < row.rows.size(); ++i) EXPECT_EQ(message.rows[i].Y(), row.corrected[i]);
        EXPECT_EQ(message.header->frame_top, static_cast<std::uint16_t>(row.pal ? -33 : -20)) << "wraps in 16 bits";
    }
}

TEST(TabTable, RecordsAreConvertedAndCheckedAgainstTheRows) {
    files::MessageFile file{.rows = {files::RowFromText(120, "A", 0, 0)}};
    file.rows[0].row_bottom = 44;
    file.tabs.emplace();
    file.tabs->third_word = 0xFFFF;
    file.tabs->fields = {Tab(10, 20, 0, "un-named"), Tab(9, 9, 0), Tab(30, 40, 1), Tab(50, 40, 1),
                         Tab(0, 65535, 0, "un-named field 12")};
    file.tabs->fields[0].tab_byte = 0xCD;
    message::LoadedMessage message;
    ASSERT_EQ(Load(file, message), message::MessageOutcome::kRead);
    EXPECT_TRUE(message.bad_tab_row);
    EXPECT_TRUE(message.bad_tab_field);
    ASSERT_EQ(message.tab_count, 2);
    const tag_tab_field first = message.tabs[0], second = message.tabs[1];
    EXPECT_THAT((std::vector<int>{first.tab_start, first.tab_end, first.tab_top, first.tab_bottom, first.tab_byte}),
                ElementsAre(17, 27, 100, 144, 0xCD));
    EXPECT_EQ(std::string(first.tab_name, 17), std::string(17, '\0'));
    EXPECT_EQ(std::string(second.tab_name, 17), "un-named field 12");
    EXPECT_THAT((std::vector<int>{second.tab_start, second.tab_end}), ElementsAre(7, 6)) << "wraps in 16 bits";
}

TEST(TabTable, CountsItsRecordsInWords) {
    struct CountCase {
        unsigned words;
        std::size_t records;
        int kept;  // -1: too many
    };
    for (const CountCase& row :
         {CountCase{0, 0, 0}, {12, 0, 0}, {13, 1, 1}, {14, 1, 1}, {2612, 200, 200}, {2613, 201, -1}, {65535, 0, -1}}) {
        SCOPED_TRACE(row.words);
        files::MessageFile file{.rows = {files::EmptyRow(0)}};
        file.tabs.emplace();
        file.tabs->fields.assign(row.records, Tab(1, 2, 0));
        file.tabs->tab_words = row.words;
        message::LoadedMessage message;
        EXPECT_EQ(Load(file, message) == message::MessageOutcome::kTooManyTabs, row.kept < 0);
        EXPECT_EQ(message.tab_count, std::max(row.kept, 0));
        EXPECT_EQ(message.tabs != nullptr, row.kept > 0);
    }
}

// tests/faults checks the outcome of every prefix.
TEST(Truncation, LeavesWhatIsMissingOfTheHeaderAndTheRowsZero) {
    files::MessageFile file{.rows = {files::RowFromText(20, std::string(63, 'x'), 1000, 0)}};
    file.rows[0].cells[5].b6_word = 0x3FF;
    files::MessageOffsets at;
    const Bytes bytes = files::WriteMessage(file, &at);
    Bytes zeroed = bytes;
    for (std::size_t n = bytes.size(); n-- > at.header;) {
        zeroed[n] = 0;
        message::LoadedMessage cut, expected;
        message::LoadMessage(std::span(bytes).first(n), cut);
        message::LoadMessage(zeroed, expected);
        ASSERT_EQ(std::memcmp(&*cut.header, &*expected.header, sizeof *cut.header), 0) << n;
        ASSERT_EQ(std::memcmp(&cut.rows[0], &expected.rows[0], sizeof cut.rows[0]), 0) << n;
    }
}

TEST(Truncation, FlashFontOfAnySizeStaysInsideTheFile) {
    for (const std::uint32_t size : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        files::MessageFile file = WithFlashFont();
        file.flash_font->encoding_size = file.flash_font->word_table_size = size;
        file.flash_font->data_size = 0;
        message::LoadedMessage message;
        EXPECT_EQ(Load(file, message), message::MessageOutcome::kShortPalette);
        EXPECT_EQ(message.header->last_row, 0);
    }
}

}  // namespace

}  // namespace zel::test
