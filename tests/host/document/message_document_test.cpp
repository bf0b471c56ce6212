#include "host/document/message_document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/document/indented_json.h"
#include "host/host_disk.h"

namespace zel::test {

namespace {

using Json = nlohmann::ordered_json;

class Document : public HostDisk {
  protected:
    Json Import() {
        const run::ImportOutcome outcome = HostDisk::Import();
        EXPECT_TRUE(outcome.message.has_value()) << outcome.failure;
        return outcome.message ? Json::parse(document::MessageDocument(*outcome.message)) : Json();
    }
};

TEST_F(Document, ContainsRowsCharactersAndFonts) {
    WriteFont(BlockFont());
    files::MessageFile message = OneRow("AB");
    message.header.frame_left = 40;
    message.header.frame_top = 10;  // above the picture
    message.palette = files::PaletteBlock{.entries = std::vector<std::uint32_t>(256, files::PaletteEntry(1, 2, 254))};
    message.rows.back().row_top = 4;
    WriteMessage(message);
    const Json document = Import();
    EXPECT_EQ(document["version"], 1);
    EXPECT_EQ(document["source"], Path("MESSAGES/.0001"));
    EXPECT_EQ(document["standard"], "NTSC");
    EXPECT_EQ(document["frame"]["top"], -10);
    EXPECT_EQ(document["rows"], Json::parse(R"([{"row":0,"y":100,"top":4,"depth":16,"text":"AB"}])"));
    ASSERT_EQ(document["characters"].size(), 2U);
    const Json& second = document["characters"][1];
    EXPECT_EQ(second["text"], "B");
    EXPECT_EQ(second["x"], 67);
    EXPECT_EQ(second["form"], "bitmap");
    EXPECT_EQ(second["font"], Json::parse(R"({"slot":0,"number":1,"name":"Block"})"));
    EXPECT_EQ(second["face_colour"], "#0102FE");
    EXPECT_EQ(document["fonts"][0]["height"], 20);
    EXPECT_EQ(document["palette"][7][31], "#0102FE");
}

TEST_F(Document, ContainsItsWarnings) {
    WriteMessage(OneRow("A"));
    EXPECT_THAT(Import()["warnings"].dump(), testing::HasSubstr("font 1; a row ends where it is used"));
    WriteFont(BlockFont());
    EXPECT_EQ(Import()["warnings"], Json::array());
}

TEST_F(Document, ContainsTheTypefaceOfACharacterInTextForm) {
    WriteFont(BlockFont());
    WriteMessage(OneRow("A"));
    m_request.host.tt_convert = true;
    const Json character = Import()["characters"][0];
    EXPECT_EQ(character["form"], "text");
    EXPECT_EQ(character["typeface"], Json::parse(R"({"name":"Arial","height":24,"weight":400,"italic":false})"));
}

TEST_F(Document, ContainsTabFieldsWithTheirFontAndColour) {
    WriteFont(BlockFont());
    files::MessageFile message = OneRow("A");
    files::TabField named{.tab_start = 10, .tab_end = 90, .tab_name = "Score\xE9"};
    files::TabField fontless{.tab_start = 10, .tab_end = 90, .tab_font = 16};
    message.tabs = files::TabTable{.fields = {named, fontless}};
    WriteMessage(message);
    const Json fields = Import()["tab_fields"];
    ASSERT_EQ(fields.size(), 2U);
    EXPECT_EQ(fields[0]["name"], "Score\xC3\xA9");
    EXPECT_EQ(fields[0]["frame"], Json::parse(R"({"left":17,"top":100,"right":97,"bottom":120})"));
    EXPECT_EQ(fields[0]["font"]["slot"], 0);
    EXPECT_TRUE(fields[1]["font"].is_null());
}

TEST_F(Document, ContainsHowAPictureIsInserted) {
    samples::WriteWholeFile(Path("MESSAGES/.0001"), files::WriteRgbaFile(717, {}));
    Json document = Import();
    document.erase("source");
    EXPECT_EQ(document,
              Json::parse(R"({"version":1,"id":".0001","kind":"picture","insert_as":"object","warnings":[]})"));
}

TEST(IndentedJsonText, KeepsTheOrderOfMembersAndAnyOtherText) {
    const std::string indented = "{\n  \"b\": [],\n  \"a\": [\n    1,\n    {},\n    \"[\\\"\\u0001é,\"\n  ]\n}";
    EXPECT_EQ(document::IndentedJson(R"({"b":[],"a":[1,{},"[\"\u0001é,"]})"), indented);
    EXPECT_EQ(document::IndentedJson("\n" + indented + " "), indented);
    for (const std::string& text : {std::string(), std::string("]}"), "{\"a\":" + std::string(100000, '[')}) {
        EXPECT_EQ(document::IndentedJson(text), text);
    }
}

}  // namespace

}  // namespace zel::test
