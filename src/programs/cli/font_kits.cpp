#include "programs/cli/font_kits.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <CLI/App.hpp>

#include "base/fold_case.h"
#include "base/regular_file.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "programs/cli/choice_option.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/options.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

/// A message is read up to this size; its palette is at the beginning, behind the rows.
constexpr std::size_t kLargestMessage = std::size_t{80} << 20;

bool IsDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

fontkit::ColourSets SetsFor(const std::optional<std::string>& message) {
    if (!message) return fontkit::DefaultColourSets();
    try {
        return fontkit::ColourSetsOfMessage(base::ReadFileBytes(*message, kLargestMessage));
    } catch (const std::runtime_error& error) {
        throw CommandError(*message + ": " + error.what());
    }
}

void CheckNew(const fontkit::FontKit& kit, const fs::path& directory) {
    for (const std::string& name : kit.FileNames()) {
        const fs::path path = directory / name;
        std::error_code error;
        if (fs::exists(fs::symlink_status(path, error)))
            throw CommandError(path.string() + ": exists already; --overwrite replaces it");
    }
}

/// The directory MACHINE in a disk, whatever its case; empty without one.
fs::path MachineIn(const fs::path& disk, std::error_code& error) {
    for (const fs::directory_entry& entry : fs::directory_iterator(disk, error)) {
        std::error_code ignored;
        if (base::EqualsFolded(entry.path().filename().string(), "MACHINE") && entry.is_directory(ignored))
            return entry.path();
    }
    return {};
}

}  // namespace

void AddFontKit(CLI::App& command, FontKitArguments& arguments) {
    using Aspect = std::pair<std::string, PixelAspect>;
    AddDirectory(command, "--kit", arguments.directory,
                 "write the font for other programs: pages in each colour set with BMFont descriptions, planes with "
                 "metrics, and single glyphs; of a disk each font in a directory of its own");
    command.add_flag("--otf", arguments.options.true_type,
                     "add to the kit two fonts that can be installed: outlines with colour layers, and exact pixels");
    std::vector<std::pair<std::string, unsigned>> sets;
    for (unsigned set = 0; set < unsigned{kColourSets}; ++set) sets.emplace_back(std::to_string(set), set);
    AddChoice(command, "--colour-set", arguments.options.set, sets,
              "the colour set of the single glyphs and of the exact pixels");
    AddPath(command, "--colours", arguments.colours, "MESSAGE",
            "use the colour sets of this message's palette [the machine's own]");
    AddChoice(command, "--aspect", arguments.options.aspect,
              std::vector<Aspect>{{"ntsc", PixelAspectOf(VideoStandard::kNtsc)},
                                  {"pal", PixelAspectOf(VideoStandard::kPal)},
                                  {"square", PixelAspect()}},
              "the shape of the font's pixels in the outlines");
    command.add_flag("--overwrite", arguments.overwrite, "replace files of a kit that exist");
}

void CheckFontKitOptions(const CLI::App& command, const FontKitArguments& arguments) {
    for (const char* option : {"--otf", "--colour-set", "--colours", "--overwrite"})
        Require(command, option, arguments.directory.has_value(), "--kit");
    Require(command, "--aspect", arguments.options.true_type, "--otf");
}

FontKitWriter::FontKitWriter(const FontKitArguments& arguments)
    : m_arguments(arguments), m_sets(SetsFor(arguments.colours)) {}

void FontKitWriter::AddFiles(const FontKitArguments& arguments, CommandFiles& files) {
    if (!arguments.directory) return;
    if (arguments.colours) files.Read(*arguments.colours, "the message of --colours");
    files.WriteInto(*arguments.directory, fontkit::IsKitFile);
}

fontkit::FontKit FontKitWriter::Make(CZelFont& fonts, const std::string& font_file) {
    fontkit::KitOptions options = m_arguments.options;
    const auto layers = options.true_type ? fontkit::ArtLayers::kEach : fontkit::ArtLayers::kNone;
    fontkit::FontArt art = fontkit::ReadFontArt(fonts, m_sets, layers);
    const std::string stem = FontKitStem(font_file);
    if (!m_names.insert(art.name).second && !art.name.empty()) options.family_end = " " + stem;
    return {std::move(art), stem, options};
}

void FontKitWriter::WriteFile(const std::string& path, std::string_view bytes) const {
    using Existing = base::UnfinishedFile::Existing;
    if (const std::error_code error = base::MakeDirectoriesTo(path))
        throw CommandError(path + ": its directory can't be made: " + error.message());
    base::UnfinishedFile file(path);
    if (file.IsOpen() && file.Write(bytes) && file.Commit(m_arguments.overwrite ? Existing::kReplace : Existing::kKeep))
        return;
    if (errno == EEXIST) throw CommandError(path + ": exists already; --overwrite replaces it");
    throw CommandError(path + ": can't be written: " + std::generic_category().message(errno));
}

void FontKitWriter::Write(const fontkit::FontKit& kit, const std::string& directory, const std::string& font_file) {
    if (!m_arguments.overwrite) CheckNew(kit, directory);
    try {
        kit.Write([&](const std::string& name, std::string_view bytes) {
            WriteFile((fs::path(directory) / name).string(), bytes);
        });
    } catch (const CommandError&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw CommandError(font_file + ": " + error.what());
    }
    for (const fontkit::LostGlyph& lost : kit.Art().lost) {
        PrintError(font_file + ": character " + std::to_string(lost.code) + " is left out: " + lost.reason);
        m_lost = true;
    }
}

std::string FontKitWriter::Written(const fontkit::FontKit& kit, const std::string& directory) {
    return base::Counted(kit.FileNames().size(), "file") + " to " + directory;
}

std::string FontKitStem(const std::string& font_file) {
    const std::string name = fs::path(font_file).filename().string();
    const std::string digits = name.substr(name.rfind('.') + 1);
    return IsDigits(digits) ? digits : "font";
}

std::vector<std::string> FontFilesOf(const std::string& directory) {
    std::error_code error;
    const fs::path machine = MachineIn(directory, error);
    const fs::path place = machine.empty() ? fs::path(directory) : machine;
    std::vector<std::string> files;
    if (!error) {
        for (const fs::directory_entry& entry : fs::directory_iterator(place, error)) {
            const std::string name = entry.path().filename().string();
            std::error_code ignored;
            if (name.starts_with('.') && IsDigits(name.substr(1)) && !entry.is_directory(ignored))
                files.push_back(entry.path().string());
        }
    }
    if (error) throw CommandError(place.string() + ": can't be listed: " + error.message());
    if (files.empty()) {
        throw CommandError(directory +
                           ": has no fonts: they are named by a dot and a number, such as .0012, in MACHINE of a disk");
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace zel::cli
