// What the user is told of a message file, and what stays silent.
#include <gmock/gmock.h>

#include "module/contract/zel_message.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using samples::MessageFile;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kCouldnt[] = "Couldn't Read the Zelmara! File|";

struct FailureCase {
    const char* name;
    void (*change)(MessageFile&);
    std::size_t cut;  // bytes of the file, 0 for all
    bool read;
    std::vector<std::string> boxes;
};

void PrintTo(const FailureCase& row, std::ostream* out) {
    *out << row.name;
}

class MessageFailures : public ModuleTest, public testing::WithParamInterface<FailureCase> {
  protected:
    void WriteCase() const {
        MessageFile file = MessageOf({samples::EmptyRow(30)});
        GetParam().change(file);
        samples::Bytes bytes = samples::WriteMessage(file);
        if (GetParam().cut != 0) bytes.resize(GetParam().cut);
        WriteFile("MESSAGES/.0001", bytes);
    }
};

TEST_P(MessageFailures, SayWhatTheyAre) {
    WriteCase();
    OpenDialog dialog(nullptr);
    CZelMessage message("", "D:\\MESSAGES", ".0001", &dialog);
    EXPECT_EQ(message.ReadMessage(&dialog), GetParam().read);
    EXPECT_EQ(Boxes(), GetParam().boxes);
    for (const auto& box : desktop.Boxes()) {
        EXPECT_EQ(box.style, 48U);
        EXPECT_EQ(box.owner, nullptr);
    }
    EXPECT_EQ(message.m_pFileHeader != nullptr, GetParam().cut == 0 || GetParam().cut >= 136);
}

TEST_P(MessageFailures, AreSilentButTheSameWithWarningsSkipped) {
    WriteCase();
    OpenDialog dialog(nullptr);
    CZelFont::m_bIgnoreErrors = 5;
    CZelMessage message("", "D:\\MESSAGES", ".0001", &dialog);
    EXPECT_EQ(message.ReadMessage(&dialog), GetParam().read);
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(dialog.m_bImportSkip, 1);
}

void Tabs(MessageFile& file, unsigned version, std::vector<samples::TabField> fields) {
    file.tabs.emplace();
    file.tabs->tab_version = version;
    file.tabs->fields = std::move(fields);
}
samples::TabField TabOf(unsigned start, unsigned end, unsigned row) {
    samples::TabField tab;
    tab.tab_start = start;
    tab.tab_end = end;
    tab.tab_row = row;
    return tab;
}
std::string Couldnt(const char* text) {
    return kCouldnt + std::string(text) + "D:\\MESSAGES\\.0001";
}

constexpr char kPalWarning[] =
    "Warning - Video Standard Mismatch Detected|The Zelmara! message being imported is a PAL message,  \n"
    "    this may result in an offset shift of the message";

