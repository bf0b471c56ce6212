#include "files/run_codes.h"

#include <utility>

#include <gtest/gtest.h>

#include "module/font/format/draw_run_codes.h"

namespace zel::files {
namespace {

TEST(RunCode, HasItsFieldsInPlaceAndTruncatesThem) {
    EXPECT_EQ(RunCodeBytes(std::array{RunCode(RunOperation::kBlended, 0xAB, 0xCD, 1, true), BackgroundRun(32),
                                      ColourRun(0x102, 0x180, 31), EndOfLine(), EndOfGlyph()}),
              (Bytes{0x80, 0xAB, 0xCD, 0xFA, 0, 3, 0, 0, 0, 2, 0x80, 9, 0, 0, 0, 3, 0, 0, 0, 0}));
}

/// Every pair of levels that the encoder distinguishes, in an order that gives short and long runs.
std::pair<Coverage, Coverage> FaceAndEdgeOfManyLevels() {
    Coverage face{100, 20, Bytes(2000)}, edge{100, 20, Bytes(2000)};
    for (unsigned y = 0; y < face.height; ++y) {
        for (unsigned x = 0; x < face.width; ++x) {
            const unsigned run = x / (1 + y * 3);
            face.At(x, y) = std::array<std::uint8_t, 6>{0, 255, 0, 128, 1, 254}[(run + y) % 6];
            edge.At(x, y) = std::array<std::uint8_t, 5>{0, 255, 90, 255, 3}[(run * 2 + y) % 5];
        }
    }
    return {face, edge};
}

/// The pixels of a glyph as the reader draws it: blue, green, red, alpha. The face is (200, 100, 30), the edge
/// (20, 60, 140).
Bytes Drawn(const RunCodes& codes, const Coverage& size) {
    const std::size_t row = std::size_t{4} * size.width;
    Bytes pixels((size.height + 2) * row);
    const Bytes bytes = RunCodeBytes(codes);
    const font::RunColour colours[] = {{}, {200, 100, 30}, {20, 60, 140}};
    font::DrawRunCodes({bytes, 0}, {colours, {}},
                       {pixels.data(), static_cast<std::ptrdiff_t>(row), static_cast<int>(size.width),
                        static_cast<int>(size.height) + 2});
    pixels.erase(pixels.begin(), pixels.begin() + static_cast<std::ptrdiff_t>(row));  // the blank first row
    return pixels;
}

// The fuzz target of run codes draws a face without an edge.
TEST(EncodedGlyph, IsDrawnAsTheFaceOverItsEdge) {
    const auto [face, edge] = FaceAndEdgeOfManyLevels();
    const Bytes drawn = Drawn(EncodeFaceAndEdge(face, edge), face);
    for (std::size_t n = 0; n < face.alpha.size(); ++n) {
        SCOPED_TRACE(n);
        const double f = face.alpha[n] / 255.0, e = edge.alpha[n] / 255.0, alpha = f + (1 - f) * e;
        ASSERT_NEAR(drawn[4 * n + 3], alpha * 255, 1);
        if (alpha >= 0.25) {  // a low level leaves few steps of a colour
            ASSERT_NEAR(drawn[4 * n + 2], (f * 200 + (1 - f) * e * 20) / alpha, 4);
            ASSERT_NEAR(drawn[4 * n], (f * 30 + (1 - f) * e * 140) / alpha, 4);
        }
    }
}

TEST(EncodedGlyph, LeavesOutBlanksAtALinesEndAndSplitsLongRuns) {
    EXPECT_EQ(EncodeFace({4, 2, {0, 255, 0, 0, 0, 0, 0, 0}}),
              (RunCodes{BackgroundRun(1), ColourRun(1, 255, 1), EndOfLine(), EndOfLine(), EndOfGlyph()}));
    EXPECT_EQ(EncodeFace({65, 1, Bytes(65, 255)}), (RunCodes{ColourRun(1, 255, 32), ColourRun(1, 255, 32),
                                                             ColourRun(1, 255, 1), EndOfLine(), EndOfGlyph()}));
}

}  // namespace
}  // namespace zel::files
