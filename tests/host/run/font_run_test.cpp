#include "host/run/font_run.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/host_disk.h"
#include "host/trace.h"
#include "module/contract/zel_font.h"
#include "module/state/module_state.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class FontRun : public HostDisk {
  protected:
    FontRun() {
        CancelZelFontBrowse();
        CZelFont::m_SFontBrowseDir.Empty();
        m_font.file = Path("MACHINE/.0012");
        m_font.maps = m_scratch.Path().string();
    }

    run::FontRunRequest m_font;
};

TEST_F(FontRun, PassesTheFontWithTheDefaultPaletteAfterTheEndOfTheTrace) {
    WriteFont(BlockFont(), 12);
    std::ostringstream out;
    host::TraceWriter trace(out);
    host::HostObserver* const observers[] = {&trace};
    std::string traced;
    const run::FontRunOutcome outcome = run::RunFont(m_font, observers, [&](CZelFont& fonts) {
        traced = out.str();
        EXPECT_EQ(fonts.m_Slots[0].font_header->Name(), "Block");
        EXPECT_EQ(fonts.m_Palette[1 + 7 * 32 + 1], 0xD9D9FFD9U);
    });
    EXPECT_TRUE(outcome.Done()) << outcome.failure;
    EXPECT_EQ(outcome.read_from, std::nullopt);
    EXPECT_THAT(traced, StartsWith(R"({"event":"font","result":1,"fonts":[{"file_name":)"));
    EXPECT_THAT(traced, HasSubstr(",null,null]}\n"
                                  R"({"event":"end","road":"font","next_id":)"));
}

TEST_F(FontRun, SetsSkipWarningsInTheModuleAndInTheSettings) {
    for (const bool warnings : {true, false}) {
        m_font.warnings = warnings;
        CZelFont::m_bIgnoreErrors = warnings ? 1 : 0;
        run::RunFont(m_font);
        EXPECT_EQ(IgnoreZelFontErrors(), !warnings);
        EXPECT_EQ(m_settings.GetProfileInt("ZELFNTSaveOptions", "SkipWarnings"), warnings ? 0 : 1);
    }
}

struct RefusedFont {
    const char* name;
    const char* file;
    const char* reason;
    /// With warnings.
    std::optional<host::BoxAnswer> answer = std::nullopt;
    const char* browse = nullptr;
};

TEST_F(FontRun, NamesTheFileAndTheReasonOfAFailure) {
    const files::Bytes bytes = files::WriteFont(BlockFont());
    const auto write = [this](const char* name, std::size_t size, const files::Bytes& file) {
        samples::WriteWholeFile(Path(name), std::span(file).first(size));
    };
    for (const char* name : {"MACHINE/FONT.TXT", "MACHINE/ab.0012", "MACHINE/.00013", "x.0012/.0012"}) {
        write(name, bytes.size(), bytes);
    }
    write("MACHINE/.0014", 100, bytes);
    write("MACHINE/.0015", bytes.size() - 1, bytes);
    samples::WriteWholeFile(Path("MACHINE/.0016"), files::WriteMessage(OneRow("A")));
    samples::WriteWholeFile(Path("MACHINE/.0017"), files::WriteRgbaFile(714, {}));
    std::filesystem::create_directory(Path("MACHINE/.0018"));
    const RefusedFont rows[] = {
        {"an extension without a number", "MACHINE/FONT.TXT", "named by a dot and a number, such as .0012"},
        {"no dot", "MACHINE", "named by a dot and a number, such as .0012"},
        {"a stem", "MACHINE/ab.0012", "such as .0012, without \"ab\" in front"},
        {"the name in a directory", "x.0012/.0012", "the first \".0012\" in the path"},
        {"too many zeros", "MACHINE/.00013", "under the names .0013 and .13 only"},
        {"a long path",
         "a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../"
         "a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../"
         "a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../a/../.0012",
         "characters, and the module accepts 259"},
        {"a missing file", "MACHINE/.0012", "there is no such font file"},
        {"a declined prompt", "MACHINE/.0012", "no such font file, and the prompt to browse for it was answered",
         host::BoxAnswer::kNo},
        {"a cancelled prompt", "MACHINE/.0012", "the prompt to browse for it was cancelled", host::BoxAnswer::kCancel},
        {"a cancelled file dialog", "MACHINE/.0012", "and the file dialog was cancelled", host::BoxAnswer::kYes},
        {"a wrong file browsed for", "MACHINE/.0012",
         "MACHINE/.0016, can't be used: not a font file but a message file", host::BoxAnswer::kYes, "MACHINE/.0016"},
        {"a few bytes", "MACHINE/.0014", "the font file ends within its first header"},
        {"a file cut short", "MACHINE/.0015", "the font file is damaged; \"zeltrans info\" shows where"},
        {"a message", "MACHINE/.0016", "not a font file but a message file"},
        {"a picture", "MACHINE/.0017", "not a font file: its type is 714, a font's is 500"},
        {"a directory", "MACHINE/.0018", "a directory, not a font file"}};
    for (const RefusedFont& row : rows) {
        SCOPED_TRACE(row.name);
        CancelZelFontBrowse();  // the module prompts again after a cancelled prompt
        m_font.file = Path(row.file);
        m_font.warnings = row.answer.has_value();
        m_font.box_answer = row.answer.value_or(host::BoxAnswer::kNo);
        if (row.browse != nullptr) m_font.browse = Path(row.browse);
        const run::FontRunOutcome outcome = run::RunFont(m_font, {}, [](CZelFont&) { FAIL() << "there is no font"; });
        EXPECT_THAT(outcome.failure, StartsWith(m_font.file + ": "));
        EXPECT_THAT(outcome.failure, HasSubstr(row.reason));
    }
}

}  // namespace

}  // namespace zel::test
