#include "host/export/export_options.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace zel::exporter {

namespace {

/// Digits alone, of a number up to a limit.
std::optional<int> ParseNumber(std::string_view text, int most) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || text.front() == '-' || number > most) return {};
    return number;
}

std::optional<int> ParseSide(std::string_view text) {
    const std::optional<int> side = ParseNumber(text, kLargestFrame);
    return side && *side > 0 ? side : std::nullopt;
}

/// Seconds with up to three decimals, in milliseconds.
std::optional<int> ParseSeconds(std::string_view text) {
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::optional<int> seconds = ParseNumber(text.substr(0, point), kLongestDuration);
    if (!seconds) return {};
    int milliseconds = 0;
    if (point < text.size()) {
        std::string decimals(text.substr(point + 1));
        if (decimals.empty() || decimals.size() > 3) return {};
        decimals.resize(3, '0');
        const std::optional<int> parsed = ParseNumber(decimals, 999);
        if (!parsed) return {};
        milliseconds = *parsed;
    }
    return *seconds * 1000 + milliseconds;
}

constexpr int kMostMilliseconds = kLongestDuration * 1000;
/// Of the faster standard.
constexpr int kMostFrames = kLongestDuration * 30;

}  // namespace

std::optional<FrameSize> ParseFrameSize(std::string_view text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos) return {};
    const std::optional<int> width = ParseSide(text.substr(0, cross)), height = ParseSide(text.substr(cross + 1));
    if (!width || !height) return {};
    return FrameSize{*width, *height};
}

std::optional<Duration> ParseDuration(std::string_view text) {
    std::optional<int> count;
    const bool is_milliseconds = text.ends_with("ms"), is_frames = !text.ends_with('s');
    if (is_milliseconds) {
        count = ParseNumber(text.substr(0, text.size() - 2), kMostMilliseconds);
    } else if (is_frames) {
        count = ParseNumber(text, kMostFrames);
    } else {
        count = ParseSeconds(text.substr(0, text.size() - 1));
    }
    if (!count || (!is_frames && *count > kMostMilliseconds)) return {};
    return Duration{*count, is_frames};
}

FrameRate FrameRateOf(VideoStandard standard) noexcept {
    return standard == VideoStandard::kPal ? FrameRate{25, 1} : FrameRate{30000, 1001};
}

int Duration::Frames(VideoStandard standard) const noexcept {
    if (is_frames || count == 0) return count;
    const FrameRate rate = FrameRateOf(standard);
    const std::int64_t divisor = std::int64_t{1000} * rate.seconds;
    return std::max(1, static_cast<int>((std::int64_t{count} * rate.frames + divisor / 2) / divisor));
}

int Duration::Milliseconds(VideoStandard standard) const noexcept {
    if (!is_frames) return count;
    const FrameRate rate = FrameRateOf(standard);
    return static_cast<int>((std::int64_t{count} * 1000 * rate.seconds + rate.frames / 2) / rate.frames);
}

const char* NameOf(ClipCodec codec) noexcept {
    return codec == ClipCodec::kProRes ? "prores" : "qtrle";
}

const char* NameOf(Fit fit) noexcept {
    constexpr const char* kNames[] = {"pillar", "fill", "pixel"};
    return kNames[static_cast<int>(fit)];
}

std::string TextOf(FrameSize size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

picture::PngForm PngFormOf(const ExportOptions& options, picture::PngChannels channels, bool square) {
    const bool is_square = square || options.frame.has_value();
    return {channels, is_square ? picture::PixelShape::kSquare : picture::PixelShape::kVideo, options.effort,
            options.aspect_chunk};
}

}  // namespace zel::exporter
