#include "host/export/clip_form.h"

#include <algorithm>

namespace zel::exporter {

namespace {

std::string RateOf(VideoStandard standard) {
    const FrameRate rate = FrameRateOf(standard);
    return std::to_string(rate.frames) + (rate.seconds == 1 ? "" : '/' + std::to_string(rate.seconds));
}

/// The first field is the upper one in PAL, the lower one in the 486 lines of NTSC. Pictures that were scaled have
/// none.
struct FieldOrder {
    /// For the filter setfield, and for the option field_order.
    const char *filter, *option;
};

FieldOrder FieldOrderOf(const ClipForm& form) {
    if (form.has_square_pixels) return {"prog", "progressive"};
    return form.standard == VideoStandard::kPal ? FieldOrder{"tff", "tt"} : FieldOrder{"bff", "bb"};
}

std::string FiltersOf(const ClipForm& form) {
    const PixelAspect aspect = form.has_square_pixels ? PixelAspect{} : PixelAspectOf(form.standard);
    std::string filters = "setsar=" + std::to_string(aspect.width) + '/' + std::to_string(aspect.height) +
                          ",setfield=" + FieldOrderOf(form).filter;
    if (form.codec != ClipCodec::kProRes) return filters;
    // Rec. 709 begins with 720 lines.
    return filters + ",scale=out_color_matrix=" + (form.height >= 720 ? "bt709" : "bt601") +
           ":out_range=tv:flags=accurate_rnd+full_chroma_int";
}

/// The arguments between input and output.
std::vector<std::string> Encoding(const ClipForm& form) {
    std::vector<std::string> arguments = {"-an", "-vf", FiltersOf(form), "-field_order", FieldOrderOf(form).option};
    const auto add = [&](std::initializer_list<const char*> more) {
        arguments.insert(arguments.end(), more.begin(), more.end());
    };
    if (form.codec == ClipCodec::kQtrle) {
        add({"-c:v", "qtrle", "-pix_fmt", "argb"});
    } else {
        // The matrix with the smallest steps.
        add({"-c:v", "prores_ks", "-profile:v", "4444", "-pix_fmt", "yuva444p10le", "-alpha_bits", "16", "-quant_mat",
             "default", "-vendor", "apl0"});
        const bool is_hd = form.height >= 720, is_pal = form.standard == VideoStandard::kPal;
        add({"-colorspace",
             is_hd    ? "bt709"
             : is_pal ? "bt470bg"
                      : "smpte170m",
             "-color_primaries",
             is_hd    ? "bt709"
             : is_pal ? "bt470bg"
                      : "smpte170m",
             "-color_trc", "bt709"});
    }
    // The same frames make the same file. One thread is enough where several messages are made at once.
    add({"-threads", "1", "-map_metadata", "-1", "-fflags", "+bitexact", "-flags:v"});
    const bool in_fields = form.codec == ClipCodec::kProRes && !form.has_square_pixels;
    add({in_fields ? "+bitexact+ildct" : "+bitexact"});
    return arguments;
}

/// A word for a shell, in single quotes unless it is plain.
std::string ShellWord(const std::string& word) {
    const bool is_plain = !word.empty() && std::ranges::all_of(word, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("-_./:=,+%").find(c) != std::string_view::npos;
    });
    if (is_plain) return word;
    std::string quoted = "'";
    for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

/// A name in a pattern of numbered files.
std::string WithPercents(const std::string& name) {
    std::string pattern;
    for (const char c : name) pattern += c == '%' ? std::string("%%") : std::string(1, c);
    return pattern;
}

}  // namespace

ClipTiming TimingOf(const ExportOptions& options, VideoStandard standard) noexcept {
    return {options.fade_in.Frames(standard), options.hold.Frames(standard), options.fade_out.Frames(standard)};
}

ClipTiming::Level ClipTiming::LevelOf(int frame) const noexcept {
    if (frame < fade_in) return {frame, fade_in};
    const int after = frame - fade_in - hold;
    return after < 0 ? Level{1, 1} : Level{fade_out - 1 - after, fade_out};
}

void FadeInto(const picture::Picture& picture, ClipTiming::Level level, bool premultiplied,
              std::vector<std::uint8_t>& frame) {
    for (std::size_t n = 0; n < picture.rgba.size(); n += 4) {
        const int alpha = (picture.rgba[n + 3] * level.level * 2 + level.of) / (level.of * 2);
        for (std::size_t colour = n; colour < n + 3; ++colour) {
            frame[colour] = premultiplied ? static_cast<std::uint8_t>((picture.rgba[colour] * alpha + 127) / 255)
                                          : picture.rgba[colour];
        }
        frame[n + 3] = static_cast<std::uint8_t>(alpha);
    }
}

std::vector<std::string> ClipArguments(const ClipForm& form, int output) {
    std::vector<std::string> arguments = {
        "-hide_banner", "-nostdin",
        "-loglevel",    "error",
        "-f",           "rawvideo",
        "-pix_fmt",     "rgba",
        "-video_size",  std::to_string(form.width) + 'x' + std::to_string(form.height),
        "-framerate",   RateOf(form.standard),
        "-i",           "pipe:0"};
    for (std::string& argument : Encoding(form)) arguments.push_back(std::move(argument));
    for (const char* const argument : {"-f", "mov", "-y"}) arguments.emplace_back(argument);
    arguments.push_back("file:/dev/fd/" + std::to_string(output));
    return arguments;
}

std::string ClipCommand(const ClipForm& form, int frames, const std::string& pictures, const std::string& clip) {
    std::vector<std::string> words = {"ffmpeg",
                                      "-framerate",
                                      RateOf(form.standard),
                                      "-start_number",
                                      "1",
                                      "-i",
                                      "file:" + WithPercents(pictures) + "/%05d.png",
                                      "-frames:v",
                                      std::to_string(frames)};
    for (std::string& argument : Encoding(form)) words.push_back(std::move(argument));
    words.push_back("file:" + clip);
    std::string line;
    for (const std::string& word : words) line += (line.empty() ? "" : " ") + ShellWord(word);
    return line;
}

}  // namespace zel::exporter
