#include <algorithm>
#include <cstring>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fill/data/data_record.h"

namespace zel::fill {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The records of a text that arrives in pieces, a line each: number, line, and column=value or the faults.
std::string Read(std::string_view text, std::size_t piece, std::size_t most = 1000) {
    std::string result;
    const ReadBytes read = [&](std::span<char> out) {
        const std::size_t count = std::min({piece, out.size(), text.size()});
        std::memcpy(out.data(), text.data(), count);
        text.remove_prefix(count);
        return count;
    };
    const TakeRecord take = [&](DataRecord record) {
        result += std::to_string(record.number) + "@" + std::to_string(record.line);
        for (std::size_t n = 0; n < record.values.size() && record.faults.empty(); ++n)
            result += " " + (*record.columns)[n] + "=" + record.values[n].value_or("-");
        for (const std::string& fault : record.faults) result += " ! " + fault;
        result += "|";
        return record.number < most;
    };
    try {
        ReadData(read, std::nullopt, take);
    } catch (const DataError& error) {
        result += error.what();
    }
    return result;
}

TEST(Data, AreReadInEachFormAndInPieces) {
    const std::pair<std::string_view, const char*> cases[] = {
        {"A,B\n1,2\n3,4", "1@2 A=1 B=2|2@3 A=3 B=4|"},
        {"\xEF\xBB\xBF"
         "A;B\r\n1,5;\"x;\"\"y\"\"\"\r\n",
         "1@2 A=1,5 B=x;\"y\"|"},
        {"A\tB\r1\t 2 \r", "1@1 A=1 B= 2 |"},
        {"sep=;\r\nA,x;B\n1;2\n", "1@3 A,x=1 B=2|"},
        {"\"A;;;\",B\n1,2\n", "1@2 A;;;=1 B=2|"},
        {"A,B\n\n\"one\r\ntwo\",x\n\n3,4\n", "1@3 A=one\r\ntwo B=x|2@6 A=3 B=4|"},
        {"A,B\n1\n1,2,3\n,\n",
         "1@2 ! has 1 value, and the heading has 2 columns|"
         "2@3 ! has 3 values, and the heading has 2 columns|3@4 A= B=|"},
        {"A,B\n\xE4,2\n3,4\n", "1@2 ! isn't UTF-8; save the table as UTF-8|2@3 A=3 B=4|"},
        {"A\xE4,B\n1,2\n", "line 1: the heading isn't UTF-8; save the table as UTF-8"},
        {"A,B\n1,2\n3,a\"b\n", "1@2 A=1 B=2|line 3: a quote within a value isn't doubled, or its value isn't quoted"},
        {"A,B\n1,\"2\n3,4\n", "line 2: a quoted value has no end"},
        {"\xFF\xFE"
         "A",
         "line 1: the text is in UTF-16; save the table as UTF-8"},
        {"", "line 1: there are no data"},
        {"A,B\n", ""},
        {"[]", ""},
        {"\n[{\"A\": \"\\u00e4\", \"B\": 1.50},\n {\"B\": null, \"C\": -7}]\n", "1@2 A=\xC3\xA4 B=1.50|2@3 B=- C=-7|"},
        {"{\"A\":\"1\"}\n{\"A\":\"2\"}{\"A\":\"3\"}\n", "1@1 A=1|2@2 A=2|3@2 A=3|"},
        {"[{\"A\":{\"x\":[1,{}]},\"B\":true,\"C\":[2],\"C\":\"4\"},{\"A\":\"5\"}]",
         "1@1 ! \"A\" is an object, not a text ! \"B\" is true or false, not a text ! \"C\" is an array, not a text ! "
         "\"C\" is there twice|2@1 A=5|"},
        {"[1,[2,[{}]],{\"A\":\"5\"}]", "1@1 ! is a value, not an object|2@1 ! is an array, not an object|3@1 A=5|"},
        {"[{\"A\":\"1\"},\n{\"A\":}]", "1@1 A=1|line 2: the text is no valid JSON"},
        {"[{\"A\":\"1\"},\n{\"A\":", "1@1 A=1|line 2: the JSON text ends early"},
        {"{\"A\":\"\xE4\"}", "line 1: the text is no valid JSON"},
    };
    for (const auto& [text, expected] : cases) {
        for (const std::size_t piece : {1U, 3U, 100000U}) EXPECT_EQ(Read(text, piece), expected) << text << piece;
    }
    EXPECT_EQ(Read("A\n1\n2\n3\n", 1, 2), "1@2 A=1|2@3 A=2|");
    EXPECT_EQ(Read("[{\"A\":1},{\"A\":2},{\"A\":3}]", 1, 2), "1@1 A=1|2@1 A=2|");
}

TEST(Data, OfAnySizeTakeNoMoreThanTheirLimits) {
    const std::string text(2 * kMostRecordBytes, 'x');
    const std::string deep(kMostRecordBytes * 2, '[');
    std::string columns = "c0", object = "{\"c\":1";
    for (std::size_t n = 1; n <= kMostColumns; ++n) {
        columns += ",c" + std::to_string(n);
        object += ",\"" + std::to_string(n) + "\":1";
    }
    EXPECT_THAT(Read("A,B\n1,\"" + text, 100000), HasSubstr("line 2: is longer than 1,048,576 bytes"));
    EXPECT_THAT(Read(text, 100000), HasSubstr("line 1: is longer than 1,048,576 bytes"));
    EXPECT_THAT(Read("{\"A\":\"" + text, 100000), HasSubstr("line 1: the record is longer than 1,048,576 bytes"));
    EXPECT_THAT(Read("{\"A\":" + deep, 100000), HasSubstr("longer than"));
    EXPECT_THAT(Read(deep, 100000), HasSubstr("longer than"));
    EXPECT_THAT(Read(columns + "\n", 100000), StartsWith("line 1: has more than 1,000 values"));
    EXPECT_THAT(Read(object + "}", 100000), StartsWith("line 1: the record has more than 1,000 values"));

    // Many small records are no long one.
    std::string many = "A\n";
    while (many.size() < 2 * kMostRecordBytes) many += "a value of a record\n\n";
    EXPECT_THAT(Read(many, 5000), Not(HasSubstr("longer")));
}

}  // namespace
}  // namespace zel::fill
