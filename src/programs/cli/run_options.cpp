#include "programs/cli/run_options.h"

#include "programs/cli/choice_option.h"
#include "programs/cli/options.h"

namespace zel::cli {

void AddMaps(CLI::App& command, std::optional<std::string>& directory) {
    AddPath(command, "--maps", directory, "DIR", "the directory of the two name lists [none]");
}

void AddFontPrompt(CLI::App& command, host::BoxAnswer& answer, std::optional<std::string>& browse) {
    using enum host::BoxAnswer;
    AddChoice<host::BoxAnswer>(command, "--answer", answer, {{"yes", kYes}, {"no", kNo}, {"cancel", kCancel}},
                               "answer to the prompt to browse for a missing font");
    AddPath(command, "--browse", browse, "FILE",
            "the file chosen in the file dialog for a missing font [the dialog is cancelled]");
}

void AddHostOptions(CLI::App& command, host::HostOptions& options, run::RgbaAnswer& rgba) {
    using enum run::RgbaAnswer;
    AddChoice<run::RgbaAnswer>(command, "--rgba", rgba,
                               {{"object", kObject}, {"background", kBackground}, {"cancel", kCancel}},
                               "how an RGBA picture is inserted");
    std::vector<std::pair<std::string, VideoStandard>> standards;
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal})
        standards.emplace_back(std::to_string(ActiveLines(standard)), standard);
    AddChoice<VideoStandard>(command, "--lines", options.standard, standards,
                             "active lines of the host's video standard");
    command.add_flag("--tt-convert", options.tt_convert, "send run-coded characters as text in an installed typeface");
    command.add_flag_callback(
        "--no-baseline-align", [&options] { options.baseline_align = false; },
        "give text the vertical shift of its bitmap");
}

void AddSettings(CLI::App& command, std::optional<std::string>& directory) {
    AddPath(command, "--settings", directory, "DIR",
            "the directory of the stored settings [zeltrans in the user's configuration directory]");
}

void AddTrace(CLI::App& command, std::optional<std::string>& path) {
    AddPath(command, "--trace", path, "FILE|-",
            "write every event that the host receives, one JSON object per line; - is standard output");
}

void AddTracePixels(CLI::App& command, host::TracePixels& pixels) {
    command.add_flag_callback(
        "--pixels", [&pixels] { pixels = host::TracePixels::kYes; },
        "with --trace: size and checksum of each character's pixels");
}

}  // namespace zel::cli
