#include "programs/cli/arguments.h"

#include <algorithm>
#include <cstdio>

namespace zel::cli {

void SayError(const std::string& text) {
    std::fprintf(stderr, "zeltrans: %s\n", text.c_str());
}

void SayNote(const std::string& text) {
    std::fprintf(stderr, "note: %s\n", text.c_str());
}

std::string ShellWord(const std::string& path) {
    const auto plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("/._-+,:@%").find(c) != std::string_view::npos;
    };
    if (!path.empty() && std::ranges::all_of(path, plain)) return path;
    std::string word = "'";
    for (const char c : path) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

std::string NotEmpty(const std::string& path) {
    return path.empty() ? "the path is empty" : std::string();
}

void AddPath(CLI::App& command, const std::string& name, std::optional<std::string>& path, const std::string& type,
             const std::string& description) {
    command.add_option(name, path, description)->type_name(type)->check(NotEmpty, "");
}

void AddMaps(CLI::App& command, std::optional<std::string>& directory) {
    AddPath(command, "--maps", directory, "DIR", "the directory of the two name lists [none]");
}

void AddFontPrompt(CLI::App& command, host::BoxAnswer& answer, std::optional<std::string>& browse) {
    AddChoice<host::BoxAnswer>(
        command, "--answer", answer,
        {{"yes", host::BoxAnswer::kYes}, {"no", host::BoxAnswer::kNo}, {"cancel", host::BoxAnswer::kCancel}},
        "answer of the prompt to browse for a missing font");
    AddPath(command, "--browse", browse, "FILE", "the file that the file dialog for a missing font gives [cancelled]");
}

void AddHostOptions(CLI::App& command, host::HostOptions& options, run::RgbaAnswer& rgba) {
    AddChoice<run::RgbaAnswer>(command, "--rgba", rgba,
                               {{"object", run::RgbaAnswer::kObject},
                                {"background", run::RgbaAnswer::kBackground},
                                {"cancel", run::RgbaAnswer::kCancel}},
                               "how an RGBA picture is inserted");
    AddChoice<VideoStandard>(command, "--lines", options.standard,
                             {{std::to_string(ActiveLines(VideoStandard::kNtsc)), VideoStandard::kNtsc},
                              {std::to_string(ActiveLines(VideoStandard::kPal)), VideoStandard::kPal}},
                             "active lines of the host's video standard");
    command.add_flag("--tt-convert", options.tt_convert, "send run-coded characters as text in an installed typeface");
    command.add_flag_callback(
        "--no-baseline-align", [&options] { options.baseline_align = false; },
        "give text the vertical shift of its bitmap");
}

void AddSettings(CLI::App& command, std::optional<std::string>& directory) {
    AddPath(command, "--settings", directory, "DIR",
            "where the stored settings live [zeltrans in the user's configuration directory]");
}

void AddExample(CLI::App& command, const std::string& example) {
    command.footer("Example:\n  " + example);
}

}  // namespace zel::cli
