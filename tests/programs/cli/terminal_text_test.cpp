// What comes from files, servers' names and arguments controls no terminal and stays in its line.
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/utf8.h"
#include "host/library/library.h"
#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

/// ESC, BEL, the control sequence introducer as a character and as a byte, a line break, and the right-to-left
/// override.
constexpr char kHostileName[] = "N\x1B[2J\x07\xC2\x9B\x9B\n\xE2\x80\xAE";
/// As much of it as a text in Latin-1 can contain.
constexpr char kHostileField[] = "F\x1B\x07\x9B\n";

/// A disk and a library in which every text is the same one.
class NamedDisk {
  public:
    NamedDisk(const std::string& name, const std::string& field) : m_name(name) {
        files::MessageFile message = GoodMessage();
        message.psos.type_name = message.tabs->fields[0].tab_name = field;
        message.rows.push_back(files::RowFromText(200, field, 100, 20));
        files::FontFile font = GoodFont();
        font.psos.type_name = font.header.font_name = field;
        font.header.font_id_text = field.substr(0, 4);
        samples::WriteWholeFile(m_disk / name / "MESSAGES/.0012", files::WriteMessage(message));
        samples::WriteWholeFile(m_disk / name / "MESSAGES" / name, std::string_view("text"));
        samples::WriteWholeFile(m_disk / name / "MACHINE/.0012", files::WriteFont(font));

        library::Recording recording;
        recording.number = 12;
        recording.disk = recording.recorded_at = recording.options = name;
        recording.text = name.substr(0, name.find('\n'));
        recording.fonts = recording.warnings = {name};
        recording.fields = {{name, 1, 2, 3, 4}};
        recording.sources = {{name, std::nullopt, 1, std::string(64, '0')}};
        recording.picture = "a picture";
        recording.width = recording.height = 4;
        library::Library(m_disk / (name + ".zellib"), library::Access::kWrite).Record(std::vector{recording});
    }

    /// @param line  has the name as $N.
    CommandResult Shell(const std::string& line) const {
        return m_disk.Shell("N=" + CommandDisk::Quoted(m_name) + "; " + line);
    }

  private:
    CommandDisk m_disk;
    std::string m_name;
};

std::string FirstUnprintable(std::string_view text) {
    while (!text.empty()) {
        const base::Utf8Character first = base::FirstCharacter(text);
        if (!first.valid || (base::IsControl(first.code) && first.code != '\n') || first.code == 0x202E)
            return std::string(text.substr(0, 60));
        text.remove_prefix(first.size);
    }
    return {};
}

TEST(Terminal, IsNotControlledByAnyTextAndEachStaysInItsLine) {
    const NamedDisk hostile(kHostileName, kHostileField), plain("NAME", "FIELD");
    const char* const lines[] = {
        "zeltrans import \"$N/MESSAGES/.0012\" --warnings --json \"$N.json\" --png \"$N.png\"",
        "zeltrans import \"$N/MESSAGES/.0099\"",
        "zeltrans import \"$N/MESSAGES/$N\"",
        "zeltrans import \"$N/MESSAGES/.0012\" --fonts \"$N/none\"",
        "zeltrans import \"$N/MESSAGES/.0012\" --png \"$N/none/a\"",
        "zeltrans batch \"$N\" 12 13 --out \"$N.out\"",
        "zeltrans batch \"$N\" 12 13 --warnings --library \"$N.b\" --disk \"$N\" --report \"$N.report\"",
        "zeltrans batch \"$N/none\" 12 13",
        "zeltrans font \"$N/MACHINE/.0012\" --warnings --png \"$N.font.png\"",
        "zeltrans font \"$N/MESSAGES/.0012\"",
        "zeltrans font \"$N/none\"",
        "zeltrans info \"$N\"",
        "zeltrans info \"$N/MESSAGES/.0012\" \"$N/MACHINE/.0012\" \"$N/MESSAGES/$N\" \"$N/none\"",
        "zeltrans info --json \"$N/MESSAGES/.0012\" \"$N/MACHINE/.0012\" \"$N/MESSAGES/$N\"",
        "zeltrans library list \"$N.zellib\"",
        "zeltrans library search \"$N.zellib\" N",
        "zeltrans library show \"$N.zellib\" 12",
        "zeltrans library show \"$N.zellib\" 12 --png \"$N.shown\" --json \"$N.shown.json\"",
        "zeltrans library show \"$N.zellib\" 12 --disk \"$N none\"",
        "zeltrans library merge \"$N.merged\" \"$N.zellib\" \"$N/MESSAGES/$N\"",
        "zeltrans library remove \"$N.merged\" 12",
        "zeltrans library list \"$N none\"",
        "zeltrans export \"$N.zellib\" 12 12 --out \"$N.exported\"",
        "zeltrans export \"$N.zellib\" 12 12 --out \"$N.exported\" --disk \"$N none\"",
        "zeltrans settings set FontDir 0 \"$N\"",
        "zeltrans settings get FontDir 0",
        "zeltrans settings",
        "zeltrans settings get \"$N\" \"$N\"",
        "zeltrans settings --settings \"$N/MESSAGES/$N\"",
        "zeltrans sample \"$N.sample\"",
        "zeltrans sample \"$N/MESSAGES/$N\"",
        "zeltrans fetch ftp://127.0.0.1:1/ 1 --to \"$N.fetched\" --user \"$N\" --netrc \"$N/none\"",
        "zeltrans \"$N\"",
    };
    // What they print depends on the name.
    const char* const others[] = {
        "zeltrans fetch \"ftp://127.0.0.1:1/$N\" 1 --to \"$N.fetched\"",
        "zeltrans export \"$N.zellib\" 12 12 --out \"$N.exported\" --format \"$N\"",
        "zeltrans import \"--$N\"",
        "zeltrans batch . \"$N\" 12 \"$N\"",
        "zeltrans export a 1 2 --out b --jobs \"$N\"",
        "zeltrans library show \"$N.zellib\" \"$N\"",
    };
    for (const char* line : others) {
        const CommandResult result = hostile.Shell(line);
        EXPECT_EQ(FirstUnprintable(result.out + result.err), "") << line;
        EXPECT_NE(result.exit_code, 0) << line;
    }
    for (const char* line : lines) {
        const CommandResult result = hostile.Shell(line), expected = plain.Shell(line);
        EXPECT_EQ(FirstUnprintable(result.out), "") << line;
        EXPECT_EQ(FirstUnprintable(result.err), "") << line;
        EXPECT_EQ(result.exit_code, expected.exit_code) << line << '\n' << result.err << expected.err;
        EXPECT_EQ(result.ErrorLines(), expected.ErrorLines()) << line << '\n' << result.err << expected.err;
        EXPECT_EQ(std::ranges::count(result.out, '\n'), std::ranges::count(expected.out, '\n'))
            << line << '\n'
            << result.out << expected.out;
    }
}

}  // namespace

}  // namespace zel::test
