// The searchable text and the video standard of a recording.
#include <gtest/gtest.h>

#include "host/recorder/make_recording.h"

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
        arrived.message.rows.push_back({.y = 100, .top = -24, .bottom = 6, .empty = false, .text = rows[row].text});
        for (std::size_t n = 0; n < rows[row].text.size(); ++n) {
            document::CharacterRecord character;
            character.info.row_index = static_cast<int>(row);
            character.info.x = rows[row].x[n];
            character.character = static_cast<unsigned char>(rows[row].text[n]);
            arrived.message.characters.push_back(character);
        }
    }
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
