// The key `file` of a document: every file comes back from it, and every fault of an edited one is named.

#include "host/filejson/file_json.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "files/font_reader.h"
#include "files/message_reader.h"
#include "files/random_files.h"
#include "host/filejson/run_code_text.h"
#include "samples/disk/demo_disk.h"
#include "samples/scratch_directory.h"

namespace zel::filejson {
namespace {

using files::Bytes;
using Json = nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string DocumentOf(std::string_view file_json) {
    return WithFile(R"({"version":1,"kind":"message","rows":[1,[2,{"a":3}]]})", file_json);
}

std::vector<std::string> FaultsOf(const DocumentFile& file) {
    std::vector<std::string> faults;
    for (const Fault& fault : file.faults.Kept()) faults.push_back(fault.place + ": " + fault.rule);
    return faults;
}

void ExpectSameBytes(std::span<const std::uint8_t> bytes, bool exact, const std::string& what) {
    const auto json = FileJson(bytes, exact);
    ASSERT_TRUE(json) << what;
    const DocumentFile file = FileOfDocument(DocumentOf(json->json));
    ASSERT_THAT(FaultsOf(file), IsEmpty()) << what;
    ASSERT_TRUE(std::ranges::equal(file.bytes, bytes)) << what;
}

TEST(FileJson, GivesTheSameBytesForRandomFiles) {
    for (unsigned seed = 0; seed < 25; ++seed) {
        files_test::Dice dice(seed);
        ExpectSameBytes(files::WriteMessage(files_test::RandomMessage(dice)), false, "message " + std::to_string(seed));
        ExpectSameBytes(files::WriteFont(files_test::RandomFont(dice)), false, "font " + std::to_string(seed));
    }
}

TEST(FileJson, GivesTheSameBytesForCutAndChangedFiles) {
    for (unsigned seed = 0; seed < 16; ++seed) {
        files_test::Dice dice(seed);
        const bool is_font = dice.Chance(2);
        Bytes bytes = is_font ? files::WriteFont(files_test::RandomFont(dice))
                              : files::WriteMessage(files_test::RandomMessage(dice));
        const std::size_t headers = is_font ? 2184 : 152;
        for (unsigned n = 0; n < 12; ++n) {
            Bytes changed = bytes;
            for (unsigned k = dice.Below(4); k > 0; --k) {
                changed[4 + dice.Below(static_cast<unsigned>(bytes.size() - 4))] =
                    static_cast<std::uint8_t>(dice.Bits(8));
            }
            if (dice.Chance(2)) changed.resize(headers + dice.Below(static_cast<unsigned>(bytes.size() - headers)));
            ExpectSameBytes(changed, true, "seed " + std::to_string(seed) + ", change " + std::to_string(n));
        }
    }
}

Bytes ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(FileJson, GivesTheSameBytesForTheDemonstrationDiskAndTheCorpus) {
    const samples_test::ScratchDirectory scratch;
    samples::WriteDemonstrationDisk(scratch.Path());
    std::size_t described = 0;
    for (const std::filesystem::path& directory : {scratch.Path(), std::filesystem::path(ZELTRANS_CORPUS)}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
            if (!entry.is_regular_file()) continue;
            const Bytes bytes = ReadBytes(entry.path());
            if (!FileJson(bytes, true)) continue;
            ++described;
            ExpectSameBytes(bytes, true, entry.path());
        }
    }
    EXPECT_GT(described, 60u);
}

files::MessageFile SmallMessage() {
    files::MessageFile message;
    message.rows = {files::RowFromText(100, "Hi!", 90, 20), files::EmptyRow(200)};
    message.palette = files::PaletteBlock{.entries = std::vector<std::uint32_t>(256, files::PaletteEntry(1, 2, 3))};
    message.tabs = files::TabTable{.fields = {{.tab_start = 10, .tab_end = 20, .tab_name = "NAME", .tab_row = 1}}};
    return message;
}

Json SmallFile() {
    return Json::parse(FileJson(files::WriteMessage(SmallMessage()), false)->json);
}

/// A file that ends before its rows, of which there would be the most.
TEST(FileJson, GivesTheSameBytesWithoutRows) {
    files::MessageFile message;
    message.header.last_row = 65535;
    const Bytes bytes = files::WriteMessage(message);
    ExpectSameBytes(bytes, false, "no row");
    for (const std::size_t size : {152, 153, 157, 158, 203}) {
        ExpectSameBytes(std::span(bytes).first(size), false, std::to_string(size));
    }
}

TEST(FileJson, IsReadable) {
    const Json file = SmallFile();
    EXPECT_EQ(file["rows"][0]["characters"][1].dump(),
              R"({"text":"i","code":105,"x":110,"y":0,"font":0,"colour_set":0})");
    EXPECT_EQ(file["rows"][1].dump(), R"({"empty":true,"y":200,"top":0,"bottom":0,"characters":[]})");
    EXPECT_EQ(file["palette"]["sets"][7][31], "#010203");
    EXPECT_EQ(file["tab_table"].dump(),
              R"({"fields":[{"name":"NAME","row":1,"start":10,"end":20,"font":0,"colour":0}]})");
}

/// A correction by hand: a character is inserted without any other change.
TEST(FileJson, MakesTheFileOfAnEditedDocument) {
    Json file = SmallFile();
    Json& characters = file["rows"][0]["characters"];
    characters.insert(characters.begin() + 2, Json{{"text", "\u00e9"}, {"x", 125}});
    const DocumentFile made = FileOfDocument(DocumentOf(file.dump()));
    ASSERT_THAT(FaultsOf(made), IsEmpty());
    files::MessageFile expected = SmallMessage();
    files::RowText& row = expected.rows[0];
    row.cells.insert(row.cells.begin() + 2, files::CharCell{.char_x = 125, .char_code = 0xE9});
    files::ChainInOrder(row);
    EXPECT_TRUE(made.bytes == files::WriteMessage(expected));
}

struct EditedCase {
    const char* patch;
    const char* fault;
};

void PrintTo(const EditedCase& edited, std::ostream* out) {
    *out << edited.patch;
}

class EditedMessage : public testing::TestWithParam<EditedCase> {};

TEST_P(EditedMessage, HasItsFaultNamed) {
    const Json file = SmallFile().patch(Json::parse("[" + std::string(GetParam().patch) + "]"));
    const DocumentFile made = FileOfDocument(DocumentOf(file.dump()));
    EXPECT_THAT(FaultsOf(made), ElementsAre(HasSubstr(GetParam().fault)));
    EXPECT_TRUE(made.bytes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    AllFaults, EditedMessage,
    testing::Values(
        EditedCase{R"({"op":"replace","path":"/rows/0/characters/1/x","value":1024})",
                   "/file/rows/0/characters/1/x: 1024 is above 1023"},
        EditedCase{R"({"op":"replace","path":"/rows/0/characters/1/x","value":-1})", "/x: -1 is below 0"},
        EditedCase{R"({"op":"replace","path":"/rows/0/y","value":1.5})", "/file/rows/0/y: 1.5 is not a whole number"},
        EditedCase{R"({"op":"remove","path":"/rows/0/y"})", "/file/rows/0/y: is missing"},
        EditedCase{R"({"op":"add","path":"/rows/0/colour~1x","value":1})", "/file/rows/0/colour~1x: is an unknown key"},
        EditedCase{R"({"op":"replace","path":"/rows/1","value":7})", "/file/rows/1: must be an object"},
        EditedCase{R"({"op":"replace","path":"/rows/0/characters/2/text","value":"A"})",
                   "/characters/2/text: \"A\" has the code 65, but code is 33"},
        EditedCase{R"({"op":"replace","path":"/rows/0/characters/2","value":{"text":"\u20ac","x":1}})",
                   "/characters/2/text: has a character that Latin-1 lacks: U+20AC"},
        EditedCase{R"({"op":"add","path":"/rows/0/characters/1/next_char","value":5})",
                   "/file/rows/0/characters/1/next_char: 5 is no record of the row after 2 of 3 characters"},
        EditedCase{R"({"op":"add","path":"/rows/0/characters/1/next_char","value":0})",
                   "/next_char: 0 comes back to a record of the chain"},
        EditedCase{R"({"op":"add","path":"/rows/0/first_char","value":3})", "/file/rows/0/first_char: 3 is no record"},
        EditedCase{R"({"op":"add","path":"/rows/0/char_count","value":2})",
                   "/file/rows/0/char_count: 2 is not the number of characters, 3"},
        EditedCase{R"({"op":"add","path":"/rows/0/empty","value":true})", "/rows/0/characters: an empty row has none"},
        EditedCase{R"({"op":"replace","path":"/rows/1/empty","value":"yes"})",
                   "/empty: \"yes\" is neither true nor false"},
        EditedCase{R"({"op":"replace","path":"/rows","value":[]},{"op":"remove","path":"/tab_table"})",
                   "/file/rows: a message has at least one row"},
        EditedCase{R"({"op":"add","path":"/last_row","value":4})", "/file/last_row: would be read otherwise"},
        EditedCase{R"({"op":"add","path":"/section_flags","value":1})", "would be read otherwise"},
        EditedCase{R"({"op":"add","path":"/palette/words","value":4})", "would be read otherwise"},
        EditedCase{R"({"op":"replace","path":"/palette/sets/3/4","value":"red"})",
                   "/file/palette/sets/3/4: is not a colour such as #FFFFFF"},
        EditedCase{R"({"op":"remove","path":"/palette/sets/3/4"})",
                   "/file/palette/sets/3: must be an array of 32 colours"},
        EditedCase{R"({"op":"replace","path":"/tab_table/fields/0/name","value":"A name of 18 chars"})",
                   "/file/tab_table/fields/0/name: has 18 characters; 17 fit"},
        EditedCase{R"({"op":"replace","path":"/tab_table/fields/0/row","value":2})", "/row: 2 is no row"},
        EditedCase{R"({"op":"replace","path":"/tab_table/fields/0/start","value":20})",
                   "/start: 20 is not below end, 20"},
        EditedCase{R"({"op":"add","path":"/tail","value":{"base64":"*"}})", "/file/tail/base64: is not base64"},
        EditedCase{R"({"op":"add","path":"/tail","value":{"size":70000,"left_out":true}})",
                   "/file/tail: 70000 bytes that were left out of the document; make it again with --exact"},
        EditedCase{R"({"op":"add","path":"/tail","value":{"size":9000000000,"fill":0}})",
                   "/file/tail: the file would be larger than 128 MiB"},
        EditedCase{R"({"op":"add","path":"/flash_font","value":{"encoding_size":4000000000}})",
                   "/file/flash_font: the file would be larger than 128 MiB"},
        EditedCase{R"({"op":"add","path":"/cut_at","value":20})", "/file/cut_at: leaves less than the headers"},
        EditedCase{R"({"op":"replace","path":"/standard","value":"SECAM"})", "/file/standard: must be PAL or NTSC"},
        EditedCase{R"({"op":"replace","path":"/font_numbers/3","value":70000})",
                   "/font_numbers/3: 70000 is above 65535"},
        EditedCase{R"({"op":"replace","path":"/type","value":"picture"})", "/file/type: must be message or font"}));

files::FontFile SmallFont() {
    files::FontFile font;
    font.header.font_name = "Lantern";
    font.AddRunCoded(
        65, {files::BackgroundRun(2), files::ColourRun(1, 255, 4), files::EndOfLine(), files::EndOfGlyph()}, 3, 7);
    font.AddRunCoded(66, {files::BlendedRun(1, 128, 4), files::Stay(2, 255), 0x40000000, files::EndOfGlyph()}, 3, 7);
    font.directory[67] = font.directory[65];
    font.AddStored(68, {.width = 1, .height = 1, .pixels = {1, 2, 3, 4}}, 0, 2);
    return font;
}

Json SmallFontFile() {
    return Json::parse(FileJson(files::WriteFont(SmallFont()), false)->json);
}

TEST(FileJson, HasTheGlyphsOfAFont) {
    const Json file = SmallFontFile();
    EXPECT_EQ(file["encoding"].dump(), R"([{"text":"A","code":65,"lines":["b2 c1x4 |","."]},)"
                                       R"({"text":"B","code":66,"lines":["m1/128x4 c2x1+ 0x40000000 ."]}])");
    EXPECT_EQ(file["directory"][2].dump(), R"({"text":"C","code":67,"kind":2,"top":3,"metric":7,"same_glyph_as":65})");
    EXPECT_EQ(file["stored"].dump(), R"([{"text":"D","code":68,"width":1,"height":1,"pixels":{"base64":"AQIDBA=="}}])");
}

/// A longer glyph moves the glyphs after it.
TEST(FileJson, MakesTheFontOfAnEditedGlyph) {
    Json file = SmallFontFile();
    file["encoding"][0]["lines"].insert(file["encoding"][0]["lines"].begin(), "c1x32 |");
    const DocumentFile made = FileOfDocument(DocumentOf(file.dump()));
    ASSERT_THAT(FaultsOf(made), IsEmpty());
    const auto read = files::ReadFont(made.bytes);
    EXPECT_EQ(read->directory[66].glyph_offset, 24u);
    EXPECT_EQ(read->directory[67].glyph_offset, 0u);
}

class EditedFont : public testing::TestWithParam<EditedCase> {};

TEST_P(EditedFont, HasItsFaultNamed) {
    const Json file = SmallFontFile().patch(Json::parse("[" + std::string(GetParam().patch) + "]"));
    EXPECT_THAT(FaultsOf(FileOfDocument(DocumentOf(file.dump()))), ElementsAre(HasSubstr(GetParam().fault)));
}

INSTANTIATE_TEST_SUITE_P(
    AllFaults, EditedFont,
    testing::Values(
        EditedCase{R"({"op":"replace","path":"/encoding/0/lines/0","value":"b2 c1x33 |"})",
                   "/file/encoding/0/lines/0: \"c1x33\" is no run code"},
        EditedCase{R"({"op":"remove","path":"/encoding/0/lines/1"})", "/file/encoding/0/lines: the glyph must end"},
        EditedCase{R"({"op":"add","path":"/encoding/-","value":{"code":70,"lines":["."]}})",
                   "/file/encoding/2/code: the directory has no run-coded entry 70"},
        EditedCase{R"({"op":"replace","path":"/directory/2/same_glyph_as","value":80})",
                   "/file/directory/2/same_glyph_as: the encoding has no glyph 80"},
        EditedCase{R"({"op":"remove","path":"/encoding/1"})", "/file/directory/1/offset: is missing"},
        EditedCase{R"({"op":"replace","path":"/directory/3/kind","value":0})",
                   "/file/stored/0/code: the directory has no entry 68 of kind 170"},
        EditedCase{
            R"({"op":"replace","path":"/directory/1/code","value":192},{"op":"remove","path":"/directory/1/text"},)"
            R"({"op":"remove","path":"/encoding/1"})",
            "/file/directory/1/code: 192 is above 191"},
        EditedCase{R"({"op":"replace","path":"/stored/0/width","value":2})",
                   "/file/stored/0/pixels: has 4 bytes; 8 make"},
        EditedCase{R"({"op":"replace","path":"/header/height","value":40000})", "/header/height: 40000 is above 32767"},
        EditedCase{R"({"op":"replace","path":"/header/flags","value":0})", "/file/encoding: the file has none"}));

/// Every fault, in one run.
TEST(FileJson, NamesAllFaults) {
    const DocumentFile made =
        FileOfDocument(R"({"version":2,"file":{"type":"message","rows":[{"y":-1},{"y":0,"z":1,"z":2}],"word_4":"x"}})");
    EXPECT_THAT(FaultsOf(made),
                ElementsAre("/file/rows/1/z: is there twice", "/version: must be 1", "/file/rows/0/y: -1 is below 0",
                            "/file/rows/1/z: is an unknown key", "/file/word_4: \"x\" is not a whole number"));
}

TEST(FileJson, RefusesWhatIsNoDocument) {
    const auto reason = [](const std::string& text) -> std::string {
        try {
            return FaultsOf(FileOfDocument(text)).at(0);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    };
    EXPECT_THAT(reason("[1]"), HasSubstr("is no JSON object"));
    EXPECT_THAT(reason("{\"version\":1,"), HasSubstr("is not JSON: parse error at line 1"));
    EXPECT_THAT(reason(std::string(100000, '[')), HasSubstr("is no JSON object"));
    EXPECT_THAT(reason("{\"a\":" + std::string(100000, '[')), HasSubstr("nested deeper"));
    EXPECT_THAT(reason(R"({"version":1,"rows":[]})"), HasSubstr("/file: is missing: the document is of an earlier"));
}

/// Unequal bytes that nothing reads are kept up to 64 KiB, equal ones always.
TEST(FileJson, LeavesOutManyUnreadBytesUnlessExact) {
    files::MessageFile message = SmallMessage();
    message.tail = Bytes(100000, 3);
    ExpectSameBytes(files::WriteMessage(message), false, "equal bytes");
    message.tail.resize(65536);
    message.tail.back() = 4;
    ExpectSameBytes(files::WriteMessage(message), false, "64 KiB");
    message.tail.push_back(5);
    const Bytes bytes = files::WriteMessage(message);
    EXPECT_EQ(FileJson(bytes, false)->left_out, 65537u);
    EXPECT_THAT(FileJson(bytes, false)->json, HasSubstr(R"("tail":{"size":65537,"left_out":true})"));
    ExpectSameBytes(bytes, true, "exact");
}

TEST(RunCodeText, HasOneTextForEachWord) {
    for (std::uint32_t n = 0; n < 1U << 16; ++n) {
        // The bits that have a meaning, and a few of the others.
        const std::uint32_t code =
            (n & 0xFF) | (n >> 8 & 7) << 14 | (n >> 11 & 3) << 16 | (n >> 13 & 1) << 23 | (n >> 14 & 3) << 30;
        const auto lines = LinesOfCodes(std::span(&code, 1));
        ASSERT_EQ(lines.size(), 1u);
        ASSERT_EQ(CodeOfText(lines[0]), code) << lines[0];
    }
    for (const char* text : {"", "b0", "b33", "b32:0/0", "c256x1", "c1", "c1/256x1", "c1x1++", "0x123", "d1x1", "||"}) {
        EXPECT_EQ(CodeOfText(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace zel::filejson
