// The message boxes for a message file.
#include <gmock/gmock.h>

#include "module/contract/zel_message.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using files::MessageFile;
using module_test::Joined;
using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using testing::IsEmpty;

struct FailureCase {
    const char* name;
    void (*change)(MessageFile&);
    std::string boxes;
    bool read = false;
    std::size_t cut = 0;  // size of the truncated file in bytes, 0 for the whole file
    VideoStandard host = VideoStandard::kNtsc;
};

void Type(MessageFile& file, unsigned type, const std::string& name = {}) {
    file.psos = {type, 0, name};
}
template <typename... Fields>
std::vector<files::TabField>& Tabs(MessageFile& file, unsigned version, Fields... fields) {
    file.tabs = files::TabTable{.tab_version = version, .fields = {fields...}};
    return file.tabs->fields;
}
files::TabField TabOf(unsigned start, unsigned end, unsigned row) {
    return {.tab_start = start, .tab_end = end, .tab_row = row};
}
std::string Couldnt(const std::string& text) {
    return "Couldn't Read the Zelmara! File|" + text + "D:\\MESSAGES\\.0001";
}

std::string Mismatch(const std::string& standard) {
    return "Warning - Video Standard Mismatch Detected|The Zelmara! message being imported is " + standard +
           " message,  \n    this may result in an offset shift of the message";
}

const std::string kPalWarning = Mismatch("a PAL");
const std::string kFlashWarning = "Flash Font Unsupported|Flash Font Characters will be ignored";

class ReadMessage : public ModuleTest {};

TEST_F(ReadMessage, ShowsABoxForEachFailureAndNoneWithWarningsSkipped) {
    const auto unchanged = [](MessageFile&) {};
    const FailureCase kCases[] = {
        {"short header", unchanged, Couldnt("Invalid file: "), false, 135},
        {"short flags", unchanged, Couldnt("Invalid file: "), false, 151},
        {"picture", [](MessageFile& f) { Type(f, 714); }, ""},
        {"picture with a name", [](MessageFile& f) { Type(f, 717, "RGBA"); }, ""},
        {"type without a name", [](MessageFile& f) { Type(f, 0xFFFFFFFF); },
         Couldnt("Zelmara! file type -1 not supported: ")},
        {"named type", [](MessageFile& f) { Type(f, 1, "Some %s type"); },
         Couldnt("Zelmara! 'Some %s type' not supported: ")},
        {"type name without a NUL", [](MessageFile& f) { Type(f, 1, std::string(128, 'n')); },
         Couldnt("Zelmara! '" + std::string(128, 'n') + "' not supported: ")},
        {"PAL message", [](MessageFile& f) { f.pal = true; }, kPalWarning, true},
        {"PAL message, PAL host", [](MessageFile& f) { f.pal = true; }, "", true, 0, VideoStandard::kPal},
        {"NTSC message, PAL host", unchanged, Mismatch("an NTSC"), true, 0, VideoStandard::kPal},
        {"flash font", [](MessageFile& f) { f.flash_font.emplace(); }, kFlashWarning, true},
        {"empty palette", [](MessageFile& f) { f.palette.emplace(); },
         Couldnt("Couldn't Read Zelmara! File's Font Header: ")},
        {"unknown background", [](MessageFile& f) { f.background.emplace().tag = 0xBBBA; },
         Couldnt("Couldn't Read Zelmara! Background: ")},
        {"short background", [](MessageFile& f) { f.background.emplace().words = 1535; }, Couldnt("Invalid file: ")},
        {"tab version 3", [](MessageFile& f) { Tabs(f, 3); }, Couldnt("Couldn't Read Zelmara! Tab Table: ")},
        {"tab version 1", [](MessageFile& f) { Tabs(f, 1); },
         Couldnt("Zelmara! Tab Versions prior to 2 not supported: ")},
        {"too many tabs", [](MessageFile& f) { Tabs(f, 2).assign(201, TabOf(1, 2, 0)); },
         Couldnt("Zelmara! Maximum Tabs Exceeded: ")},
        {"bad tab row, which hides a bad tab field",
         [](MessageFile& f) { Tabs(f, 2, TabOf(2, 1, 1), TabOf(1, 1, 0), TabOf(1, 2, 0)); },
         "Zelmara! Import Error|Invalid Tab row count in D:\\MESSAGES\\.0001", true},
        {"bad tab field", [](MessageFile& f) { Tabs(f, 2, TabOf(2, 1, 0), TabOf(1, 1, 0)); },
         "Zelmara! Import Error|Invalid Tab field : D:\\MESSAGES\\.0001", true},
        {"several, in file order",
         [](MessageFile& f) {
             f.pal = true;
             f.flash_font.emplace();
             f.palette.emplace();
         },
         kPalWarning + kFlashWarning + Couldnt("Couldn't Read Zelmara! File's Font Header: ")},
    };
    for (const FailureCase& row : kCases) {
        SCOPED_TRACE(row.name);
        MessageFile file = MessageOf({files::EmptyRow(30)});
        row.change(file);
        files::Bytes bytes = files::WriteMessage(file);
        if (row.cut != 0) bytes.resize(row.cut);
        WriteFile("MESSAGES/.0001", bytes);
        const bool before_rows = row.cut != 0 || file.psos.file_type != 702;
        for (const int skip : {0, 5}) {
            OpenDialog dialog(nullptr);
            CZelFont::m_iZelYOffset = 77;
            dialog.m_iLines = ActiveLines(row.host);
            CZelFont::m_bIgnoreErrors = skip;
            CZelMessage message("", "D:\\MESSAGES", ".0001", &dialog);
            EXPECT_EQ(message.ReadMessage(&dialog), row.read);
            EXPECT_EQ(Joined(NewBoxes()), skip != 0 ? "" : row.boxes);
            EXPECT_EQ(dialog.m_bImportSkip, skip != 0 ? 1 : 0);
            EXPECT_EQ(message.m_pFileHeader != nullptr, row.cut == 0 || row.cut >= 136);
            EXPECT_EQ(CZelFont::m_iZelYOffset, before_rows ? 77 : file.pal ? 30 : 20);
        }
    }
    for (const auto& box : desktop.Boxes()) {
        EXPECT_EQ(box.style, 48U);
        EXPECT_EQ(box.owner, nullptr);
    }
}

TEST_F(ReadMessage, ShowsNoBoxForAMissingFile) {
    OpenDialog dialog(nullptr);
    CZelMessage message("", "D:\\MESSAGES", ".0001", &dialog);
    EXPECT_FALSE(message.ReadMessage(&dialog));
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(message.m_pFileHeader, nullptr);
}

}  // namespace

}  // namespace zel::test
