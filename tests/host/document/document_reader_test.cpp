#include "host/document/document_reader.h"

#include <stdexcept>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using document::DocumentContents;
using document::ReadDocumentText;

TEST(DocumentReader, IsEmptyForOtherTexts) {
    for (const char* text :
         {"", "{", "null", "[]", "7", R"({"rows":7,"characters":"x","fonts":{},"tab_fields":null,"palette":1})",
          R"({"characters":[{"row":0,"text":"a"}]})",
          R"({"characters":[{"row":-1,"text":"a"},{"row":1e30,"text":"a"},{"row":"0","text":"a"},{"row":0},3]})"}) {
        const DocumentContents contents = ReadDocumentText(text);
        EXPECT_TRUE(contents.rows.empty() && contents.characters.empty()) << text;
        EXPECT_TRUE(contents.fields.empty() && contents.fonts.empty()) << text;
    }
}

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int n = 0; n < count; ++n) all += text;
    return all;
}

TEST(DocumentReader, RefusesOtherTextsAndThoseBeyondItsLimits) {
    std::string members;
    for (int n = 0; n < 300; ++n) members += ",\"" + std::to_string(n) + "\":0";
    const std::pair<std::string, const char*> cases[] = {
        {"", nullptr},
        {"{", ""},
        {"[]", ""},
        {"7", ""},
        {"{\"a\":" + Repeated("[", 63) + Repeated("]", 63) + "}", nullptr},
        {"{\"a\":" + Repeated("[", 64) + Repeated("]", 64) + "}", "nested deeper than 64 levels"},
        {"{\"a\":\"" + Repeated("[{\\\"", 100) + "\"}", nullptr},
        {"{\"a\":[" + Repeated("0,", 300) + "0]}", nullptr},
        {"{\"a\":0" + members + "}", "more than 256 members"},
        {"{\"a\":[0" + Repeated(",0", 299000) + "]}", nullptr},
        {"{\"a\":[0" + Repeated(",0", 301000) + "]}", "more than 300,000 values"},
        {"{\"a\":\"" + std::string(9 << 20, 'x') + "\"}", "larger than 8 MiB"},
    };
    for (const auto& [text, reason] : cases) {
        const auto parse = [&json = text] { document::ParseDocument(json); };
        if (reason == nullptr) {
            EXPECT_NO_THROW(parse()) << text.substr(0, 20);
        } else {
            EXPECT_THAT(parse, testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr(reason)));
        }
    }
}

TEST(DocumentReader, SkipsACharacterWithoutARowOrAText) {
    const DocumentContents contents = ReadDocumentText(
        R"({"rows":[{}],"characters":[{"row":-1,"text":"a"},{"row":1,"text":"a"},{"row":0,"text":5},3,)"
        R"({"row":0,"text":"b","form":7,"font":[],"code":"x"}]})");
    ASSERT_EQ(contents.characters.size(), 1U);
    EXPECT_EQ(contents.characters[0].text, "b");
    EXPECT_TRUE(contents.characters[0].bitmap);
}

TEST(DocumentReader, LimitsPositions) {
    const DocumentContents contents = ReadDocumentText(
        R"({"rows":[{"y":1e300,"top":1e300,"depth":-5}],)"
        R"("characters":[{"row":0,"text":"a","x":-1e300,"step":1e300},{"row":0,"text":"a","x":1e300}],)"
        R"("tab_fields":[{"name":null,"frame":{"left":-1e300,"right":1e300}}]})");
    EXPECT_LT(contents.rows.at(0).top, 10000);
    EXPECT_GT(contents.characters.at(0).width, 0);
    EXPECT_LT(contents.characters.at(0).width, 10000);
    EXPECT_GT(contents.fields.at(0).right, 0);
}

struct WidthCase {
    const char* name;
    const char* characters;
    std::vector<int> widths;
};

TEST(DocumentReader, GivesACharacterItsWidth) {
    for (const WidthCase& row : {
             WidthCase{
                 "to the next", R"({"row":0,"text":"a","x":5,"step":9},{"row":0,"text":"b","x":12,"step":8})", {7, 8}},
             {"a gap after it", R"({"row":0,"text":"a","x":5,"step":9},{"row":0,"text":"b","x":99})", {20, 10}},
             {"wider than high",
              R"({"row":0,"text":"a","x":5,"step":60},{"row":0,"text":"b","x":70,"step":60})",
              {60, 60}},
             {"the next to its left", R"({"row":0,"text":"a","x":5,"step":9},{"row":0,"text":"b","x":1})", {9, 10}},
             {"the next in another row",
              R"({"row":0,"text":"a","x":5},{"row":1,"text":"b","x":9},{"row":0,"text":"c","x":11})",
              {6, 2, 10}},
         }) {
        const DocumentContents contents = ReadDocumentText(R"({"rows":[{"depth":20},{"depth":0}],"characters":[)" +
                                                           std::string(row.characters) + "]}");
        std::vector<int> widths;
        for (const document::DocumentCharacter& character : contents.characters) widths.push_back(character.width);
        EXPECT_EQ(widths, row.widths) << row.name;
    }
}

}  // namespace

}  // namespace zel::test
