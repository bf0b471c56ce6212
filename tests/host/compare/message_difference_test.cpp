// What two messages differ by, and that exchanged messages give mirrored differences.
#include "host/compare/message_difference.h"

#include <functional>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/message_writer.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using files::MessageFile;
using testing::ElementsAre;

compare::MessageContents Contents(const MessageFile& file) {
    message::LoadedMessage message;
    EXPECT_EQ(message::LoadMessage(files::WriteMessage(file), message), message::MessageOutcome::kRead);
    return compare::ContentsOf(message);
}

/// Rows of text 40 lines apart, and a tab field in the last one.
MessageFile Rows(const std::vector<std::string>& texts) {
    MessageFile message;
    message.header.font_numbers[0] = 12;
    message.header.font_numbers[2] = 14;
    unsigned y = 40;
    for (const std::string& text : texts) message.rows.push_back(files::RowFromText(y += 40, text, 100, 10));
    message.palette.emplace();
    message.palette->entries.assign(256, files::PaletteEntry(0x12, 0x34, 0x56));
    message.tabs.emplace();
    message.tabs->fields = {
        {.tab_start = 100, .tab_end = 200, .tab_name = "NAME", .tab_row = static_cast<unsigned>(texts.size() - 1)}};
    return message;
}

struct EditCase {
    const char* name;
    std::function<void(MessageFile&)> edit;
    std::vector<std::string> lines;
};

/// Of the rows "John Smith", "Weather", "at nine".
const EditCase kEdits[] = {
    {"Nothing", [](MessageFile&) {}, {}},
    {"UnreadBytes",
     [](MessageFile& m) { m.header.word_14 = 7, m.rows[0].b7 = 9, m.rows[0].cells[0].b6_word = 5, m.tail = {1}; },
     {}},
    {"RecordsInOtherPlaces",
     [](MessageFile& m) {
         const unsigned places[] = {1, 0, 2, 3, 4, 5, 6};
         files::ShuffleRecords(m.rows[1], places);
     },
     {}},
    {"Letter", [](MessageFile& m) { m.rows[0].cells[2].char_code = 'a'; }, {"row 0: \"John\" -> \"Joan\""}},
    {"WordsThatShareALetter",
     [](MessageFile& m) { m.rows[2] = files::RowFromText(160, "at six to", 100, 10); },
     {"row 2: \"nine\" -> \"six to\""}},
    {"Word",
     [](MessageFile& m) { m.rows[0].cells.resize(4), files::ChainInOrder(m.rows[0]); },
     {"row 0: removed \" Smith\""}},
    {"InsertedRow",
     [](MessageFile& m) {
         m.rows.insert(m.rows.begin() + 1, files::RowFromText(100, "Sport", 100, 10));
         m.tabs->fields[0].tab_row = 3;
     },
     {"row 1 added: \"Sport\""}},
    {"RemovedRow",
     [](MessageFile& m) { m.rows.erase(m.rows.begin()), m.tabs->fields[0].tab_row = 1; },
     {"row 0 removed: \"John Smith\""}},
    {"ReplacedInItsPlace",
     [](MessageFile& m) { m.rows[1] = files::RowFromText(120, "Sport", 100, 10); },
     {"row 1: \"Weather\" -> \"Sport\""}},
    {"MovedRow", [](MessageFile& m) { m.rows[1].row_y = 150; }, {"row 1: y 100 -> 130"}},
    {"MovedCharacters",
     [](MessageFile& m) { m.rows[1].cells[5].char_x += 3, m.rows[1].cells[6].char_x += 4; },
     {"row 1: \"er\" moved 3 to 4 right"}},
    {"Font",
     [](MessageFile& m) {
         for (std::size_t i = 0; i < 4; ++i) m.rows[0].cells[i].char_font = 2;
     },
     {"row 0: \"John\" font 12 -> 14"}},
    {"Colour",
     [](MessageFile& m) { m.rows[2].cells[0].colour_set = 3; },
     {"row 2: \"a\" colour set 0 #123456 -> set 3 #123456"}},
    {"FontOfASlot", [](MessageFile& m) { m.header.font_numbers[0] = 13; }, {"font slot 0: font 12 -> 13"}},
    {"Palette",
     [](MessageFile& m) {
         for (unsigned i = 33; i < 40; ++i) m.palette->entries[i] = files::PaletteEntry(255, 0, 0);
     },
     {"palette set 1, colour 1 (face): #123456 -> #FF0000, colour 2 (edge): #123456 -> #FF0000, and 5 more colours"}},
    {"FieldEnds", [](MessageFile& m) { m.tabs->fields[0].tab_end = 190; }, {"tab field 0 \"NAME\": right 207 -> 197"}},
    {"FieldAdded",
     [](MessageFile& m) { m.tabs->fields.push_back({.tab_start = 10, .tab_end = 20, .tab_name = "", .tab_row = 0}); },
     {"tab field 1 added: row 0, 17 to 27"}},
    {"Standard", [](MessageFile& m) { m.pal = true; }, {"standard: NTSC -> PAL", "frame top: -20 -> -33"}},
    {"Frame", [](MessageFile& m) { m.header.frame_right = 5; }, {"frame: right 0 -> 5"}},
};

}  // namespace

