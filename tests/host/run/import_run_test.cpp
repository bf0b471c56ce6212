#include "host/run/import_run.h"

#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/document/message_document.h"
#include "host/document/message_warnings.h"
#include "host/host_disk.h"
#include "host/trace.h"
#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"
#include "platform/system/files.h"
#include "platform/system/registry.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class ImportRun : public HostDisk {
  protected:
    std::string TraceOf(host::TracePixels pixels = host::TracePixels::kYes) {
        std::ostringstream out;
        host::TraceWriter trace(out, pixels);
        Import({&trace});
        return out.str();
    }
};

TEST_F(ImportRun, PassesAMessageFromItsFilesToTheHost) {
    WriteFont(BlockFont());
    WriteMessage(OneRow("CAB"));
    OrderRecorder recorder;
    const run::ImportOutcome outcome = Import({&recorder});
    EXPECT_EQ(recorder.order, "1212 1157 char char char 1181 1180 1213 15 message end");
    EXPECT_TRUE(outcome.Done()) << outcome.failure;
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.next_id, ".0002");
    EXPECT_EQ(outcome.y_offset, 20);
    EXPECT_THAT(outcome.order_breaches, IsEmpty());
    const document::CharacterRecord& first = outcome.message.value().characters.at(0);
    EXPECT_EQ(first.info.log_font, nullptr) << "valid during the call only";
    EXPECT_STREQ(first.log_font.lfFaceName, "Zelmara! (0) Block");
}

TEST_F(ImportRun, GivesTheSameMessageInBothModes) {
    WriteFont(BlockFont());
    WriteMessage(OneRow("AB"));
    const std::string silent = TraceOf();
    m_request.mode = run::ImportMode::kDialog;
    EXPECT_EQ(TraceOf(), silent);
    EXPECT_THAT(silent, HasSubstr(R"("pixels":{"left":0,"top":0,"right":4,"bottom":4,"crc32":)"));
}

TEST_F(ImportRun, SetsTheOptionsOfTheDialog) {
    WriteFont(BlockFont());
    WriteMessage(OneRow("A"));
    m_request.host.tt_convert = true;
    m_request.host.baseline_align = false;
    for (const run::ImportMode mode : {run::ImportMode::kSilent, run::ImportMode::kDialog}) {
        m_request.mode = mode;
        const run::ImportOutcome outcome = Import();
        ASSERT_TRUE(outcome.message.has_value()) << outcome.failure;
        const document::CharacterRecord& character = outcome.message->characters.at(0);
        EXPECT_EQ(character.font_slot, std::nullopt);
        EXPECT_EQ(character.info.base_shift, 7);  // char_y 10, glyph_top 3
    }
}

TEST_F(ImportRun, RecordsAMessageWithItsOwnStandard) {
    WriteFont(BlockFont());
    files::MessageFile message = OneRow("A");
    message.pal = true;
    WriteMessage(message);
    m_request.mode = run::ImportMode::kDialog;
    const run::ImportOutcome warned = Import();
    EXPECT_EQ(warned.message->standard, VideoStandard::kPal);
    ASSERT_EQ(warned.boxes.size(), 1U);
    EXPECT_THAT(warned.boxes[0].text, StartsWith("The Zelmara! message being imported is a PAL message"));
    EXPECT_TRUE(warned.Done());
    m_request.host.standard = VideoStandard::kPal;
    EXPECT_THAT(Import().boxes, IsEmpty());
}

TEST_F(ImportRun, AnswersThePromptForAMissingFont) {
    WriteMessage(OneRow("A"));
    m_request.mode = run::ImportMode::kDialog;
    const run::ImportOutcome without = Import();
    EXPECT_EQ(without.status, 0);
    EXPECT_EQ(without.boxes.at(0).answer, IDNO);
    EXPECT_THAT(without.message->characters, IsEmpty());

    m_request.box_answer = host::BoxAnswer::kCancel;
    EXPECT_THAT(Import().failure, EndsWith(".0001: cancelled when a font was missing"));
}

