#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/fontkit/font_kit.h"
#include "programs/cli/command.h"
#include "programs/cli/output_check.h"

namespace CLI {
class App;
}

namespace zel::cli {

/// What the command line says about font kits.
struct FontKitArguments {
    /// Of --kit.
    std::optional<std::string> directory;
    /// The message of --colours.
    std::optional<std::string> colours;
    fontkit::KitOptions options;
    bool overwrite = false;
};

/// Adds --kit and the options of kits.
void AddFontKit(CLI::App& command, FontKitArguments& arguments);
/// Checks that no option of kits is given without --kit.
void CheckFontKitOptions(const CLI::App& command, const FontKitArguments& arguments);

/// Writes the kits of fonts.
class FontKitWriter {
  public:
    /// @param arguments  with a directory; kept alive by the caller.
    /// @throws CommandError if the message of --colours can't be used.
    explicit FontKitWriter(const FontKitArguments& arguments);

    /// The files that are read and written, for CheckOutputs.
    static void AddFiles(const FontKitArguments& arguments, CommandFiles& files);

    /// Makes the kit of the font in slot 0, in memory. A font with the name of an earlier one is installed under that
    /// name and the digits of its file.
    /// @param font_file  its path, whose digits the names of the files begin with.
    fontkit::FontKit Make(CZelFont& fonts, const std::string& font_file);

    /// Writes a kit, and prints a line for each lost glyph.
    /// @param directory  created if it is missing.
    /// @throws CommandError for a file that exists, before anything is written, unless --overwrite is given, and for
    ///         one that can't be written.
    void Write(const fontkit::FontKit& kit, const std::string& directory, const std::string& font_file);

    /// What has been written, to follow "wrote".
    static std::string Written(const fontkit::FontKit& kit, const std::string& directory);

    /// 1 if a glyph was lost, else 0.
    ExitCode Code() const noexcept { return m_lost ? ExitCode::kNotDone : ExitCode::kDone; }

  private:
    void WriteFile(const std::string& path, std::string_view bytes) const;

    const FontKitArguments& m_arguments;
    fontkit::ColourSets m_sets;
    /// Of the fonts so far.
    std::set<std::string> m_names;
    bool m_lost = false;
};

/// The name of a font's files in its kit: the digits of the font file's name, or "font".
std::string FontKitStem(const std::string& font_file);

/// The font files of a disk, or of a directory of fonts, by name: those named by a number.
/// @param directory  contains MACHINE, or fonts.
/// @throws CommandError if it can't be listed or has no fonts.
std::vector<std::string> FontFilesOf(const std::string& directory);

}  // namespace zel::cli
