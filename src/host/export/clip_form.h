#pragma once

#include <string>
#include <vector>

#include "host/export/export_options.h"
#include "host/picture/picture.h"

namespace zel::exporter {

/// How the frames of a clip fade, in frames.
struct ClipTiming {
    int fade_in = 0, hold = 1, fade_out = 0;

    int Frames() const noexcept { return fade_in + hold + fade_out; }

    /// The part of the picture's alpha that a frame has: `level` of `of`. A fade begins or ends with a clear frame.
    struct Level {
        int level = 1, of = 1;
        friend constexpr bool operator==(const Level&, const Level&) = default;
    };
    /// @param frame  from 0.
    Level LevelOf(int frame) const noexcept;
};

ClipTiming TimingOf(const ExportOptions& options, VideoStandard standard) noexcept;

/// The pixels of a frame, red, green, blue and alpha: the picture with its alpha at a level, rounded to the nearest.
/// Premultiplied colours are multiplied by that alpha, from the straight ones.
/// @param frame  as large as the picture's pixels.
void FadeInto(const picture::Picture& picture, ClipTiming::Level level, bool premultiplied,
              std::vector<std::uint8_t>& frame);

/// A clip as ffmpeg has to know it.
struct ClipForm {
    /// In pixels.
    int width = 0, height = 0;
    /// The frame rate, and without a frame with square pixels the order of fields and the shape of a pixel.
    VideoStandard standard = VideoStandard::kNtsc;
    bool has_square_pixels = false;
    ClipCodec codec = ClipCodec::kQtrle;
};

/// ffmpeg's arguments for reading raw frames from standard input and writing a clip to an open file.
/// @param output  the file's descriptor in ffmpeg.
std::vector<std::string> ClipArguments(const ClipForm& form, int output);

/// The command line that makes a clip from numbered PNG files, for a shell.
/// @param pictures  their folder. @param first_name  such as "%05d.png".
/// @param clip      the file to make.
std::string ClipCommand(const ClipForm& form, int frames, const std::string& pictures, const std::string& clip);

}  // namespace zel::exporter