TEST_F(ImportRun, WarnsOfAFontFromOutsideTheFontDirectory) {
    WriteMessage(OneRow("A"));
    const files::Bytes font = files::WriteFont(BlockFont());
    samples::WriteWholeFile(Path("OTHER/.0001"), font);
    const std::string key = "Software\\Kovesh\\Tavro\\ZelTrans\\FontDir";
    m_settings.CreateKey(key);
    const auto store = [&](const std::string& name) {
        const std::string directory = system::ModulePath(Path(name));
        m_settings.SetValue(key, "FontDir 0", {REG_SZ, {directory.c_str(), directory.c_str() + directory.size() + 1}});
    };
    const std::string warning = "font 1 is not in the font directory; used instead: " + Path("OTHER/.0001");
    const struct {
        const char* font;    // written to this name
        const char* fonts;   // the font directory
        const char* stored;  // the newest one of earlier imports
        bool warns;
    } cases[] = {
        {"none", "MACHINE", "OTHER", true},           {"none", "MACHINE/", "OTHER", true},
        {"none", "OTHER", "MACHINE", false},          {"none", "OTHER/", "MACHINE", false},
        {"MACHINE/.0001", "MACHINE", "OTHER", false},
    };
    for (const auto& [written, fonts, stored, warns] : cases) {
        if (std::string(written) != "none") samples::WriteWholeFile(Path(written), font);
        store(stored);
        m_request.fonts = Path(fonts);
        const run::ImportOutcome outcome = Import();
        ASSERT_TRUE(outcome.message && outcome.message->fonts[0]) << fonts;
        const std::vector<std::string> expected(warns ? 1 : 0, warning);
        EXPECT_EQ(document::WarningsOf(*outcome.message), expected) << fonts;
        const auto document = nlohmann::json::parse(document::MessageDocument(*outcome.message));
        EXPECT_EQ(document.value("warnings", std::vector<std::string>()), expected) << fonts;
    }
}

TEST_F(ImportRun, WarnsOfAFontThatTheUserChoseOnAnotherDisk) {
    std::filesystem::create_directory_symlink(Path("MACHINE"), Path("LINK"));
    WriteFont(BlockFont(), 2);
    samples::WriteWholeFile(Path("OTHER/.0001"), files::WriteFont(BlockFont()));
    WriteMessage(OneRow("A"));
    m_request.mode = run::ImportMode::kDialog;
    m_request.box_answer = host::BoxAnswer::kYes;
    m_request.browse = Path("LINK/.0002");
    EXPECT_THAT(document::WarningsOf(Import().message.value()), IsEmpty());
    m_request.browse = Path("OTHER/.0001");
    EXPECT_THAT(document::WarningsOf(Import().message.value()), ElementsAre(EndsWith(Path("OTHER/.0001"))));
}

TEST_F(ImportRun, RegistersTheDirectoryOfTheNameLists) {
    files::FontFile font = BlockFont();
    font.header.font_id_text = "5021";
    WriteFont(font);
    WriteMessage(OneRow("A"));
    samples::WriteWholeFile(Path(std::string(samples::kBitstreamListName)),
                            samples::BitstreamList().Plain("Lantern", 21).Written());
    samples::WriteWholeFile(Path(std::string(samples::kTypefaceListName)),
                            samples::TypefaceList().Typeface("DejaVu Sans", "Lantern BT").Written());
    m_request.host.tt_convert = true;
    const run::ImportOutcome outcome = Import();
    EXPECT_STREQ(outcome.message->characters.at(0).log_font.lfFaceName, "                    DejaVu Sans");
}

TEST_F(ImportRun, RefusesANameListDirectoryThatIsTooLong) {
    OrderRecorder recorder;
    m_request.host.maps = "/" + std::string(258, 'm');
    const run::ImportOutcome outcome = Import({&recorder});
    EXPECT_THAT(outcome.failure, HasSubstr("longer than the 258 characters"));
    EXPECT_EQ(recorder.order, "");
    m_request.host.maps = "/" + std::string(257, 'm');
    EXPECT_THAT(Import().failure, testing::Not(HasSubstr("258")));
}

TEST_F(ImportRun, LetsAnExceptionOfTheModuleEndTheTrace) {
    WriteStoredFont(18);  // of 24, the head included
    WriteMessage(OneRow("A"));
    OrderRecorder recorder;
    const run::ImportOutcome outcome = Import({&recorder});
    EXPECT_EQ(recorder.order, "1212 1157 exception");
    EXPECT_THAT(outcome.failure, HasSubstr("MESSAGES/.0001: reading stopped: "));
    EXPECT_THAT(outcome.failure, HasSubstr("\\MACHINE\\.0001"));
    EXPECT_FALSE(outcome.message.has_value());
}

