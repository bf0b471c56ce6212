// Measuring and drawing run-coded glyphs.
#include "files/run_codes.h"

#include <cmath>
#include <map>
#include <random>

#include <gmock/gmock.h>

#include "module/font/format/draw_run_codes.h"
#include "module/font/format/measure_run_codes.h"

namespace zel::test {

namespace {

using files::BackgroundRun;
using files::BlendedRun;
using files::ColourRun;
using files::EndOfLine;
using files::RunCodes;
using files::Stay;

font::RunCodeReader Reader(const files::Bytes& bytes, std::uint32_t offset = 0) {
    return {bytes, offset};
}

constexpr std::uint32_t kStayingBackground = 1U << 31 | BackgroundRun(5);

struct MeasureCase {
    const char* name;
    RunCodes codes;
    font::GlyphSize size;
};

TEST(Measure, FollowsTheCodes) {
    const MeasureCase kCases[] = {
        {"an empty glyph has its two blank rows", {0}, {0, 2}},
        {"no codes at all end the glyph", {}, {0, 2}},
        {"two lines, widths rounded up",
         {ColourRun(1, 255, 10), EndOfLine(), ColourRun(1, 255, 13), EndOfLine(), 0},
         {16, 4}},
        {"an unfinished last line counts", {ColourRun(1, 255, 10), EndOfLine(), ColourRun(1, 255, 13), 0}, {16, 4}},
        {"a multiple of four stays", {ColourRun(1, 255, 12), EndOfLine(), 0}, {12, 3}},
        {"a stay code doesn't widen", {Stay(2, 255), ColourRun(1, 255, 5), EndOfLine(), 0}, {8, 3}},
        {"nor does a background run with the bit", {kStayingBackground, ColourRun(1, 255, 4), EndOfLine(), 0}, {4, 3}},
        {"a line of stay codes only isn't unfinished", {EndOfLine(), Stay(1, 255), 0}, {0, 3}},
        {"background runs widen", {BackgroundRun(32), BlendedRun(1, 9, 1), EndOfLine(), 0}, {36, 3}},
        {"codes after the end don't count", {0, ColourRun(1, 255, 9), EndOfLine()}, {0, 2}},
    };
    for (const MeasureCase& row : kCases)
        EXPECT_EQ(font::MeasureRunCodes(Reader(files::RunCodeBytes(row.codes))), row.size) << row.name;
}

TEST(Measure, EndsAfter500LinesOrRuns) {
    EXPECT_EQ(font::MeasureRunCodes(Reader(files::RunCodeBytes(RunCodes(600, EndOfLine())))),
              (font::GlyphSize{0, 502}));
    RunCodes codes(600, ColourRun(1, 255, 1));
    EXPECT_EQ(font::MeasureRunCodes(Reader(files::RunCodeBytes(codes))), (font::GlyphSize{0, 2}))
        << "the line has no end";
    codes.insert(codes.begin() + 499, EndOfLine());
    EXPECT_EQ(font::MeasureRunCodes(Reader(files::RunCodeBytes(codes))), (font::GlyphSize{500, 4}));
}

TEST(Measure, EndsAfterTheLargestNumberOfCodes) {
    for (const std::size_t stays : {font::kMaxGlyphCodes - 1, font::kMaxGlyphCodes}) {
        RunCodes codes(stays, Stay(1, 255));
        codes.insert(codes.end(), 2, ColourRun(1, 255, 5));
        const files::Bytes bytes = files::RunCodeBytes(codes);
        const font::GlyphSize size = stays < font::kMaxGlyphCodes ? font::GlyphSize{8, 3} : font::GlyphSize{0, 2};
        for (const font::MeasurePath& path : font::MeasurePaths()) EXPECT_EQ(path.measure(Reader(bytes)), size);
    }
}

TEST(RunCodeReader, StaysWithinTheEncodingData) {
    const files::Bytes bytes = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_FALSE(Reader(bytes, 3).Next().EndsGlyph()) << "at any byte";
    for (const std::uint32_t offset : {4U, 7U, 8U, 0xFFFFFFFFU}) EXPECT_TRUE(Reader(bytes, offset).Next().EndsGlyph());
}

/// A canvas whose every byte is `fill` before the glyph is drawn. A pixel reads as "blue green red alpha", or by a
/// letter: . as filled, 0 zero, b background, f the first colour.
struct Canvas {
    Canvas(int w, int h, const RunCodes& codes, std::uint8_t fill = 0x11) : width(w), pixels(Size(w, h), fill) {
        const font::RunColour colours[] = {{}, {200, 100, 50}, {1, 2, 3}, {9, 9, 9}};
        font::DrawRunCodes(Reader(files::RunCodeBytes(codes)), {colours, {7, 8, 9}}, {pixels.data(), w * 4, w, h});
    }
    static std::size_t Size(int w, int h) { return static_cast<std::size_t>(w * h * 4); }
    std::string At(int x, int y) const {
        std::string text;
        for (std::size_t i = 0; i < 4; ++i)
            text += (i == 0 ? "" : " ") + std::to_string(pixels[Size(width, y) + Size(x, 1) + i]);
        const std::map<std::string, std::string> letters = {
            {"17 17 17 17", "."}, {"0 0 0 0", "0"}, {"9 8 7 0", "b"}, {"50 100 200 255", "f"}};
        return letters.contains(text) ? letters.at(text) : text;
    }
    std::string Row(int y) const { return At(0, y) + "|" + At(1, y) + "|" + At(2, y) + "|" + At(3, y); }
    int width;
    std::vector<std::uint8_t> pixels;
};

struct DrawCase {
    const char* name;
    RunCodes codes;
    std::string row;  // the second one of a canvas of 4 by 4 pixels
};

TEST(Draw, FollowsTheCodes) {
    const DrawCase kCases[] = {
        {"an empty glyph keeps the fill", {0}, ".|.|.|."},
        {"a run moves on", {ColourRun(1, 255, 2)}, "f|f|b|b"},
        {"the end of a line pads with zeros", {ColourRun(1, 255, 1), EndOfLine()}, "f|0|0|0"},
        {"the end of the glyph pads a line that has begun", {BackgroundRun(1)}, "b|b|b|b"},
        {"a full line is padded by nothing", {ColourRun(1, 255, 4)}, "f|f|f|f"},
        {"a run past the line's end is cut", {ColourRun(1, 255, 32)}, "f|f|f|f"},
        {"colour bytes are limited to the level",
         {ColourRun(1, 128, 4)},
         "100 199 255 128|100 199 255 128|100 199 255 128|100 199 255 128"},
        {"level 0 is all zero", {ColourRun(1, 0, 4)}, "0|0|0|0"},
        {"a colour without an entry is black", {ColourRun(200, 255, 4)}, "0 0 0 255|0 0 0 255|0 0 0 255|0 0 0 255"},
        {"a stay code leaves multiplied bytes and the position", {Stay(1, 100), EndOfLine()}, "0|0|0|0"},
        {"a stay code leaves its limited bytes for the next code", {Stay(1, 60), 0}, "50 60 60 60|.|.|."},
        {"the stay bit of a background run is ignored", {kStayingBackground}, "b|b|b|b"},
        {"a blended run mixes once, with its first pixel",
         {Stay(2, 255), BlendedRun(1, 128, 2), ColourRun(1, 255, 2)},
         "27 51 101 255|27 51 101 255|f|f"},
        {"on an empty pixel it is the colour with the level as alpha",
         {Stay(1, 0), BlendedRun(1, 100, 4)},
         "51 99 199 100|51 99 199 100|51 99 199 100|51 99 199 100"},
    };
    for (const DrawCase& row : kCases) {
        const Canvas canvas(4, 4, row.codes);
        EXPECT_EQ(canvas.Row(0), ".|.|.|.") << row.name << ": the first row is unchanged";
        EXPECT_EQ(canvas.Row(1), row.row) << row.name;
        EXPECT_EQ(canvas.Row(3), ".|.|.|.") << row.name << ": uncovered rows are unchanged";
    }
}

TEST(Draw, EndsAfter500ColourRunsOrLines) {
    RunCodes codes(500, Stay(2, 255));
    codes.push_back(ColourRun(1, 255, 1));
    EXPECT_EQ(Canvas(1, 2, codes).At(0, 1), "3 2 1 255") << "stay codes count, and the 501st isn't drawn";
    codes[0] = BackgroundRun(1);
    codes[1] = EndOfLine();  // sets the count back
    EXPECT_EQ(Canvas(1, 3, codes).At(0, 2), "f");
    RunCodes lines(500, EndOfLine());
    lines.push_back(ColourRun(1, 255, 1));
    EXPECT_EQ(Canvas(1, 502, lines).At(0, 501), ".");
    lines.erase(lines.begin());
    EXPECT_EQ(Canvas(1, 502, lines).At(0, 500), "f");
}

/// Codes of every kind, or words of random bits.
RunCodes AnyCodes(std::mt19937& random) {
    const auto any = [&random](unsigned below) { return static_cast<unsigned>(random() % below); };
    const bool words = any(3) == 0;
    RunCodes codes(any(600));
    for (std::uint32_t& code : codes) {
        const unsigned colour = any(4), level = any(256), count = any(12) + 1;
        const std::uint32_t kinds[] = {BackgroundRun(count), ColourRun(colour, level, count),  EndOfLine(),
                                       Stay(colour, level),  BlendedRun(colour, level, count), kStayingBackground,
                                       ColourRun(1, 255, 32)};
        code = words ? static_cast<std::uint32_t>(random()) : kinds[any(std::size(kinds))];
        if (any(200) == 0) code = files::EndOfGlyph();
    }
    if (any(4) == 0) codes.insert(codes.begin(), 496, Stay(1, 9));  // so that the line ends by its runs
    return codes;
}

TEST(AnyCodes, AreMeasuredAlikeAndDrawnInsideTheBufferAsIfItsFillExisted) {
    constexpr std::size_t kMargin = 256;
    constexpr std::uint8_t kByte = 0xC5;
    std::mt19937 random(20240229);
    for (int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(round);
        const int width = static_cast<int>(random() % 41), height = static_cast<int>(random() % 12);
        const files::Bytes bytes = files::RunCodeBytes(AnyCodes(random));
        const auto offset = static_cast<std::uint32_t>(random() % 8);
        for (const font::MeasurePath& path : font::MeasurePaths()) {
            ASSERT_EQ(path.measure(Reader(bytes, offset)), font::MeasurePaths().back().measure(Reader(bytes, offset)))
                << path.name;
        }
        const font::RunColour colours[] = {{}, {200, 100, 50}, {1, 2, 3}, {9, 9, 9}};
        const auto draw = [&](std::uint8_t before, std::optional<std::uint8_t> fill) {
            std::vector<std::uint8_t> memory(2 * kMargin + Canvas::Size(width, height), kByte);
            std::fill(memory.begin() + kMargin, memory.end() - kMargin, before);
            font::DrawRunCodes(Reader(bytes, offset), {colours, {7, 8, 9}},
                               {memory.data() + kMargin, width * 4, width, height, fill});
            return memory;
        };
        const std::vector<std::uint8_t> drawn = draw(kByte, std::nullopt);
        ASSERT_EQ(draw(0xEE, kByte), drawn);
        const auto blank = [](std::uint8_t byte) { return byte == kByte; };
        const std::size_t first_row = Canvas::Size(width, std::min(height, 1));
        ASSERT_TRUE(
            std::all_of(drawn.begin(), drawn.begin() + static_cast<std::ptrdiff_t>(kMargin + first_row), blank));
        ASSERT_TRUE(std::all_of(drawn.end() - kMargin, drawn.end(), blank));
    }
}

unsigned Cut(double value) {
    return static_cast<unsigned>(value + 0.5);
}

// What a blended run leaves of one pixel: the mix of its bytes, limited to the mixed alpha and divided by it.
std::array<unsigned, 4> Mixed(unsigned level, const std::array<unsigned, 3>& over, unsigned under, unsigned alpha) {
    const unsigned mixed_level = level + Cut((255 - level) / 255.0 * alpha);
    std::array<unsigned, 4> mixed{0, 0, 0, mixed_level};
    for (std::size_t i = 0; i < 3 && mixed_level != 0; ++i) {
        const unsigned byte = Cut((level * over[i] + (255 - level) * under) / 255.0);
        mixed[i] = Cut(std::min(byte, mixed_level) * 255.0 / mixed_level);
    }
    return mixed;
}

// Every level meets every byte of an existing pixel and every alpha. Of the run's colour a few bytes suffice: a mixed
// byte depends on the sum of the two products alone, and the product with the colour is the same as that with the
// existing byte at the opposite level. That every byte is divided well by every alpha is tested with stored pixels.
TEST(Mixing, IsTheFormulaInDoublesForEveryLevelPixelAndAlpha) {
    for (unsigned level = 0; level < 256; ++level) {
        const files::Bytes codes = files::RunCodeBytes(RunCodes(256, BlendedRun(1, level, 1)));
        for (const std::array<unsigned, 3>& over :
             {std::array{0U, 1U, 127U}, {128U, 254U, 255U}, {level, 255 - level, level ^ 0x55U}}) {
            const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(over[i]); };
            const font::RunColour colours[] = {{}, {byte(2), byte(1), byte(0)}};
            for (const char* alphas : {"opaque", "as the byte", "its inverse"}) {
                std::vector<std::uint8_t> pixels(Canvas::Size(256, 2)), wanted;
                for (unsigned p = 0; p < 256; ++p) {
                    const unsigned alpha = *alphas == 'o' ? 255 : *alphas == 'a' ? p : 255 - p;
                    std::fill_n(pixels.begin() + 1024 + 4 * p, 3, static_cast<std::uint8_t>(p));
                    pixels[1024 + 4 * p + 3] = static_cast<std::uint8_t>(alpha);
                    for (const unsigned part : Mixed(level, over, p, alpha))
                        wanted.push_back(static_cast<std::uint8_t>(part));
                }
                font::DrawRunCodes(Reader(codes), {colours, {}}, {pixels.data(), 1024, 256, 2});
                ASSERT_TRUE(std::equal(wanted.begin(), wanted.end(), pixels.begin() + 1024))
                    << level << ", colour " << over[0] << ' ' << over[1] << ' ' << over[2] << ", alpha " << alphas;
            }
        }
    }
}

}  // namespace

}  // namespace zel::test
