#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inspect/inspect.h"
#include "samples/name_lists.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using inspect::FileKind;
using inspect::FileReport;
using inspect::Verdict;
using testing::HasSubstr;

FileReport Inspect(std::string_view content, std::string_view name = "file") {
    return inspect::InspectBytes({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()}, name);
}

std::string BitstreamText() {
    return samples::BitstreamList().Family("Lantern").Style("Bold", 21).Style("Italic", 22).Plain("Quay", 33).Written();
}

TEST(InspectNameLists, AreKnownByTheirContentAndByTheirName) {
    const FileReport list = Inspect(BitstreamText());
    EXPECT_EQ(list.kind, FileKind::kBitstreamList);
    EXPECT_EQ(list.list->entries, 3);
    const std::string typefaces = samples::TypefaceList().Typeface("DejaVu Sans", "Quay BT").Written();
    EXPECT_EQ(Inspect(typefaces).kind, FileKind::kTypefaceList);
    EXPECT_EQ(Inspect("", "D:\\MAPS\\Typeface_List.txt").kind, FileKind::kTypefaceList);
    EXPECT_EQ(Inspect("two\nheadings\n", "maps/bitstream_fontlist.txt").verdict, Verdict::kWhole);
    EXPECT_EQ(Inspect("some\nother\ntext\n").kind, FileKind::kText);
}

TEST(InspectNameLists, TellWhatIsUnusual) {
    const FileReport report = Inspect(BitstreamText() + "Chrome\t33\n" + std::string(300, 'x') + "\t\t44");
    EXPECT_THAT(Lines(report.remarks), HasSubstr("repeated numbers, of which the last counts: 33"));
    EXPECT_THAT(Lines(report.remarks), HasSubstr("the last line has no line end"));
    EXPECT_THAT(Lines(report.defects), HasSubstr("1 line is longer than 198 characters"));
    EXPECT_EQ(report.verdict, Verdict::kReadable);
}

TEST(InspectForeignFile, IsDescribedByItsFirstBytes) {
    using namespace std::string_view_literals;
    struct ForeignCase {
        const char* name;
        std::string_view content;
        const char* text;
    };
    for (const ForeignCase& row : {
             ForeignCase{"nothing", ""sv, "it is empty"},
             {"three bytes", "\x00\x00\x02"sv, "00 00 02  \"...\""},
             {"another format", "\x89PNG\r\n\x1A\n\0\0"sv, "89 50 4E 47 0D 0A 1A 0A 00 00  \".PNG......\""},
             {"another byte order", "\xBE\x02\0\0\0\0"sv, "its file type 702 appears with its bytes reversed"},
             {"exchanged pairs", "\0\0\xF4\x01\0\0"sv, "its file type 500 appears with each two bytes exchanged"},
             {"another type", "\0\0\x02\xC1\0\0\0\0STILL PICTURE\0"sv,
              "a file of type 705, \"STILL PICTURE\", which the import doesn't read"},
         }) {
        const FileReport report = Inspect(row.content);
        EXPECT_EQ(report.verdict, Verdict::kForeign) << row.name;
        EXPECT_THAT(report.reason, HasSubstr(row.text)) << row.name;
    }
}

}  // namespace

}  // namespace zel::test
