// Files, disks and libraries compared.
#include "host/compare/file_comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/compare/disk_comparison.h"
#include "host/compare/font_difference.h"
#include "host/compare/library_comparison.h"
#include "host/host_disk.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using compare::ComparisonResult;
using testing::ElementsAre;
using testing::HasSubstr;

/// A file in memory.
class MemoryFile : public message::FileBytes {
  public:
    explicit MemoryFile(files::Bytes bytes) : m_bytes(std::move(bytes)) {}
    std::uint64_t Size() const noexcept override { return m_bytes.size(); }
    std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> out) override {
        const std::size_t from = std::min<std::size_t>(offset, m_bytes.size());
        const std::size_t size = std::min(out.size(), m_bytes.size() - from);
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(from), size, out.begin());
        return size;
    }

  private:
    files::Bytes m_bytes;
};

std::vector<std::string> FontLines(const files::FontFile& a, const files::FontFile& b) {
    MemoryFile bytes_a(files::WriteFont(a)), bytes_b(files::WriteFont(b));
    const auto forth = compare::CompareFonts(bytes_a, bytes_b, true),
               back = compare::CompareFonts(bytes_b, bytes_a, false);
    EXPECT_TRUE(forth && back);
    compare::Differences mirrored = back->differences;
    for (compare::Difference& difference : mirrored) difference = Mirrored(difference);
    EXPECT_EQ(forth->differences, mirrored);
    return compare::LinesOf(forth->differences);
}

class ComparedFiles : public HostDisk {
  protected:
    compare::FileComparison Compare(const std::string& a, const std::string& b) {
        return compare::CompareFiles(Path(a), Path(b), m_options);
    }

    compare::ComparisonOptions m_options;
};

TEST(FontDifference, SaysWhatAnEditHasChanged) {
    const files::FontFile before = GoodFont();
    const auto lines = [&](const auto& edit) {
        files::FontFile after = before;
        edit(after);
        return FontLines(before, after);
    };
    EXPECT_THAT(lines([](files::FontFile&) {}), ElementsAre());
    EXPECT_THAT(lines([](files::FontFile& f) { f.header.dword_94 = 5, f.directory[65].byte_1 = 9, f.tail = {1}; }),
                ElementsAre());
    EXPECT_THAT(lines([](files::FontFile& f) { f.header.font_name = "Quay", f.header.row_inset = 2; }),
                ElementsAre("name: Quay Bold -> Quay", "row inset: 0 -> 2"));
    EXPECT_THAT(lines([](files::FontFile& f) {
                    f.AddRunCoded(70, {files::ColourRun(1, 255, 4), files::EndOfGlyph()}, 2, 9);
                    f.AddRunCoded(71, {files::ColourRun(1, 255, 4), files::EndOfGlyph()}, 2, 9);
                    f.directory[66].glyph_kind = 0;
                }),
                ElementsAre("glyph 66 (B) removed", "glyphs 70 (F), 71 (G) added"));
    EXPECT_THAT(lines([](files::FontFile& f) { f.directory[65].glyph_top = 3; }),
                ElementsAre("glyph 65 (A): top 2 -> 3"));
    EXPECT_THAT(
        lines([](files::FontFile& f) {
            // Four pixels of one colour as two runs, and as four of another colour.
            f.AddRunCoded(
                65, {files::ColourRun(1, 255, 2), files::ColourRun(1, 255, 2), files::EndOfLine(), files::EndOfGlyph()},
                2, 9);
            f.AddRunCoded(66, {files::ColourRun(2, 255, 8), files::EndOfLine(), files::EndOfGlyph()}, 2, 9);
        }),
        ElementsAre("glyph 65 (A): codes differ, the same is drawn", "glyph 66 (B): 8 pixels differ"));
    EXPECT_THAT(lines([](files::FontFile& f) { f.directory[66].glyph_top = 3, f.directory[66].glyph_metric = 8; }),
                ElementsAre("glyph 66 (B): top 2 -> 3, metric 9 -> 8"));
    EXPECT_THAT(lines([](files::FontFile& f) { f.stored[67].pixels[5] = 1; }),
                ElementsAre("glyph 67 (C): 1 pixel differs"));
    EXPECT_THAT(lines([](files::FontFile& f) { f.word_table[1] = 9; }), ElementsAre("word table: 6 bytes -> 6 bytes"));
}

TEST(FontDifference, DrawsNoGlyphThatIsTooLarge) {
    files::FontFile font = GoodFont();
    font.stored[67].width_word = 32767;
    font.stored[67].height_word = 32767;
    EXPECT_THAT(FontLines(GoodFont(), font), testing::Contains("glyph 67 (C): width 2 -> 32766, height 3 -> 32767"));
    files::FontFile other = font;
    other.stored[67].pixels[9] = 1;
    EXPECT_THAT(FontLines(font, other), ElementsAre("glyph 67 (C): differs, too large to be drawn"));
}

