// Files that request far more than they need: no command takes long for them or uses much memory.
#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "limits/hostile_files.h"
#include "limits/measured_command.h"

namespace zel::limits {

namespace {

/// Fair for a message of 12 KB, in an optimised build on a fast machine.
constexpr double kFairSeconds = 0.2, kFairMebibytes = 64;
/// A slow or busy machine.
constexpr double kSlowMachine = 6;
#if defined(ZELTRANS_SANITIZED)
constexpr double kSlowBuild = 20;
#elif defined(ZELTRANS_UNOPTIMISED)
constexpr double kSlowBuild = 8;
#else
constexpr double kSlowBuild = 1;
#endif

struct LimitCase {
    const char* name;
    void (*write)(const HostileDisk&);
    /// For one command.
    double seconds = kFairSeconds;
    double mebibytes = kFairMebibytes;
};

void PrintTo(const LimitCase& row, std::ostream* out) {
    *out << row.name;
}

struct CommandCase {
    /// The command is run if the disk has this file.
    const char* needs;
    std::vector<std::string> arguments;
};

/// In this order: an export reads the library that the batch has written.
const std::vector<CommandCase>& Commands() {
    static const std::vector<CommandCase> commands = {
        {"MESSAGES/.0001", {"info", "MESSAGES/.0001"}},
        {"MESSAGES/.0001",
         {"import", "MESSAGES/.0001", "--maps", ".", "--png", "a.png", "--json", "a.json", "--fields"}},
        {"MESSAGES/.0001", {"import", "MESSAGES/.0001", "--maps", ".", "--png", "b.png", "--tt-convert"}},
        {"MESSAGES/.0001", {"import", "MESSAGES/.0001", "--trace", "c.trace", "--pixels", "--warnings"}},
        {"MESSAGES/.0001", {"batch", ".", "1", "1", "--maps", ".", "--disk", "", "--library", "lib", "--out", "out"}},
        {"MACHINE/.0001", {"info", "MACHINE/.0001"}},
        {"MACHINE/.0001", {"font", "MACHINE/.0001", "--png", "font.png"}},
        {"lib", {"library", "list", "lib"}},
        {"lib", {"library", "show", "lib", "1"}},
        {"lib", {"library", "search", "lib", "a"}},
        {"lib", {"export", "lib", "1", "1", "--out", "json", "--format", "json"}},
        {"lib", {"export", "lib", "1", "1", "--out", "html", "--format", "html"}},
        {"lib", {"export", "lib", "1", "1", "--out", "png", "--format", "png", "--format", "sheet"}},
        {"lib", {"export", "lib", "1", "1", "--out", "key", "--format", "key-fill"}},
    };
    return commands;
}

std::string Line(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments) line += (line.empty() ? "" : " ") + argument;
    return line;
}

/// Figures of their own have sheets of large glyphs, files of many MiB, and a message of 25,000 characters.
constexpr LimitCase kCases[] = {
    {"wide_glyphs", WideGlyphs},
    {"wide_glyphs_of_many_fonts", WideGlyphsOfManyFonts, 0.3, 80},
    {"glyphs_over_one_another", GlyphsOverOneAnother, 0.2, 88},
    {"tall_typefaces_with_shadow", TallTypefacesWithShadow},
    {"tall_typefaces_with_border", TallTypefacesWithBorder},
    {"announced_rows", AnnouncedRows},
    {"empty_rows", EmptyRows},
    {"many_tab_fields", ManyTabFields},
    {"sparse_fonts", SparseFonts},
    {"sparse_fonts_within_the_limit", SparseFontsWithinTheLimit, 0.2, 88},
    {"large_sparse_files", LargeSparseFiles, 0.3, 96},
    {"large_stored_glyph", LargeStoredGlyph},
    {"many_stored_glyphs", ManyStoredGlyphs, 0.2, 80},
    {"stay_codes", StayCodes},
    {"stay_codes_of_many_fonts", StayCodesOfManyFonts, 0.3},
    {"large_rgba_picture", LargeRgbaPicture, 0.2, 88},
    {"long_name_lists", LongNameLists},
    {"sparse_name_lists", SparseNameLists},
    {"document_of_empty_objects", DocumentOfEmptyObjects},
    {"document_of_many_values", DocumentOfManyValues},
    {"document_of_brackets", DocumentOfBrackets},
    {"document_of_members", DocumentOfMembers},
    {"large_recorded_picture", LargeRecordedPicture, 0.2, 96},
};

class Limits : public testing::TestWithParam<LimitCase> {};

TEST_P(Limits, HoldForEachCommand) {
    const HostileDisk disk;
    GetParam().write(disk);
    const double seconds = GetParam().seconds * kSlowMachine * kSlowBuild;
    for (const CommandCase& command : Commands()) {
        if (!exists(disk.Path() / command.needs)) continue;
        const std::string line = Line(command.arguments);
        const Cost cost =
            MeasureCommand(ZELTRANS_COMMAND, command.arguments, disk.Path(), static_cast<unsigned>(4 * seconds) + 1);
        std::printf("%8.3f s %8.1f MiB  exit %d  %s\n", cost.seconds, cost.mebibytes, cost.exit_code, line.c_str());
        EXPECT_TRUE(cost.exit_code == 0 || cost.exit_code == 1) << line << ": " << cost.exit_code;
        EXPECT_LE(cost.seconds, seconds) << line;
#if !defined(ZELTRANS_SANITIZED)  // whose shadow takes much memory
        EXPECT_LE(cost.mebibytes, GetParam().mebibytes) << line;
#endif
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Limits, testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace zel::limits
