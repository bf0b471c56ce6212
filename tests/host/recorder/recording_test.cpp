// The searchable text, the source files and the video standard of a recording.
#include <fstream>

#include <gtest/gtest.h>

#include "host/document/row_text.h"
#include "host/recorder/make_recording.h"
#include "platform/system/files.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

/// A row of 30 pixels height, with its characters and their positions.
struct Row {
    std::string text;
    std::vector<int> x;
};

std::string RecordedText(const std::vector<Row>& rows) {
    recorder::ArrivedMessage arrived{.number = 7, .message = {}, .picture = {}};
    for (std::size_t row = 0; row < rows.size(); ++row) {
        arrived.message.rows.push_back({.y = 100, .top = -24, .bottom = 6, .empty = false, .text = {}});
        for (std::size_t n = 0; n < rows[row].text.size(); ++n) {
            document::CharacterRecord character;
            character.info.row_index = static_cast<int>(row);
            character.info.x = rows[row].x[n];
            character.character = static_cast<unsigned char>(rows[row].text[n]);
            arrived.message.characters.push_back(character);
        }
    }
    document::FillRowTexts(arrived.message);
    recorder::FileDigests digests;
    return recorder::MakeRecording(arrived, {}, digests).text;
}

TEST(RecordedText, SeparatesDistantCharacters) {
    EXPECT_EQ(RecordedText({{"wide", {0, 32, 64, 96}}}), "wide");
    EXPECT_EQ(RecordedText({{"abcd", {0, 20, 400, 420}}}), "ab cd");
    EXPECT_EQ(RecordedText({{"ab d", {0, 20, 40, 400}}}), "ab d");
    EXPECT_EQ(RecordedText({{"abcd", {400, 420, 0, 20}}, {"e", {0}}}), "ab cd\ne");
    EXPECT_EQ(RecordedText({{"", {}}, {"\xE9", {0}}, {"", {}}}), "\xC3\xA9");
}

/// The message's file and four fonts, of which two are one file: the second large file exceeds the limit.
TEST(RecordedSources, HaveChecksumsUpToALimitForAllTogether) {
    const samples_test::ScratchDirectory scratch;
    document::MessageRecord message;
    for (std::uint16_t& number : message.header.font_numbers) number = kNoFont;
    const auto add = [&](const std::string& name, std::uintmax_t mebibytes) {
        const std::string file = scratch.Path() / name;
        std::ofstream(file).close();
        std::filesystem::resize_file(file, mebibytes << 20);
        return system::ModulePath(file);
    };
    message.file = add("message", 1);
    const std::string fonts[] = {add("a", 70), add("a", 70), add("b", 70), add("c", 2)};
    for (std::size_t slot = 0; slot < std::size(fonts); ++slot) {
        message.header.font_numbers[slot] = static_cast<std::uint16_t>(slot);
        message.fonts[slot].emplace().file_name = fonts[slot];
    }
    recorder::FileDigests digests;
    const std::vector<library::SourceFile> sources = recorder::SourcesOf(message, scratch.Path(), digests);
    std::string summary;
    for (const library::SourceFile& source : sources) {
        summary += std::to_string(source.size >> 20) + (source.sha256.empty() ? " without" : "") + ", ";
    }
    EXPECT_EQ(summary, "1, 70, 70, 70 without, 2, ");
    EXPECT_FALSE(recorder::AreUnchanged(sources, scratch.Path(), digests));
}

TEST(RecordedStandard, OfAnRgbaFileHasTheLinesOfItsPicture) {
    constexpr auto kNtsc = VideoStandard::kNtsc, kPal = VideoStandard::kPal;
    const struct {
        bool rgba;
        int height;
        VideoStandard arrived, recorded;
    } cases[] = {
        {true, 576, kNtsc, kPal}, {true, 486, kPal, kNtsc},   {true, 480, kPal, kPal},
        {true, 0, kPal, kPal},    {false, 576, kNtsc, kNtsc},
    };
    for (const auto& [rgba, height, standard, recorded] : cases) {
        recorder::ArrivedMessage arrived{.number = 7, .message = {}, .picture = {}};
        arrived.message.rgba = rgba;
        arrived.message.standard = standard;
        if (height != 0) arrived.picture = picture::ClearPicture(8, height);
        recorder::FileDigests digests;
        EXPECT_EQ(recorder::MakeRecording(arrived, {}, digests).standard, recorded) << rgba << ' ' << height;
    }
}

}  // namespace

}  // namespace zel::test
