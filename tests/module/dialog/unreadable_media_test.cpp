// Directories on media that this system cannot read.
#include <cerrno>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

#include "module/contract/dialog_ids.h"
#include "support/module_fixture.h"

namespace {

/// The path for which stat fails; empty for none.
std::string g_unreadable;
int g_stat_error = 0;

}  // namespace

// Replaces the C library's function for the whole program, since no directory of a test can fail like a damaged disk.
extern "C" [[gnu::visibility("default")]] int stat(const char* __restrict path,
                                                   struct stat* __restrict status) noexcept {
    if (!g_unreadable.empty() && g_unreadable == path) return errno = g_stat_error, -1;
    return ::fstatat(AT_FDCWD, path, status, 0);
}

namespace zel::test {

namespace {

using module_test::ModuleTest;

constexpr char kUnreadableBox[] =
    "Illegal Media Detected|Use 'Copy Zelmara! files' to copy messages from Zelmara! formatted media to \n Windows "
    "formatted media before attempting to import Zelmara! messages";

class UnreadableMedia : public ModuleTest {
  protected:
    ~UnreadableMedia() override { g_unreadable.clear(); }
};

TEST_F(UnreadableMedia, AreReportedForBothDirectories) {
    g_unreadable = Native("MEDIA").string();
    for (const bool illegal : {true, false}) {
        g_stat_error = illegal ? EIO : ENOMEM;
        const auto box = [&](const char* other) { return std::vector<std::string>{illegal ? kUnreadableBox : other}; };
        RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
            NewBoxes();
            user.Type(ImportControl::kFontDirBox, "D:\\MEDIA");
            dialog.ReadDirectoryPaths();
            EXPECT_EQ(dialog.m_iStatus, ImportStatus::kBadFontDirectory);
            EXPECT_EQ(NewBoxes(), box("Invalid Directory|Invalid Font Directory: D:\\MEDIA"));
            user.Type(ImportControl::kFontDirBox, "D:\\MACHINE");
            user.Type(ImportControl::kMessageDirBox, "D:\\MEDIA");
            dialog.ReadDirectoryPaths();
            EXPECT_EQ(dialog.m_iStatus, ImportStatus::kBadMessageDirectory);
            EXPECT_EQ(NewBoxes(), box("Invalid Path|Invalid Message Path: D:\\MEDIA"));
        });
    }
}

}  // namespace

}  // namespace zel::test
