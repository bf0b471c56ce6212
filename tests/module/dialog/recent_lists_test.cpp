// The recent lists and the position that the import dialog stores.
#include <cstring>

#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "module/dialog/browse.h"
#include "platform/system/registry.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::ModuleTest;
using module_test::OpenDialog;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kRoot = "Software\\Kovesh\\Tavro\\ZelTrans\\";

class RecentLists : public ModuleTest {
  protected:
    void Store(const std::string& list, int index, const std::string& text) {
        settings.CreateKey(kRoot + list);
        settings.SetValue(kRoot + list, list + " " + std::to_string(index),
                          {REG_SZ, {text.c_str(), text.c_str() + text.size() + 1}});
    }
    std::string Stored(const std::string& list, int index) {
        const auto value = settings.GetValue(kRoot + list, list + " " + std::to_string(index));
        return value ? std::string(value->bytes.begin(), value->bytes.end()) : "none";
    }
    std::vector<std::string> Shown() {
        std::vector<std::string> shown;
        RunDialog([&](script::DialogDriver& user, CZelTransDlg&) { shown = user.List(ImportControl::kFontDirBox); });
        return shown;
    }
};

std::string Terminated(const std::string& text) {
    return text + '\0';
}

TEST_F(RecentLists, FirstRunHasNone) {
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_FALSE(settings.KeyExists(kRoot + "FontDir")) << "nothing listed, nothing stored";
}

TEST_F(RecentLists, GapsAreClosedAndTheOldLastEntryIsReadAgain) {
    Store("FontDir", 0, "a");
    Store("FontDir", 1, "b");
    Store("FontDir", 3, "d");
    EXPECT_THAT(Shown(), ElementsAre("a", "b", "d"));
    EXPECT_EQ(Stored("FontDir", 2), Terminated("d"));
    EXPECT_EQ(Stored("FontDir", 3), Terminated("d"));
    EXPECT_THAT(Shown(), ElementsAre("a", "b", "d", "d"));
}

TEST_F(RecentLists, AllEntriesButTheTooLongAreWrittenAndTenReadBack) {
    RunDialog([](script::DialogDriver&, CZelTransDlg& dialog) {
        for (int n = 0; n < 12; ++n) dialog::BringToTop(dialog, ImportControl::kFontDirBox, std::to_string(n).c_str());
        dialog::BringToTop(dialog, ImportControl::kFontDirBox, std::string(260, 'z').c_str());
        dialog::BringToTop(dialog, ImportControl::kFontDirBox, "5");
    });
    EXPECT_EQ(Stored("FontDir", 0), Terminated("5")) << "an entry used again moves up";
    EXPECT_EQ(Stored("FontDir", 1), Terminated("11"));
    EXPECT_EQ(Stored("FontDir", 11), Terminated("0"));
    EXPECT_EQ(Shown().size(), 10U);
}

TEST_F(RecentLists, BothWaysOfClosingStoreBothListsAndThePosition) {
    for (const bool escape : {false, true}) {
        RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
            dialog::BringToTop(dialog, ImportControl::kFontDirBox, escape ? "font 2" : "font 1");
            dialog::BringToTop(dialog, ImportControl::kMessageDirBox, "messages");
            dialog.MoveWindow(70, 80, 100, 100);
            if (escape) {
                user.PressEscape();
            } else {
                user.PressEnter();
            }
            EXPECT_EQ(dialog.GetResult(), escape ? IDCANCEL : IDOK);
        });
        EXPECT_EQ(Stored("FontDir", 0), Terminated(escape ? "font 2" : "font 1"));
        EXPECT_EQ(Stored("MessageDir", 0), Terminated("messages"));
        EXPECT_EQ(settings.GetProfileInt("ZELFTPSaveOptions", "DialogX"), 70);
        EXPECT_EQ(settings.GetProfileInt("ZELFTPSaveOptions", "DialogY"), 80);
    }
}

TEST_F(RecentLists, OnlySubKeysAreDeletedBeforeAListIsWritten) {
    OpenDialog dialog(nullptr);
    char list[] = "FontDir", name[] = "FontDir 4", other[] = "FontDir 10";
    Store("FontDir", 4, "kept");
    settings.CreateKey(kRoot + "FontDir\\FontDir 4");
    settings.CreateKey(kRoot + "FontDir\\FontDir 10");
    EXPECT_TRUE(dialog.IsZelTransRegistrySubKeyExist(list, name));
    dialog.DeleteZelTransRegistrySubKey(list);
    EXPECT_FALSE(dialog.IsZelTransRegistrySubKeyExist(list, name));
    EXPECT_TRUE(dialog.IsZelTransRegistrySubKeyExist(list, other)) << "beyond the ten";
    EXPECT_EQ(Stored("FontDir", 4), Terminated("kept"));
}

TEST_F(RecentLists, EntriesUpTo259CharactersAreReadBack) {
    OpenDialog dialog(nullptr);
    char list[] = "FontDir", out[MAX_PATH + 1];
    for (const std::size_t length : {0U, 1U, 259U, 260U, 5000U}) {
        std::string text(length, 'p');
        dialog.StoreRecentList(0, list, text.data());
        EXPECT_EQ(Stored("FontDir", 0), Terminated(text));
        std::memset(out, '#', sizeof out);
        EXPECT_EQ(dialog.RestoreRecentList(0, list, out), length <= 259) << length;
        EXPECT_EQ(out[MAX_PATH], '#');
        if (length <= 259) {
            EXPECT_EQ(out, text);
        }
    }
    EXPECT_FALSE(dialog.RestoreRecentList(1, list, out));
    settings.SetValue(kRoot + "FontDir", "FontDir 0", {REG_BINARY, std::vector<BYTE>(260, 'x')});
    EXPECT_FALSE(dialog.RestoreRecentList(0, list, out)) << "a text without a NUL";
}

}  // namespace

}  // namespace zel::test
