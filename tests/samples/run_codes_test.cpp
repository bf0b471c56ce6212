#include "samples/run_codes.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

#include "samples/bytes_matcher.h"
#include "samples/run_decoder.h"

namespace zel::samples {
namespace {

using samples_test::Drawn;
using samples_test::Hex;
using samples_test::Rgb;
using samples_test::RunDecoder;

constexpr std::array<Rgb, 4> kColours{{{}, {200, 100, 30}, {20, 60, 140}, {}}};

TEST(RunCode, HasItsFieldsInPlace) {
    EXPECT_EQ(RunCodeBytes(std::array{RunCode(RunOperation::kBlended, 0xAB, 0xCD, 1, true), BackgroundRun(32),
                                      ColourRun(2, 128, 31), EndOfLine(), EndOfGlyph()}),
              Hex("80ABCDFA 00030000 00028009 00000003 00000000"));
}

TEST(RunCode, CutsFieldsThatAreTooWide) {
    EXPECT_EQ(ColourRun(0x101, 0x102, 33), ColourRun(1, 2, 1));
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

TEST(EncodedFace, ComesOutWithItsOwnColourAndCoverage) {
    const auto [face, edge] = FaceAndEdgeOfManyLevels();
    const RunDecoder drawn(EncodeFace(face), kColours);
    ASSERT_EQ(drawn.Lines().size(), face.height);
    for (unsigned y = 0; y < face.height; ++y) {
        for (unsigned x = 0; x < face.width; ++x) {
            const Drawn pixel = drawn.At(x, y);
            ASSERT_EQ(pixel.alpha, face.At(x, y)) << x << ", " << y;
            // A level of few steps leaves a colour as few.
            if (pixel.alpha < 64) continue;
            ASSERT_NEAR(pixel.red, 200, 2);
            ASSERT_NEAR(pixel.green, 100, 2);
            ASSERT_NEAR(pixel.blue, 30, 2);
        }
    }
}

TEST(EncodedFaceOverEdge, ComesOutAsTheFaceLaidOnTheEdge) {
    const auto [face, edge] = FaceAndEdgeOfManyLevels();
    const RunDecoder drawn(EncodeFaceAndEdge(face, edge), kColours);
    for (unsigned y = 0; y < face.height; ++y) {
        for (unsigned x = 0; x < face.width; ++x) {
            const double f = face.At(x, y) / 255.0, e = edge.At(x, y) / 255.0;
            const double alpha = f + (1 - f) * e;
            const Drawn pixel = drawn.At(x, y);
            ASSERT_NEAR(pixel.alpha, alpha * 255, 1) << x << ", " << y;
            if (alpha < 0.25) continue;
            ASSERT_NEAR(pixel.red, (f * 200 + (1 - f) * e * 20) / alpha, 4) << x << ", " << y;
            ASSERT_NEAR(pixel.blue, (f * 30 + (1 - f) * e * 140) / alpha, 4) << x << ", " << y;
        }
    }
}

TEST(EncodedFace, LeavesOutBlanksAtTheEndOfALine) {
    EXPECT_EQ(EncodeFace({4, 2, {0, 255, 0, 0, 0, 0, 0, 0}}),
              (RunCodes{BackgroundRun(1), ColourRun(1, 255, 1), EndOfLine(), EndOfLine(), EndOfGlyph()}));
}

TEST(EncodedFace, SplitsRunsAtThirtyTwo) {
    EXPECT_EQ(EncodeFace({65, 1, Bytes(65, 255)}), (RunCodes{ColourRun(1, 255, 32), ColourRun(1, 255, 32),
                                                             ColourRun(1, 255, 1), EndOfLine(), EndOfGlyph()}));
}

TEST(EncodedFaceOverEdge, LaysTheEdgeDownInPlaceBelowAPartialFace) {
    EXPECT_EQ(EncodeFaceAndEdge({2, 1, {100, 100}}, {2, 1, {255, 40}}),
              (RunCodes{Stay(2, 255), BlendedRun(1, 100, 1), BlendedStay(2, 40), BlendedRun(1, 100, 1), EndOfLine(),
                        EndOfGlyph()}));
}

TEST(EncodedFaceOverEdge, RefusesTwoSizes) {
    EXPECT_THROW(EncodeFaceAndEdge({2, 1, Bytes(2)}, {1, 2, Bytes(2)}), std::invalid_argument);
}

}  // namespace
}  // namespace zel::samples