TEST(MessageDifference, SaysWhatAnEditHasChanged) {
    const MessageFile before = Rows({"John Smith", "Weather", "at nine"});
    for (const EditCase& edit : kEdits) {
        MessageFile after = before;
        edit.edit(after);
        const auto lines = compare::LinesOf(compare::CompareContents(Contents(before), Contents(after)));
        if (edit.name == std::string_view("Standard")) {
            // The rows and the frame are moved by the lines above the picture.
            ASSERT_FALSE(lines.empty());
            EXPECT_EQ(lines[0], edit.lines[0]);
            continue;
        }
        EXPECT_EQ(lines, edit.lines) << edit.name;
    }
}

TEST(MessageDifference, KeepsTheRunsOfATextInItsJson) {
    const MessageFile before = Rows({"John Smith"});
    MessageFile after = before;
    after.rows[0].cells[2].char_code = 'a';
    const auto differences = compare::CompareContents(Contents(before), Contents(after));
    ASSERT_EQ(differences.size(), 1U);
    EXPECT_EQ(compare::JsonOf(differences[0]).dump(),
              R"({"part":"row","property":"text","a":{"index":0,"value":"h","first":2,"count":1,"words":"John"},)"
              R"("b":{"index":0,"value":"a","first":2,"count":1,"words":"Joan"}})");
}

namespace {

/// Changes one thing that an import reads.
void Change(MessageFile& message, std::mt19937& random) {
    const auto below = [&](std::size_t n) { return static_cast<unsigned>(random() % n); };
    const auto row = [&]() -> files::RowText& { return message.rows[below(message.rows.size())]; };
    const unsigned kind = below(12);
    if (kind == 0) message.rows.insert(message.rows.begin() + below(message.rows.size()), files::EmptyRow(below(400)));
    if (kind == 1 && message.rows.size() > 2) message.rows.erase(message.rows.begin() + below(message.rows.size()));
    if (kind == 2) message.rows.push_back(files::RowFromText(below(400), "Joan", below(500), 8));
    if (kind == 3) row().row_y = below(500);
    if (kind == 4) row().row_bottom = below(60);
    if (kind == 5) message.header.frame_left = below(90);
    if (kind == 6) message.header.font_numbers[below(3)] = static_cast<std::uint16_t>(below(20));
    if (kind == 7) message.palette->entries[below(256)] = files::PaletteEntry(below(256), below(256), 0);
    files::RowText& text = row();
    if (kind < 8 || text.cells.empty()) return;
    files::CharCell& cell = text.cells[below(text.cells.size())];
    if (kind == 8) cell.char_code = 'a' + below(4);
    if (kind == 9) cell.char_x = below(700);
    if (kind == 10) cell.char_font = below(20);
    if (kind == 11) {
        text.cells.erase(text.cells.begin() + below(text.cells.size()));
        files::ChainInOrder(text);
    }
}

std::multiset<std::string> Sorted(const compare::Differences& differences, bool mirrored) {
    std::multiset<std::string> all;
    for (const compare::Difference& difference : differences)
        all.insert(compare::JsonOf(mirrored ? Mirrored(difference) : difference).dump());
    return all;
}

}  // namespace

TEST(MessageDifference, IsMirroredAndComplete) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        std::mt19937 random(seed);
        MessageFile file = Rows({"John", "John", "abba", "baab", "a b a b", ""});
        const compare::MessageContents a = Contents(file);
        for (unsigned changes = 1 + seed % 5; changes > 0; --changes) Change(file, random);
        const compare::MessageContents b = Contents(file);
        const auto forth = compare::CompareContents(a, b), back = compare::CompareContents(b, a);
        EXPECT_EQ(forth.empty(), a == b) << seed;
        EXPECT_EQ(Sorted(forth, true), Sorted(back, false)) << seed;
        for (const compare::Difference& difference : forth) EXPECT_NE(difference.a, difference.b) << seed;
    }
}

}  // namespace zel::test