INSTANTIATE_TEST_SUITE_P(
    Each, MessageFailures,
    testing::Values(FailureCase{"empty_file", [](MessageFile&) {}, 1, false, {Couldnt("Invalid file: ")}},
                    FailureCase{"short_header", [](MessageFile&) {}, 135, false, {Couldnt("Invalid file: ")}},
                    FailureCase{"header_only", [](MessageFile&) {}, 136, false, {Couldnt("Invalid file: ")}},
                    FailureCase{"short_flags", [](MessageFile&) {}, 151, false, {Couldnt("Invalid file: ")}},
                    FailureCase{"type_714", [](MessageFile& f) { f.psos.file_type = 714; }, 0, false, {}},
                    FailureCase{"type_717_named",
                                [](MessageFile& f) {
                                    f.psos = {717, 0, "RGBA"};
                                },
                                0,
                                false,
                                {}},
                    FailureCase{"unnamed_type",
                                [](MessageFile& f) { f.psos.file_type = 500; },
                                0,
                                false,
                                {Couldnt("Zelmara! file type 500 not supported: ")}},
                    FailureCase{"huge_type",
                                [](MessageFile& f) { f.psos.file_type = 0xFFFFFFFF; },
                                0,
                                false,
                                {Couldnt("Zelmara! file type -1 not supported: ")}},
                    FailureCase{"named_type",
                                [](MessageFile& f) {
                                    f.psos = {1, 0, "Some %s type"};
                                },
                                0,
                                false,
                                {Couldnt("Zelmara! 'Some %s type' not supported: ")}},
                    FailureCase{"type_name_to_the_headers_end",
                                [](MessageFile& f) {
                                    f.psos = {1, 0, std::string(128, 'n')};
                                },
                                0,
                                false,
                                {Couldnt(("Zelmara! '" + std::string(128, 'n') + "' not supported: ").c_str())}},
                    FailureCase{"pal_message", [](MessageFile& f) { f.pal = true; }, 0, true, {kPalWarning}},
                    FailureCase{"flash_font",
                                [](MessageFile& f) { f.flash_font.emplace(); },
                                0,
                                true,
                                {"Flash Font Unsupported|Flash Font Characters will be ignored"}},
                    FailureCase{"empty_palette",
                                [](MessageFile& f) { f.palette.emplace(); },
                                0,
                                false,
                                {Couldnt("Couldn't Read Zelmara! File's Font Header: ")}},
                    FailureCase{"foreign_background",
                                [](MessageFile& f) {
                                    f.background.emplace();
                                    f.background->tag = 0xBBBA;
                                },
                                0,
                                false,
                                {Couldnt("Couldn't Read Zelmara! Background: ")}},
                    FailureCase{"short_background",
                                [](MessageFile& f) {
                                    f.background.emplace();
                                    f.background->words = 1535;
                                },
                                0,
                                false,
                                {Couldnt("Invalid file: ")}},
                    FailureCase{"exact_background",
                                [](MessageFile& f) {
                                    f.background.emplace();
                                    f.background->tag = 0xBBBC;
                                    Tabs(f, 2, {TabOf(1, 2, 0)});
                                },
                                0,
                                true,
                                {}},
                    FailureCase{"tab_version_3",
                                [](MessageFile& f) { Tabs(f, 3, {}); },
                                0,
                                false,
                                {Couldnt("Couldn't Read Zelmara! Tab Table: ")}},
                    FailureCase{"tab_version_1",
                                [](MessageFile& f) { Tabs(f, 1, {}); },
                                0,
                                false,
                                {Couldnt("Zelmara! Tab Versions prior to 2 not supported: ")}},
                    FailureCase{"too_many_tabs",
                                [](MessageFile& f) { Tabs(f, 2, std::vector<samples::TabField>(201, TabOf(1, 2, 0))); },
                                0,
                                false,
                                {Couldnt("Zelmara! Maximum Tabs Exceeded: ")}},
                    FailureCase{"bad_tab_row",
                                [](MessageFile& f) {
                                    Tabs(f, 2, {TabOf(2, 1, 1), TabOf(1, 1, 0), TabOf(1, 2, 0)});
                                },
                                0,
                                true,
                                {"Zelmara! Import Error|Invalid Tab row count in D:\\MESSAGES\\.0001"}},
                    FailureCase{"bad_tab_field",
                                [](MessageFile& f) {
                                    Tabs(f, 2, {TabOf(2, 1, 0), TabOf(1, 1, 0)});
                                },
                                0,
                                true,
                                {"Zelmara! Import Error|Invalid Tab field : D:\\MESSAGES\\.0001"}},
                    FailureCase{"several_at_once_in_file_order",
                                [](MessageFile& f) {
                                    f.pal = true;
                                    f.flash_font.emplace();
                                    f.palette.emplace();
                                },
                                0,
                                false,
                                {kPalWarning, "Flash Font Unsupported|Flash Font Characters will be ignored",
                                 Couldnt("Couldn't Read Zelmara! File's Font Header: ")}}),
    [](const auto& row) { return std::string(row.param.name); });

class ReadMessage : public ModuleTest {};

TEST_F(ReadMessage, SaysNothingOfAFileThatIsMissing) {
    OpenDialog dialog(nullptr);
    CZelMessage message("", "D:\\MESSAGES", ".0001", &dialog);
    EXPECT_FALSE(message.ReadMessage(&dialog));
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(message.m_pFileHeader, nullptr);
}

TEST_F(ReadMessage, WarnsByTheHostsLinesAlone) {
    OpenDialog dialog(nullptr);
    dialog.m_iLines = 576;
    MessageFile file = MessageOf({samples::EmptyRow(30)});
    file.pal = true;
    WriteMessage(file, "PAL");
    file.pal = false;
    WriteMessage(file, "NTSC");
    CZelMessage pal("", "D:\\MESSAGES", "PAL", &dialog), ntsc("", "D:\\MESSAGES", "NTSC", &dialog);
    EXPECT_TRUE(pal.ReadMessage(&dialog));
    EXPECT_THAT(NewBoxes(), IsEmpty());
    EXPECT_TRUE(ntsc.ReadMessage(&dialog));
    EXPECT_THAT(NewBoxes(),
                ElementsAre("Warning - Video Standard Mismatch Detected|The Zelmara! message being imported is an NTSC "
                            "message,  \n    this may result in an offset shift of the message"));
}

TEST_F(ReadMessage, KeepsTheLastOffsetWhenItFailsBeforeTheRows) {
    MessageFile file = MessageOf({samples::EmptyRow(7)});
    WriteMessage(file, "GOOD");
    file.psos.file_type = 1;
    WriteMessage(file, "WRONG");
    file = MessageOf({samples::EmptyRow(9)});
    file.palette.emplace();
    WriteMessage(file, "NOPALETTE");
    OpenDialog dialog(nullptr);
    for (const auto& [name, offset] : {std::pair("GOOD", 7), std::pair("WRONG", 7), std::pair("NOPALETTE", 9)}) {
        CZelMessage message("", "D:\\MESSAGES", name, &dialog);
        message.ReadMessage(&dialog);
        EXPECT_EQ(CZelFont::m_iZelYOffset, offset) << name;
    }
}

}  // namespace

}  // namespace zel::test
