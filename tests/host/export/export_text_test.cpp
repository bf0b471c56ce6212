#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/sha256.h"
#include "host/document/message_document.h"
#include "host/export/file_names.h"
#include "host/export/html_text.h"
#include "host/export/message_title.h"
#include "host/export/recordings.h"
#include "host/export/text_layer.h"
#include "host/export/utf8.h"
#include "host/host_disk.h"

namespace zel::test {

namespace {

using Json = nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

TEST(FileNames, ContainPlainCharactersAndDifferForEachDisk) {
    EXPECT_EQ(exporter::StemOf("", 7), "0007");
    EXPECT_EQ(exporter::StemOf("news-2", 9999), "news-2_9999");
    std::set<std::string> stems;
    const std::string long_name(300, 'x');
    for (const std::string& disk : {std::string("a b"), std::string("a_b"), std::string("a/b"), std::string("../b"),
                                    std::string("\xC3\xA9"), long_name, long_name + 'y'}) {
        const std::string stem = exporter::StemOf(disk, 1);
        EXPECT_TRUE(stems.insert(stem).second) << disk;
        EXPECT_THAT(stem, testing::MatchesRegex("[A-Za-z0-9_-]{1,60}_0001")) << disk;
    }
    EXPECT_THROW(exporter::StemOf("", 10000), std::runtime_error);
    EXPECT_THROW(exporter::StemOf("", -1), std::runtime_error);
}

TEST(Title, IsTheFirstLineOfMoreThanOneCharacter) {
    const std::pair<const char*, std::string> cases[] = {
        {"", ""}, {"R\n", "R"}, {"\n \nR\n  News\nx y", "News"}, {"\xC3\xA9\nab", "ab"}, {"a\xFF", "a\xEF\xBF\xBD"}};
    for (const auto& [text, title] : cases) EXPECT_EQ(exporter::TitleOf(text), title) << text;
    EXPECT_EQ(exporter::TitleOf(std::string(500, 'a')), std::string(100, 'a'));
}

TEST(Utf8Text, ReplacesMalformedBytesAndControlCharacters) {
    const std::string mark = "\xEF\xBF\xBD", good = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x99\x82";
    EXPECT_EQ(exporter::ValidUtf8(good), good);
    const std::pair<std::string, std::string> cases[] = {{"\xC0\xAF", mark + mark},
                                                         {"\xED\xA0\x80", mark},
                                                         {"\xE2\x82", mark + mark},
                                                         {"\xF8z", mark + "z"},
                                                         {std::string(1, '\0'), mark}};
    for (const auto& [text, valid] : cases) EXPECT_EQ(exporter::ValidUtf8(text), valid);
}

TEST(Page, EscapesHostileText) {
    const std::string hostile = "\"'><script>alert(1)</script>&amp;";
    library::Recording recording = Recorded();
    recording.text = hostile;
    recording.fonts = recording.warnings = {hostile};
    recording.fields = {{hostile, 0, 0, 2000000000, -2000000000}};
    recording.document =
        Json{{"rows", {{{"y", 10}, {"depth", 20}}}}, {"characters", {{{"row", 0}, {"text", hostile}, {"x", 5}}}}}
            .dump();
    const std::string page = Exported("html", recording)["0012.html"];
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    std::size_t count = 0;
    for (std::size_t at = 0; (at = page.find(exporter::HtmlText(hostile), at)) != std::string::npos; ++at) ++count;
    EXPECT_EQ(count, 7U);  // title, heading, row, box, and three lists
}

TEST(Page, AllowsItsOwnStyleAndNothingElse) {
    const std::string page = Exported("html", Recorded())["0012.html"];
    const std::size_t begin = page.find("<style>") + 7;
    const std::string sum = exporter::Base64(base::Sha256Raw(page.substr(begin, page.find("</style>") - begin)));
    EXPECT_THAT(page, HasSubstr("content=\"default-src 'none'; img-src data:; style-src 'sha256-" + sum + "';"));
    EXPECT_THAT(page, Not(HasSubstr("style=")));
}

class ImportedText : public HostDisk {};

TEST_F(ImportedText, IsPlacedOnItsCharacters) {
    WriteFont(BlockFont());
    WriteMessage(OneRow("AB"));
    const run::ImportOutcome outcome = Import();
    ASSERT_TRUE(outcome.message);
    library::Recording recording = Recorded();
    recording.document = document::MessageDocument(*outcome.message);
    const std::vector<exporter::PlacedRow> rows = exporter::TextLayer(document::ReadDocumentText(recording.document));
    ASSERT_EQ(rows.size(), 1U);
    ASSERT_EQ(rows[0].characters.size(), 2U);
    const auto& [first, second] = std::pair(rows[0].characters[0], rows[0].characters[1]);
    EXPECT_EQ(first.text + second.text, "AB");
    EXPECT_EQ(first.x + first.width, second.x);
    EXPECT_EQ(second.x, outcome.message->characters[1].info.x);
    EXPECT_EQ(second.width, outcome.message->characters[1].info.glyph_step);
    const std::string span = "<tspan x=\"" + std::to_string(second.x) + "\" textLength=\"" +
                             std::to_string(second.width) + "\" lengthAdjust=\"spacingAndGlyphs\">B</tspan></text>";
    EXPECT_THAT(Exported("html", recording)["0012.html"], HasSubstr(span));
}

TEST(JsonFile, ContainsTheDocumentAndTheSources) {
    library::Recording recording = Recorded();
    recording.disk = "news";
    recording.kind = library::RecordingKind::kRgbaObject;
    recording.text = "bad \xFF byte";
    recording.sources = {{"/disk/.0012", {}, 7, "ab"}, {"/disk/f", 3, 8, "cd"}};
    const Json json = Json::parse(Exported("json", recording)["news_0012.json"]);
    EXPECT_EQ(json["kind"], "object");
    EXPECT_EQ(json["message"], Json::parse(recording.document));
    EXPECT_EQ(json["sources"][1], Json::parse(R"({"path":"/disk/f","font_number":3,"size":8,"sha256":"cd"})"));
    EXPECT_EQ(json["sources"][0]["font_number"], nullptr);
    EXPECT_EQ(json["picture"]["sha256"], base::Sha256(recording.picture));
}

}  // namespace

}  // namespace zel::test