TEST_F(ImportRun, EndsTheTraceAtTruncatedPixelsOnlyWhenTheyAreRequested) {
    WriteStoredFont(4);  // the head is complete, the pixels are not
    WriteMessage(OneRow("A"));
    const std::string trace_with_pixels = TraceOf();
    EXPECT_THAT(trace_with_pixels, HasSubstr(R"({"event":"exception","text":)"));
    EXPECT_THAT(trace_with_pixels, Not(HasSubstr(R"("event":"char")")));
    std::ostringstream out;
    host::TraceWriter trace(out, host::TracePixels::kNo);
    EXPECT_TRUE(Import({&trace}).Done());
    EXPECT_THAT(out.str(), HasSubstr(R"("event":"char")"));
}

TEST_F(ImportRun, RestoresWhatWasRegistered) {
    CWnd* const main_window = AfxGetThread()->m_pMainWnd;
    Import();
    EXPECT_EQ(AfxGetThread()->m_pMainWnd, main_window);
    char no_directory[MAX_PATH] = {};
    EXPECT_EQ(Register_GLV_OnChar(nullptr, no_directory), nullptr);
}

struct FailureCase {
    const char* message;
    int status;
    const char* reason;
};

TEST_F(ImportRun, NamesTheFileAndTheReasonOfAFailure) {
    samples::WriteWholeFile(Path("NOFONTS/MESSAGES/.0001"), files::WriteMessage(OneRow("A")));
    samples::WriteWholeFile(Path("MESSAGES/font"), files::WriteFont(BlockFont()));
    samples::WriteWholeFile(Path("MESSAGES/few bytes"), std::string_view("\0\0\2\xBE", 4));
    const files::Bytes bytes = files::WriteMessage(OneRow("A"));
    samples::WriteWholeFile(Path("MESSAGES/cut short"), std::span(bytes).first(140));
    samples::WriteWholeFile(Path("MESSAGES/foreign type"), files::WriteRgbaFile(703, {}));
    samples::WriteWholeFile(Path("text"), std::string_view("short"));
    samples::WriteWholeFile(Path("picture"), std::string_view("\x89PNG\r\n\x1A\n"));
    samples::WriteWholeFile(Path("empty"), std::string_view());
    for (const FailureCase& row : {
             FailureCase{"NOFONTS/MESSAGES/.0001", 1, "/NOFONTS/MACHINE does not exist"},
             {"NOWHERE/.0001", 2, "/NOWHERE does not exist"},
             {"MESSAGES/.0404", 3, "there is no such message file"},
             {"MESSAGES/font", 4, "not a message file but a font file"},
             {"MESSAGES/few bytes", 4, "ends within its first header"},
             {"MESSAGES/cut short", 4, "zeltrans info"},
             {"MESSAGES/foreign type", 4, "its type is 703"},
             // The font directory is missing too, which is not the cause.
             {"nosuch", 1, "there is no such message file"},
             {"MESSAGES", 1, "a directory, not a message file"},
             {"text", 1, "not a message file but text"},
             {"picture", 1, "not a message file but a PNG picture"},
             {"empty", 1, "the message file is empty"},
             {"NOWHERE/below/.0001", 1, "/NOWHERE/below does not exist"},
             {"NOFONTS/MESSAGES/1", 1, "/NOFONTS/MACHINE does not exist"},
         }) {
        SCOPED_TRACE(row.message);
        m_request.message = Path(row.message);
        for (const run::ImportMode mode : {run::ImportMode::kSilent, run::ImportMode::kDialog}) {
            m_request.mode = mode;
            const run::ImportOutcome outcome = Import();
            EXPECT_EQ(outcome.status, row.status);
            EXPECT_FALSE(outcome.message.has_value());
            EXPECT_THAT(outcome.failure, StartsWith(m_request.message + ": "));
            // A missing directory is reported even if warnings are skipped.
            EXPECT_EQ(outcome.boxes.empty(), mode == run::ImportMode::kSilent && row.status > 2);
            // With warnings it is the text of the box.
            EXPECT_THAT(outcome.failure, HasSubstr(mode == run::ImportMode::kSilent ? row.reason : ""));
        }
    }
}

}  // namespace

}  // namespace zel::test
