#include "host/export/option_table.h"

#include <algorithm>

namespace zel::exporter {

namespace {

/// Sets a member to the value that has the place of a name among the choices of its option.
template <auto member, auto... values>
std::string SetChoice(ExportOptions& options, std::string_view option, const std::string& name) {
    constexpr std::remove_cvref_t<decltype(options.*member)> kValues[] = {values...};
    const auto& choices = FindExportOption(option)->choices;
    const auto found = std::ranges::find(choices, name, &ExportOption::Choice::name);
    if (found == choices.end()) {
        std::string names;
        for (const auto& choice : choices) names.append(names.empty() ? "" : ", ").append(choice.name);
        return "\"" + name + "\" is none of " + names;
    }
    options.*member = kValues[found - choices.begin()];
    return {};
}

std::string SetFrame(ExportOptions& options, const std::string& text) {
    options.frame = ParseFrameSize(text);
    if (options.frame) return {};
    return "\"" + text + "\" is not a size such as 1920x1080, of 1 to " + std::to_string(kLargestFrame) + " pixels";
}

template <auto member, int least>
std::string SetDuration(ExportOptions& options, const std::string& text) {
    const std::optional<Duration> duration = ParseDuration(text);
    if (!duration || duration->count < least) {
        return "\"" + text + "\" is not a time such as 12 (frames), 0.5s or 400ms, of " +
               (least > 0 ? "a frame to " : "0 to ") + std::to_string(kLongestDuration) + " seconds";
    }
    options.*member = *duration;
    return {};
}

using picture::AspectChunk;

std::vector<ExportOption> MakeTable() {
    using enum OptionKind;
    const std::vector<ExportOption::Choice> fades = {
        {"0", "none"}, {"12", "12 frames"}, {"0.5s", "½ second"}, {"1s", "1 second"}};
    return {
        {.name = "premultiplied",
         .label = "Multiply colours by their alpha",
         .help = "premultiply colours by alpha, and fills by their key",
         .set =
             [](ExportOptions& options, const std::string&) {
                 options.premultiplied = true;
                 return std::string();
             }},
        {.name = "small",
         .label = "Smallest PNG files",
         .help = "write the smallest PNG files, at some tenths of a second each",
         .set =
             [](ExportOptions& options, const std::string&) {
                 options.effort = picture::PngEffort::kSmall;
                 return std::string();
             }},
        {.name = "frame",
         .kind = kText,
         .label = "Frame",
         .help = "place the picture in a frame of this size with square pixels, such as 1920x1080",
         .set = SetFrame,
         .choices = {{"", "as recorded"},
                     {"1920x1080", "1920x1080"},
                     {"1280x720", "1280x720"},
                     {"3840x2160", "3840x2160"},
                     {"1024x576", "1024x576"}},
         .value_name = "WxH"},
        {.name = "fit",
         .kind = kChoice,
         .label = "In the frame",
         .help =
             "in the frame, keep the picture's shape, stretch it to the whole frame, or leave its pixels as they are",
         .set =
             [](ExportOptions& options, const std::string& name) {
                 return SetChoice<&ExportOptions::fit, Fit::kPillar, Fit::kFill, Fit::kPixel>(options, "fit", name);
             },
         .choices = {{"pillar", "true shape"}, {"fill", "stretched to the frame"}, {"pixel", "pixel by pixel"}},
         .needs = "frame"},
        {.name = "pixel-shape",
         .kind = kChoice,
         .label = "Shape of pixels in PNG",
         .help = "store the shape of a pixel in PNG files as PNG defines it, as FFmpeg reads it (the other way round), "
                 "or not",
         .set =
             [](ExportOptions& options, const std::string& name) {
                 return SetChoice<&ExportOptions::aspect_chunk, AspectChunk::kPng, AspectChunk::kFfmpeg,
                                  AspectChunk::kNone>(options, "pixel-shape", name);
             },
         .choices = {{"png", "as PNG defines it"}, {"ffmpeg", "as FFmpeg reads it"}, {"none", "not stored"}}},
        {.name = "clear-colour",
         .kind = kChoice,
         .label = "Clear pixels beside glyphs",
         .help =
             "the colour of clear pixels beside a glyph: the glyph's prevents dark edges where a program scales the "
             "picture without regard to alpha",
         .set =
             [](ExportOptions& options, const std::string& name) {
                 return SetChoice<&ExportOptions::clear_colour, ClearColour::kBlack, ClearColour::kGlyph>(
                     options, "clear-colour", name);
             },
         .choices = {{"black", "black"}, {"glyph", "the glyph's colour"}},
         .excluded_by = "premultiplied",
         .exclusion = "clear pixels are black in premultiplied pictures"},
        {.name = "key-names",
         .kind = kChoice,
         .label = "Names of key and fill",
         .help = "name key and fill as CasparCG pairs them (NAME_A and NAME; NAME_fill beside a PNG), or NAME_key and "
                 "NAME_fill",
         .set =
             [](ExportOptions& options, const std::string& name) {
                 return SetChoice<&ExportOptions::key_names, KeyNames::kCaspar, KeyNames::kMixer>(options, "key-names",
                                                                                                  name);
             },
         .choices = {{"caspar", "as CasparCG pairs them"}, {"mixer", "NAME_key, NAME_fill"}}},
        {.name = "run-lengths",
         .label = "Compress TGA files by run lengths",
         .help = "compress TGA files by run lengths",
         .set =
             [](ExportOptions& options, const std::string&) {
                 options.run_lengths = true;
                 return std::string();
             }},
        {.name = "codec",
         .kind = kChoice,
         .label = "Codec of clips",
         .help = "store clips without loss (QuickTime Animation) or as ProRes 4444",
         .set =
             [](ExportOptions& options, const std::string& name) {
                 return SetChoice<&ExportOptions::codec, ClipCodec::kQtrle, ClipCodec::kProRes>(options, "codec", name);
             },
         .choices = {{"qtrle", "QuickTime Animation, lossless"}, {"prores", "ProRes 4444"}}},
        {.name = "fade-in",
         .kind = kText,
         .label = "Fade in",
         .help = "begin clear and fade in, in frames (12), seconds (0.5s) or milliseconds (400ms)",
         .set = SetDuration<&ExportOptions::fade_in, 0>,
         .choices = fades,
         .value_name = "TIME",
         .default_text = "0"},
        {.name = "hold",
         .kind = kText,
         .label = "Hold",
         .help = "show the whole picture for this time, between the fades",
         .set = SetDuration<&ExportOptions::hold, 1>,
         .choices = {{"1s", "1 second"}, {"5s", "5 seconds"}, {"10s", "10 seconds"}, {"60s", "1 minute"}},
         .value_name = "TIME",
         .default_text = "5s"},
        {.name = "fade-out",
         .kind = kText,
         .label = "Fade out",
         .help = "fade out at the end, to clear",
         .set = SetDuration<&ExportOptions::fade_out, 0>,
         .choices = fades,
         .value_name = "TIME",
         .default_text = "0"},
    };
}

}  // namespace

std::span<const ExportOption> ExportOptionTable() {
    static const std::vector<ExportOption> table = MakeTable();
    return table;
}

const ExportOption* FindExportOption(std::string_view name) {
    const std::span<const ExportOption> table = ExportOptionTable();
    const auto found = std::ranges::find(table, name, &ExportOption::name);
    return found != table.end() ? &*found : nullptr;
}

}  // namespace zel::exporter
