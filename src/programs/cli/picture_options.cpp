#include "programs/cli/picture_options.h"

#include <algorithm>

#include "host/export/export_formats.h"
#include "programs/cli/choice_option.h"
#include "programs/cli/options.h"
#include "programs/cli/run_options.h"

namespace zel::cli {

namespace {

constexpr const char* kPictureOptions[] = {"premultiplied", "small",        "frame",     "fit",
                                           "pixel-shape",   "clear-colour", "key-names", "run-lengths"};

void AddFrame(CLI::App& command, exporter::ExportOptions& options) {
    command
        .add_option_function<std::string>(
            "--frame", [&options](const std::string& size) { options.frame = exporter::ParseFrameSize(size); },
            "place the picture in a frame of this size with square pixels, such as 1920x1080")
        ->type_name("WxH")
        ->check(
            [](const std::string& size) {
                if (exporter::ParseFrameSize(size)) return std::string();
                return "\"" + size + "\" is not a size such as 1920x1080, of 1 to " +
                       std::to_string(exporter::kLargestFrame) + " pixels";
            },
            "");
    using exporter::Fit;
    AddChoice(
        command, "--fit", options.fit,
        {{NameOf(Fit::kPillar), Fit::kPillar}, {NameOf(Fit::kFill), Fit::kFill}, {NameOf(Fit::kPixel), Fit::kPixel}},
        "in the frame, keep the picture's shape, stretch it to the whole frame, or leave its pixels as they are");
}

}  // namespace

std::string CheckFormat(const std::string& name) {
    if (exporter::FindExportFormat(name) != nullptr) return {};
    return "\"" + name + "\" is not a format; see \"zeltrans export --list-formats\"";
}

void AddPictureOptions(CLI::App& command, exporter::ExportOptions& options) {
    command.add_flag("--premultiplied", options.premultiplied, "premultiply colours by alpha, and fills by their key");
    AddSmall(command, options.effort);
    AddFrame(command, options);
    using picture::AspectChunk;
    AddChoice(command, "--pixel-shape", options.aspect_chunk,
              {{"png", AspectChunk::kPng}, {"ffmpeg", AspectChunk::kFfmpeg}, {"none", AspectChunk::kNone}},
              "store the shape of a pixel in PNG files as PNG defines it, as FFmpeg reads it (the other way round), or "
              "not");
    using exporter::ClearColour;
    AddChoice(command, "--clear-colour", options.clear_colour,
              {{"black", ClearColour::kBlack}, {"glyph", ClearColour::kGlyph}},
              "the colour of clear pixels beside a glyph: the glyph's prevents dark edges where a program scales the "
              "picture without regard to alpha");
    using exporter::KeyNames;
    AddChoice(command, "--key-names", options.key_names, {{"caspar", KeyNames::kCaspar}, {"mixer", KeyNames::kMixer}},
              "name key and fill as CasparCG pairs them (NAME_A and NAME; NAME_fill beside a PNG), or NAME_key and "
              "NAME_fill");
    command.add_flag("--run-lengths", options.run_lengths, "compress TGA files by run lengths");
}

void RequirePictureOptions(const CLI::App& command, const std::vector<std::string>& formats) {
    for (const std::string option : kPictureOptions) {
        const bool applies = std::ranges::any_of(
            formats, [&](const std::string& name) { return exporter::FindExportFormat(name)->Takes(option); });
        Require(command, "--" + option, applies, "--format " + exporter::FormatsWith(option));
    }
    Require(command, "--fit", command.count("--frame") > 0, "--frame");
    if (command.count("--clear-colour") > 0 && command.count("--premultiplied") > 0)
        throw CLI::ValidationError("--clear-colour", "clear pixels are black in premultiplied pictures");
}

}  // namespace zel::cli
