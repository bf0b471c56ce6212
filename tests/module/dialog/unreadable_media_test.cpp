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

struct MediaCase {
    const char* name;
    int error;
    bool illegal_media;
};
void PrintTo(const MediaCase& row, std::ostream* out) {
    *out << row.name;
}

class UnreadableMedia : public ModuleTest, public testing::WithParamInterface<MediaCase> {
  protected:
    UnreadableMedia() {
        g_unreadable = Native("MEDIA").string();
        g_stat_error = GetParam().error;
    }
    ~UnreadableMedia() override { g_unreadable.clear(); }
};

TEST_P(UnreadableMedia, AreReportedForBothDirectories) {
    RunDialog([this](script::DialogDriver& user, CZelTransDlg& dialog) {
        NewBoxes();
        user.Type(ImportControl::kFontDirBox, "D:\\MEDIA");
        dialog.ReadDirectoryPaths();
        EXPECT_EQ(dialog.m_iStatus, ImportStatus::kBadFontDirectory);
        EXPECT_EQ(NewBoxes(), std::vector<std::string>{GetParam().illegal_media
                                                           ? kUnreadableBox
                                                           : "Invalid Directory|Invalid Font Directory: D:\\MEDIA"});
        user.Type(ImportControl::kFontDirBox, "D:\\MACHINE");
        user.Type(ImportControl::kMessageDirBox, "D:\\MEDIA");
        dialog.ReadDirectoryPaths();
        EXPECT_EQ(dialog.m_iStatus, ImportStatus::kBadMessageDirectory);
        EXPECT_EQ(NewBoxes(),
                  std::vector<std::string>{GetParam().illegal_media ? kUnreadableBox
                                                                    : "Invalid Path|Invalid Message Path: D:\\MEDIA"});
    });
}

INSTANTIATE_TEST_SUITE_P(
    Each, UnreadableMedia,
    testing::Values(MediaCase{"damaged_sector", EIO, true}, MediaCase{"no_disk", ENOMEDIUM, true},
                    MediaCase{"foreign_disk", EMEDIUMTYPE, true}, MediaCase{"no_device", ENXIO, true},
                    MediaCase{"lost_device", ENODEV, true}, MediaCase{"damaged_structure", EUCLEAN, true},
                    MediaCase{"wrong_checksum", EBADMSG, true}, MediaCase{"ended_server", ENOTCONN, true},
                    MediaCase{"stale_mount", ESTALE, true}, MediaCase{"no_permission", EACCES, false},
                    MediaCase{"long_name", ENAMETOOLONG, false}, MediaCase{"no_memory", ENOMEM, false}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace zel::test
