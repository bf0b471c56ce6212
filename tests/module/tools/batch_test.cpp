// The batch dialog: runs over a range of ids, for an import and for an export.
#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "module/contract/export_window.h"
#include "module/contract/host_messages.h"
#include "module/contract/zel_trans_export.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::PlainFont;
using module_test::WindowMessage;
using testing::ElementsAre;
using testing::IsEmpty;

class Batch : public ModuleTest {
  protected:
    Batch() {
        on_message = [this](const WindowMessage& sent) { Record(sent); };
    }

    /// Messages 5, 7 and 8. There is no message 6, and 8 has no font.
    void WriteDisk() const {
        WriteFont(1, PlainFont());
        for (const char* name : {".0005", ".0007"}) WriteMessage(MessageOf({files::RowFromText(60, "AB", 0, 0)}), name);
        files::MessageFile without_font = MessageOf({files::RowFromText(60, "A", 0, 0)});
        without_font.header.font_numbers[0] = 2;
        WriteMessage(without_font, ".0008");
    }

    /// Presses Batch Convert in the import dialog, then types the range and presses OK in the batch dialog. A dialog
    /// that remains open is closed.
    void Run(const std::string& start, const std::string& end, bool skip_warnings = true) {
        settings.SetProfileInt("ZELFNTSaveOptions", "SkipWarnings", skip_warnings ? 1 : 0);
        HandleBatch([=, this](script::DialogDriver& user) {
            user.Type(BatchControl::kStartIdEdit, start);
            user.Type(BatchControl::kEndIdEdit, end);
            user.Press(IDOK);
            open_dialog = user.Caption() + "|" + user.Text(BatchControl::kStartIdEdit) + "|" +
                          user.Text(BatchControl::kEndIdEdit);
        });
        RunDialog([](script::DialogDriver& user, CZelTransDlg&) { user.Press(ImportControl::kBatchButton); });
    }

    void HandleBatch(std::function<void(script::DialogDriver&)> user) {
        desktop.HandleDialog(kBatchDialog, [this, user = std::move(user)](CDialog& dialog) {
            batch = &dialog;
            script::DialogDriver driver(dialog);
            user(driver);
            ended = dialog.HasEnded();
            batch = nullptr;
        });
    }

    void Record(const WindowMessage& sent) {
        if (sent.message == kMsgImportDone)
            events.push_back(std::string("read ") +
                             reinterpret_cast<CZelTransDlg*>(sent.lParam)->m_sMessageID.GetString());
        if (sent.message == kMsgRecord) {
            EXPECT_EQ(sent.target, 'h');
            EXPECT_EQ(sent.wParam, 0U);
            events.push_back("record " + std::to_string(sent.lParam) + " | " +
                             script::DialogDriver(*batch).Text(BatchControl::kStatusLabel));
        }
    }

    CDialog* batch = nullptr;
    bool ended = false;
    std::string open_dialog;
    std::vector<std::string> events;
};

