#include "programs/cli/run_options.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <thread>

#include "host/native_path.h"
#include "host/run/file_error.h"
#include "platform/system/files.h"
#include "programs/cli/choice_option.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/options.h"

namespace zel::cli {

namespace {

constexpr int kMaxJobs = 256;

}  // namespace

CLI::Option& AddNumbers(CLI::App& command, std::vector<std::string>& words, const std::string& all) {
    return *command
                .add_option("NUMBERS", words,
                            "the message numbers: a list such as 12 or 1,3,7-9, or FIRST LAST [" + all + "]")
                ->expected(0, 2)
                ->type_name("");
}

void ParseNumbers(const std::vector<std::string>& words, NumberSelection& numbers) {
    try {
        numbers = NumberSelection::Parse(words);
    } catch (const InvalidNumbers& error) {
        throw CLI::ValidationError("NUMBERS", error.what());
    }
}

void AddJobs(CLI::App& command, int& jobs, const std::string& what) {
    AddInteger(command, "--jobs", jobs, kMaxJobs, "N",
               "number of " + what + ", 1 to " + std::to_string(kMaxJobs) + " [one per processor core]");
}

int DefaultJobs() {
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, static_cast<unsigned>(kMaxJobs)));
}

void AddSmall(CLI::App& command, picture::PngEffort& effort) {
    command.add_flag_callback(
        "--small", [&effort] { effort = picture::PngEffort::kSmall; },
        "write the smallest PNG files, at some tenths of a second each");
}

void AddMaps(CLI::App& command, std::optional<std::string>& directory) {
    AddPath(command, "--maps", directory, "DIR",
            "the directory of the name lists typeface_list.txt and bitstream_fontlist.txt [none]");
}

void PrintDirectoryNotes(const std::optional<std::string>& maps, const std::optional<std::string>& fonts) {
    const auto native = [](const std::string& path) {
        return system::NativePath(system::ModulePath(host::AbsolutePath(path)).c_str());
    };
    if (maps) {
        const std::string error = run::DirectoryError(native(*maps));
        if (!error.empty()) PrintWarning("--maps " + *maps + " " + error + "; no name lists are read");
    }
    std::error_code ignored;
    if (fonts && std::filesystem::is_regular_file(native(*fonts), ignored))
        PrintWarning("--fonts " + *fonts + " is not a directory; no fonts are found in it");
}

void AddFontPrompt(CLI::App& command, host::BoxAnswer& answer, std::optional<std::string>& browse) {
    using enum host::BoxAnswer;
    AddChoice<host::BoxAnswer>(command, "--answer", answer, {{"yes", kYes}, {"no", kNo}, {"cancel", kCancel}},
                               "the answer when a font is missing and the module offers to browse for it");
    AddPath(command, "--browse", browse, "FILE",
            "the font file chosen when the module browses for a missing font [the file dialog is cancelled]");
}

void RequireFontPrompt(const CLI::App& command, bool warnings, host::BoxAnswer answer) {
    Require(command, "--answer", warnings, "--warnings");
    Require(command, "--browse", answer == host::BoxAnswer::kYes, "--answer yes");
}

void AddHostOptions(CLI::App& command, host::HostOptions& options, run::RgbaAnswer& rgba) {
    using enum run::RgbaAnswer;
    AddChoice<run::RgbaAnswer>(command, "--rgba", rgba,
                               {{"object", kObject}, {"background", kBackground}, {"cancel", kCancel}},
                               "how an RGBA picture is inserted; with cancel it is not inserted");
    std::vector<std::pair<std::string, VideoStandard>> standards;
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal})
        standards.emplace_back(std::to_string(ActiveLines(standard)), standard);
    AddChoice<VideoStandard>(command, "--lines", options.standard, standards,
                             "active lines of the host's video standard: 486 for NTSC, 576 for PAL");
    AddTextOptions(command, options);
}

void AddTextOptions(CLI::App& command, host::HostOptions& options) {
    command.add_flag("--tt-convert", options.tt_convert,
                     "send run-coded characters as text in an installed typeface instead of as bitmaps");
    command.add_flag_callback(
        "--no-baseline-align", [&options] { options.baseline_align = false; },
        "give text the vertical shift of its bitmap");
}

void AddSettings(CLI::App& command, std::optional<std::string>& directory) {
    AddPath(command, "--settings", directory, "DIR",
            "the directory of the stored settings [$XDG_CONFIG_HOME/zeltrans or ~/.config/zeltrans]");
}

void AddTrace(CLI::App& command, std::optional<std::string>& path) {
    AddPath(command, "--trace", path, "FILE|-",
            "write each event that the host receives as a JSON object in one line; - is standard output");
}

void AddTracePixels(CLI::App& command, host::TracePixels& pixels) {
    command.add_flag_callback(
        "--pixels", [&pixels] { pixels = host::TracePixels::kYes; },
        "with --trace: add the size and checksum of each character's pixels");
}

}  // namespace zel::cli
