// A few bytes that announce much cost little, and the largest files end in bounded time.
#include <chrono>
#include <fstream>

#include <gtest/gtest.h>

#include "faults/failing.h"
#include "module/font/format/font_loader.h"
#include "module/message/format/message_loader.h"
#include "support/module_fixture.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

/// Bytes that this process holds in memory.
std::size_t Resident() {
    std::size_t all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * 4096;
}

struct FontCase {
    const char* name;
    void (*announce)(files::FontFile&);
};

TEST(AnnouncedSize, OfAFontTakesNoMoreMemoryThanTheFileHolds) {
    for (const FontCase& row : {
             FontCase{"an encoding of 4 gigabytes", [](auto& font) { font.header.encoding_size = ~0U; }},
             {"an auxiliary block", [](auto& font) { font.header.aux_block_size = 32767; }},
             {"a word table", [](auto& font) { font.header.word_table_size = 32767; }},
             {"a sample of a gigabyte", [](auto& font) { font.sample->a.width = font.sample->a.height = 32767; }},
             {"a second sample", [](auto& font) { font.sample->b.width = font.sample->b.height = 32767; }},
             {"a stored glyph of 4 gigabytes", [](auto& font) { font.stored[67].length = ~0U; }},
         }) {
        files::FontFile font = GoodFont();
        row.announce(font);
        const files::Bytes bytes = files::WriteFont(font);
        font::LoadedFont loaded;
        failing::TakeLargestAllocation();
        font::LoadFont(bytes, loaded);
        EXPECT_LE(failing::TakeLargestAllocation(), bytes.size()) << row.name;
    }
}

// The host is promised a record for each announced row, so the block has its full size, but rows that the file doesn't
// hold stay memory that was never touched.
TEST(AnnouncedRows, OfAShortFileArentTouched) {
    files::MessageFile message = GoodMessage();
    message.header.last_row = 65535;
    const files::Bytes bytes = files::WriteMessage(message);
    [[maybe_unused]] const std::size_t before = Resident();
    message::LoadedMessage loaded;
    message::LoadMessage(bytes, loaded);
    EXPECT_EQ(loaded.header->RowCount(), 65536);
    EXPECT_EQ(loaded.rows[65535].CharCount(), 0);
    EXPECT_EQ(loaded.y_offset, 0) << "that of the missing rows";
#if !defined(ZELTRANS_SANITIZED)  // which fills the block
    EXPECT_LT(Resident(), before + (1U << 20));
#endif
}

class LargestFiles : public module_test::ModuleTest {};

TEST_F(LargestFiles, AreImportedInBoundedTime) {
    constexpr unsigned kRows = 65536;
    files::FontFile font = module_test::PlainFont();
    files::MessageFile message;
    for (unsigned slot = 0; slot < 16; ++slot) {
        message.header.font_numbers[slot] = static_cast<std::uint16_t>(slot + 1);
    }
    // The longest glyph there is, at the head of a megabyte of codes.
    files::RunCodes codes;
    for (unsigned line = 0; line < 500; ++line) {
        codes.insert(codes.end(), 499, files::ColourRun(1, 255, 32));
        codes.push_back(files::EndOfLine());
    }
    font.AddRunCoded('A', codes, 0, 0);
    for (unsigned slot = 0; slot < 16; ++slot) WriteFont(slot + 1, font);
    message.rows.assign(kRows, files::RowFromText(30, "B", 0, 5));
    message.rows[0] = files::RowFromText(30, std::string(63, 'A'), 0, 5);
    message.tabs.emplace().fields.assign(200, {.tab_start = 10, .tab_end = 20, .tab_row = 1});
    WriteMessage(message);
    const auto start = std::chrono::steady_clock::now();
    Import();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(chars.size(), kRows - 1 + 63 + 1);  // and a template
}

}  // namespace

}  // namespace zel::test