TEST_F(Batch, OpensWithTheIdOfTheImportDialogAndTheOptionsHidden) {
    HandleBatch([](script::DialogDriver& user) {
        EXPECT_EQ(user.Caption(), "Import Batch Convert");
        EXPECT_EQ(user.Text(BatchControl::kStartIdEdit), ".0031");
        EXPECT_EQ(user.Text(BatchControl::kEndIdEdit), ".0031");
        EXPECT_FALSE(user.IsVisible(BatchControl::kSkipWarningsCheck));
        EXPECT_FALSE(user.IsVisible(BatchControl::kSkipNuvoOutCheck));
        user.Press(IDCANCEL);
    });
    RunDialog([](script::DialogDriver& user, CZelTransDlg&) {
        user.Type(ImportControl::kMessageIdEdit, ".0031");
        user.Press(ImportControl::kBatchButton);
    });
    EXPECT_TRUE(ended);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(Batch, RecordsWhatIsImportedAndSkipsTheRest) {
    WriteDisk();
    WriteFile("MESSAGES/.0009", "not a message, and long enough for one header");
    Run(".0005", "0009");
    EXPECT_THAT(events, ElementsAre("read .0005", "record 5 | Recording .0005", "read .0007",
                                    "record 7 | Recording .0007", "read .0008", "record 8 | Recording .0008"));
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_TRUE(ended);
}

TEST_F(Batch, ReportsAMissingMessageUnlessWarningsAreSkipped) {
    Run("1", "2", false);
    EXPECT_EQ(Boxes().size(), 4U) << "two for the name lists, one for each id";
    EXPECT_THAT(events, IsEmpty());
    EXPECT_TRUE(ended);
}

TEST_F(Batch, StartsWithIdZeroForAnEmptyStart) {
    for (const char* name : {".0000", ".0001"}) WriteMessage(MessageOf({files::RowFromText(60, "A", 0, 0)}), name);
    Run("", "1");
    EXPECT_THAT(events,
                ElementsAre("read .0000", "record 0 | Recording .0000", "read .0001", "record 1 | Recording .0001"));
}

struct RefusedRange {
    const char* name;
    const char* start;
    const char* end;
    const char* box;
};

TEST_F(Batch, ReportsARangeThatItRefusesAndRemains) {
    WriteDisk();
    for (const RefusedRange& row : {
             RefusedRange{"two dots", "..5", "7", "Invalid Start ID|Non-numeric Start ID: ..5"},
             {"minus", "-5", "x", "Invalid Start ID|Non-numeric Start ID: -5"},
             {"blank", ".5 ", "7", "Invalid Start ID|Non-numeric Start ID: .5 "},
             {"dot inside the end", "5", ".7.0", "Invalid End ID|Non-numeric End ID: .7.0"},
             {"both empty", "", "", "Invalid Range|Invalid Range: 0000 - 0000 "},
             {"end above the largest", "5", "10000", "Invalid Range|Invalid Range: 0005 - 10000 "},
             {"start above the end", "8", "7", "Invalid Range|Invalid Range: 0008 - 0007 "},
             {"larger than an int", "99999999999", "7", "Invalid Range|Invalid Range: 2147483647 - 0007 "},
         }) {
        SCOPED_TRACE(row.name);
        Run(row.start, row.end);
        EXPECT_THAT(NewBoxes(), ElementsAre(row.box));
        EXPECT_EQ(desktop.Boxes().back().style, 48U);
        EXPECT_FALSE(ended);
        EXPECT_EQ(open_dialog, std::string("Import Batch Convert|") + row.start + "|" + row.end);
        EXPECT_THAT(events, IsEmpty());
    }
}

TEST_F(Batch, StopsAtAnyCheckOfEscape) {
    WriteDisk();
    struct {
        /// The check that finds the key pressed.
        int check;
        std::vector<std::string> events;
    } const cases[] = {
        {1, {}},
        {2, {"read .0005"}},  // pressed while the message is read, so it is not recorded
        {3, {"read .0005", "record 5 | Recording .0005"}},
        {4, {"read .0005", "record 5 | Recording .0005"}},  // while a missing one is looked for
    };
    for (const auto& row : cases) {
        events.clear();
        int checks = 0;
        desktop.AnswerKeys([&](int key) { return key == VK_ESCAPE && ++checks == row.check; });
        Run("5", "7");
        EXPECT_EQ(events, row.events) << row.check;
        EXPECT_EQ(checks, row.check);
        EXPECT_TRUE(ended);
    }
}

TEST_F(Batch, SetsSkipWarningsOfTheImportDialog) {
    WriteDisk();
    settings.SetProfileInt("ZELFNTSaveOptions", "SkipWarnings", 7);
    HandleBatch([](script::DialogDriver& user) {
        user.Type(BatchControl::kStartIdEdit, "5");
        user.Type(BatchControl::kEndIdEdit, "5");
        user.Press(IDOK);
    });
    RunDialog([](script::DialogDriver& user, CZelTransDlg& dialog) {
        user.Press(ImportControl::kBatchButton);
        EXPECT_EQ(dialog.m_bImportSkip, 1);
        EXPECT_TRUE(user.IsChecked(ImportControl::kSkipWarningsCheck));
    });
    EXPECT_EQ(settings.GetProfileInt("ZELFNTSaveOptions", "SkipWarnings"), 1);
}

TEST_F(Batch, RestoresTheNuvoOutputAfterAnyRun) {
    WriteDisk();
    for (const char* start : {"5", "wrong"}) {
        std::string sent;
        BYTE state = 0xC8;
        on_message = [&](const WindowMessage& message) {
            if (message.message != kMsgNuvoOut) return;
            if (message.wParam == 1) *reinterpret_cast<BYTE*>(message.lParam) = state;
            if (message.wParam == 2) state = static_cast<BYTE>(message.lParam);
            sent += std::to_string(message.wParam) + ":" + std::to_string(state) + " ";
        };
        HandleBatch([&](script::DialogDriver& user) {
            static_cast<CWnd*>(batch->GetDlgItem(BatchControl::kSkipNuvoOutCheck))->SendMessage(BM_SETCHECK, 1);
            user.Type(BatchControl::kStartIdEdit, start);
            user.Type(BatchControl::kEndIdEdit, "5");
            user.Press(IDOK);
        });
        RunDialog([](script::DialogDriver& user, CZelTransDlg&) { user.Press(ImportControl::kBatchButton); });
        EXPECT_EQ(sent, "1:200 2:0 2:200 ") << start;
    }
}

class BatchExport : public Batch {
  protected:
    /// The host has every message with an even id.
    void Export(const std::string& start, const std::string& end, CWnd* export_window) {
        HandleBatch([=](script::DialogDriver& user) {
            EXPECT_EQ(user.Caption(), "Batch Export");
            EXPECT_EQ(user.Text(BatchControl::kStartIdEdit) + user.Text(BatchControl::kEndIdEdit), "");
            user.Type(BatchControl::kStartIdEdit, start);
            user.Type(BatchControl::kEndIdEdit, end);
            user.Press(IDOK);
        });
        CString path("C:\\OUT");
        EXPECT_TRUE(CZelTransExport().ZelBatchExport(&Host(), path, export_window));
    }

    LRESULT Answer(const WindowMessage& sent) override {
        return sent.message == kMsgHasMessage && sent.target == 'm' && sent.wParam % 2 == 0 ? 1 : 0;
    }
};

TEST_F(BatchExport, AcceptsAnyFlagAWindowWithoutOneAndNoWindow) {
    CZelExportWnd flagged;
    flagged.m_bExportFlag = 4;
    for (CWnd* window : std::initializer_list<CWnd*>{&Host(), nullptr, &flagged}) {
        Export("2", "2", window);
        EXPECT_TRUE(ended);
    }
    EXPECT_EQ(Order(), "1125 1190 1189 1125 1125 1168");
}

}  // namespace

}  // namespace zel::test
