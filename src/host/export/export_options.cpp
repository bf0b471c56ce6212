#include "host/export/export_options.h"

#include <charconv>

namespace zel::exporter {

namespace {

std::optional<int> ParseSide(std::string_view text) {
    int side = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
    if (error != std::errc() || end != text.data() + text.size() || side < 1 || side > kLargestFrame) return {};
    return side;
}

}  // namespace

std::optional<FrameSize> ParseFrameSize(std::string_view text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos) return {};
    const std::optional<int> width = ParseSide(text.substr(0, cross)), height = ParseSide(text.substr(cross + 1));
    if (!width || !height) return {};
    return FrameSize{*width, *height};
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