TEST_F(ComparedFiles, DifferByContentsPictureAndBytes) {
    WriteFont(BlockFont());
    files::MessageFile message = OneRow("AB");
    WriteMessage(message, ".0001");
    message.header.word_0 = 77;
    WriteMessage(message, ".0002");
    message.rows[0].cells[1].char_x += 6;
    WriteMessage(message, ".0003");

    EXPECT_EQ(Compare("MESSAGES/.0001", "MESSAGES/.0001").result, ComparisonResult::kSame);
    const compare::FileComparison bytes = Compare("MESSAGES/.0001", "MESSAGES/.0002");
    EXPECT_EQ(bytes.result, ComparisonResult::kSameButBytes);
    EXPECT_EQ(bytes.bytes->count, 1U);
    EXPECT_EQ(bytes.bytes->first, 153U);

    m_options.mark = true;
    const compare::FileComparison moved = Compare("MESSAGES/.0001", "MESSAGES/.0003");
    EXPECT_EQ(moved.result, ComparisonResult::kDifferent);
    EXPECT_THAT(compare::LinesOf(moved.differences), ElementsAre("row 0: \"B\" moved 6 right"));
    // A block of 4 x 2 pixels was at x 67 and is at x 73 now.
    EXPECT_EQ(moved.picture->pixels, 16U);
    EXPECT_EQ(moved.picture->box.left, 67);
    EXPECT_EQ(moved.picture->box.Width(), 10);
    EXPECT_EQ(moved.picture->box.Height(), 2);
    const auto row = moved.marked->View().Row(moved.picture->box.top);
    EXPECT_EQ(row[67], (picture::Rgba{230, 159, 0, 255}));
    EXPECT_EQ(row[73], (picture::Rgba{60, 150, 255, 255}));
    EXPECT_EQ(row[57].red, row[57].blue) << "what is the same is grey";
}

TEST_F(ComparedFiles, OfTwoKindsOrDamagedCannotBeCompared) {
    WriteFont(BlockFont());
    WriteMessage(OneRow("AB"));
    files::Bytes cut = files::WriteMessage(GoodMessage());
    cut.resize(cut.size() - 2000);
    samples::WriteWholeFile(Path("MESSAGES/.0002"), cut);
    const compare::FileComparison kinds = Compare("MESSAGES/.0001", "MACHINE/.0001");
    EXPECT_EQ(kinds.result, ComparisonResult::kTrouble);
    EXPECT_THAT(kinds.trouble, HasSubstr("is a message, "));
    EXPECT_EQ(Compare("MESSAGES/.0001", "MESSAGES/.0002").result, ComparisonResult::kTrouble);
    EXPECT_THAT(Compare("MESSAGES/.0001", "MESSAGES/.0099").trouble, HasSubstr(".0099: "));
}

TEST_F(ComparedFiles, OfTheSameBytesDifferByTheirFonts) {
    WriteMessage(OneRow("A"));
    WriteFont(BlockFont());
    const std::filesystem::path other = m_scratch.Path() / "other";
    std::filesystem::create_directories(other / "MACHINE");
    std::filesystem::copy(Path("MESSAGES"), other / "MESSAGES");
    const compare::FileComparison comparison = Compare("MESSAGES/.0001", "other/MESSAGES/.0001");
    EXPECT_TRUE(comparison.differences.empty());
    EXPECT_EQ(comparison.picture->pixels, 8U);
    EXPECT_EQ(comparison.result, ComparisonResult::kDifferent);
    EXPECT_THAT(Lines(comparison.warnings), HasSubstr("font 1"));
}

TEST_F(ComparedFiles, OfDisksArePairedByNumber) {
    WriteFont(BlockFont());
    for (const char* name : {".0001", ".0002", ".0003"}) WriteMessage(OneRow("AB"), name);
    const std::filesystem::path other = m_scratch.Path() / "other";
    std::filesystem::create_directories(other);
    std::filesystem::copy(Path("MACHINE"), other / "machine");
    std::filesystem::copy(Path("MESSAGES"), other / "MESSAGES");
    std::filesystem::rename(other / "MESSAGES/.0002", other / "MESSAGES/.0004");
    samples::WriteWholeFile((other / "MESSAGES/.0003").string(), files::WriteMessage(OneRow("AC")));
    std::string items;
    const auto take = [&](const compare::DiskItem& item) {
        items += std::to_string(item.number.value_or(-1)) +
                 (item.a.empty()   ? "b"
                  : item.b.empty() ? "a"
                                   : "=") +
                 std::to_string(static_cast<int>(item.comparison.result)) + " ";
    };
    const compare::ItemCounts counts =
        compare::CompareDisks(m_scratch.Path().string(), other.string(), m_options, take, {});
    EXPECT_EQ(items, "1=0 2a0 3=2 4b0 1=0 ");
    EXPECT_EQ(counts.same, 2U);
    EXPECT_EQ(counts.only_in_a + counts.only_in_b + counts.different, 3U);
}

}  // namespace

}  // namespace zel::test
