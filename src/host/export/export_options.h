#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/picture/png_writer.h"
#include "module/contract/records/video_standard.h"

namespace zel::exporter {

/// A frame with square pixels, of a size in pixels.
struct FrameSize {
    int width = 0;
    int height = 0;

    friend constexpr bool operator==(const FrameSize&, const FrameSize&) = default;
};

/// How a message's picture is placed in a frame.
enum class Fit {
    /// As large as the frame allows in its true shape, with clear borders at two sides.
    kPillar,
    /// Stretched to the whole frame.
    kFill,
    /// A pixel of the frame for a pixel of the picture, in the centre. The shape of the pixels is not kept.
    kPixel,
};

/// The colour of fully clear pixels beside a glyph. A program that scales a picture without weighing by alpha mixes it
/// into the glyph's edge.
enum class ClearColour {
    /// As in the picture, which is black.
    kBlack,
    /// That of the glyph.
    kGlyph,
};

/// Names of the two files of the format key-fill.
enum class KeyNames {
    /// NAME.png and NAME_A.png, which CasparCG pairs; NAME_fill.png and NAME_fill_A.png beside the format png.
    kCaspar,
    /// NAME_fill.png and NAME_key.png.
    kMixer,
};

/// How the pictures of a clip are stored.
enum class ClipCodec {
    /// QuickTime Animation, 32 bits, without loss.
    kQtrle,
    /// ProRes 4444 with 16 bits of alpha.
    kProRes,
};

/// As a user writes it: "pillar", "fill" or "pixel"; "qtrle" or "prores".
const char* NameOf(Fit fit) noexcept;
const char* NameOf(ClipCodec codec) noexcept;

/// The length of a fade or of a still.
struct Duration {
    /// Frames or milliseconds.
    int count = 0;
    bool is_frames = true;

    /// Frames of the video standard, to the nearest; at least 1 for any time but 0.
    int Frames(VideoStandard standard) const noexcept;
    int Milliseconds(VideoStandard standard) const noexcept;

    friend constexpr bool operator==(const Duration&, const Duration&) = default;
};

/// Frames of a second: 30000/1001 or 25/1.
struct FrameRate {
    int frames = 0;
    int seconds = 1;
};
FrameRate FrameRateOf(VideoStandard standard) noexcept;

struct ExportOptions {
    /// Colours multiplied by their alpha, in PNG, square-pixel PNG and TGA, and in the fill of key-fill.
    bool premultiplied = false;
    /// Of all files that are PNG pictures.
    picture::PngEffort effort = picture::PngEffort::kFast;
    /// The frame of PNG, key-fill and TGA; without a value that of the message's video standard.
    std::optional<FrameSize> frame{};
    Fit fit = Fit::kPillar;
    /// In PNG files.
    picture::AspectChunk aspect_chunk = picture::AspectChunk::kPng;
    ClearColour clear_colour = ClearColour::kBlack;
    KeyNames key_names = KeyNames::kCaspar;
    /// The name of a fill differs from that of a PNG, so that one directory has both.
    bool fill_beside_png = false;
    /// The name of a template differs from that of a page of the format html.
    bool template_beside_html = false;
    /// The directory of the export is a BagIt bag.
    bool bag = false;
    /// TGA files are compressed by run lengths.
    bool run_lengths = false;
    ClipCodec codec = ClipCodec::kQtrle;
    /// Of a clip: from clear to the picture, the picture alone, and back.
    Duration fade_in{}, hold{5000, false}, fade_out{};
};

/// A frame's size written as 1920x1080; empty for another text, or a size that isn't 1 to kLargestFrame.
std::optional<FrameSize> ParseFrameSize(std::string_view text);
std::string TextOf(FrameSize size);

/// A time of up to ten minutes, written as frames (12), seconds (0.5s, 5s) or milliseconds (400ms); empty for another
/// text.
std::optional<Duration> ParseDuration(std::string_view text);

/// Seconds of the longest time.
inline constexpr int kLongestDuration = 600;

/// Pixels of the longest side of a frame.
inline constexpr int kLargestFrame = 8192;

/// The form of a PNG with these options. @param square  the picture has square pixels without a frame, too.
picture::PngForm PngFormOf(const ExportOptions& options, picture::PngChannels channels, bool square = false);

}  // namespace zel::exporter
