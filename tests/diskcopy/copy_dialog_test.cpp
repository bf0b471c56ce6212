// The copy dialog as a user drives it.
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "diskcopy/copy_controls.h"
#include "diskcopy/copy_dlg.h"
#include "platform/script/headless_desktop.h"
#include "platform/system/drives.h"
#include "platform/system/errors.h"
#include "platform/system/files.h"
#include "platform/test_dialog.h"
#include "samples/scratch_directory.h"

using namespace zel;

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// What a disk answers once, after so many good calls; 0 for a good disk.
int g_read_error = 0, g_write_error = 0, g_good_calls = 0;

bool Fails(int& error) {
    if (error == 0 || g_good_calls-- > 0) return false;
    errno = std::exchange(error, 0);
    return true;
}

}  // namespace

// These replace the system's functions, in the library's calls too.
extern "C" ssize_t read(int descriptor, void* buffer, size_t size) {
    return Fails(g_read_error) ? -1 : syscall(SYS_read, descriptor, buffer, size);
}
extern "C" ssize_t write(int descriptor, const void* buffer, size_t size) {
    return Fails(g_write_error) ? -1 : syscall(SYS_write, descriptor, buffer, size);
}

namespace {

std::string g_shown_log;
HINSTANCE g_resources_of_caller = nullptr;

void ShowLog(char* path) {
    g_shown_log = path;
    path[0] = '\0';  // the buffer is the callee's to write to
    g_resources_of_caller = AfxGetModuleState()->m_hCurrentResourceHandle;
}

/// A scratch disk D: and a scratch target E:.
class Scratch {
  public:
    Scratch() {
        for (const char drive : {'D', 'E'}) {
            fs::create_directory(path / std::string(1, drive));
            system::MountDrive(drive, (path / std::string(1, drive)).string());
        }
    }
    ~Scratch() {
        for (const char drive : {'D', 'E'}) system::MountDrive(drive, "");
    }

    /// Makes files, a line "NAME TYPE SIZE" for each: its first number, big-endian, and its bytes. "NAME link TARGET",
    /// "NAME pipe" and "NAME folder" are the other kinds.
    void Make(const std::string& lines) const {
        std::istringstream in(lines);
        for (std::string line, name, kind, more; std::getline(in, line);) {
            more.clear();
            std::istringstream(line) >> name >> kind >> more;
            fs::create_directories((path / name).parent_path());
            if (kind == "link") {
                fs::create_symlink(more, path / name);
            } else if (kind == "pipe") {
                mkfifo((path / name).c_str(), 0600);
            } else if (kind == "folder") {
                fs::create_directories(path / name);
            } else {
                std::string bytes(std::stoul(more), 'x');
                for (std::size_t i = 0; i < 4; ++i) bytes[i] = static_cast<char>(std::stoul(kind) >> (24 - 8 * i));
                std::ofstream(path / name, std::ios::binary) << bytes;
            }
        }
    }

    /// "name size" of every file below a folder, in order.
    std::vector<std::string> Files(const std::string& folder) const {
        std::vector<std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(path / folder)) {
            if (!entry.is_directory())
                files.push_back(entry.path().lexically_relative(path / folder).string() + " " +
                                std::to_string(samples_test::ReadAll(entry.path()).size()));
        }
        std::sort(files.begin(), files.end());
        return files;
    }

  private:
    const samples_test::ScratchDirectory m_directory;

  public:
    const fs::path path = m_directory.Path();
};

class CopyDialogTest : public testing::Test {
  protected:
    CopyDialogTest() {
        seam::SetDesktop(&m_desktop);
        g_shown_log.clear();
    }
    ~CopyDialogTest() override {
        g_read_error = g_write_error = 0;
        seam::SetDesktop(nullptr);
    }

    void Run(std::function<void(script::DialogDriver&)> user, void (*show)(char*) = &ShowLog) {
        m_desktop.HandleDialog(diskcopy::kCopyDialog, [&user](CDialog& dialog) {
            script::DialogDriver driver(dialog);
            user(driver);
        });
        CCopyDlg(nullptr).OpenDialog(show);
    }

    /// Copies once. @return the status line.
    std::string Copy(const std::string& source = "D:\\", const std::string& target = "E:\\", bool overwrite = false) {
        std::string status;
        Run([&](script::DialogDriver& user) {
            user.Type(diskcopy::kCopySourceEdit, source);
            user.Type(diskcopy::kCopyTargetEdit, target);
            if (overwrite) user.Check(diskcopy::kCopyOverwriteRadio);
            user.PressEnter();
            status = user.Text(diskcopy::kCopyStatus);
        });
        return status;
    }

    std::string LastBox() const { return m_desktop.Boxes().empty() ? "" : m_desktop.Boxes().back().text; }
    std::string Log() const { return samples_test::ReadAll(m_scratch.path / "E/CopyLog.txt"); }

    const test::ResourcesInForce m_resources;
    const Scratch m_scratch;
    script::HeadlessDesktop m_desktop;
};

template <typename Case>
class CopyTable : public CopyDialogTest, public testing::WithParamInterface<Case> {};
constexpr auto kCaseName = [](const auto& each) { return std::string(each.param.name); };

struct CopyCase {
    const char* name;
    std::string made;
    const char* source;
    bool overwrite;
    const char* status;
    std::vector<std::string> files;  // on the target, without the log
    const char* logged = "";
};
using Copying = CopyTable<CopyCase>;

TEST_P(Copying, LeavesTheRightFiles) {
    m_scratch.Make(GetParam().made);
    EXPECT_EQ(Copy(GetParam().source, "E:\\", GetParam().overwrite), GetParam().status);
    EXPECT_THAT(Log(), HasSubstr(GetParam().logged));
    fs::remove(m_scratch.path / "E/CopyLog.txt");
    EXPECT_EQ(m_scratch.Files("E"), GetParam().files);
    EXPECT_EQ(LastBox(), "");
}

const std::string kLong(246, 'n');
INSTANTIATE_TEST_SUITE_P(
    Each, Copying,
    testing::Values(
        CopyCase{"a_disk_in_any_case_keeps_its_folders",
                 "D/messages/.0012 702 8\nD/messages/Promo 714 5\nD/messages/.0007 500 6\nD/Machine/.0012 500 9\n"
                 "D/.0001 702 8",
                 "D:\\",
                 false,
                 "4 copied (28 bytes)",
                 {"MACHINE/.0012 9", "MESSAGES/.0007 6", "MESSAGES/.0012 8", "MESSAGES/Promo 5"}},
        CopyCase{"a_single_folder_is_sorted_by_type",
                 "D/mixed/.0012 702 8\nD/mixed/.0013 500 8\nD/mixed/.0014 717 8\nD/mixed/.0015 701 8\n"
                 "D/mixed/MACHINES/.0016 500 8",
                 "d:/MIXED",
                 false,
                 "3 copied (24 bytes)",
                 {"MACHINE/.0013 8", "MESSAGES/.0012 8", "MESSAGES/.0014 8"},
                 "Neither messages nor fonts: 1\r\n"},
        CopyCase{"files_that_are_there_are_skipped",
                 "D/MESSAGES/.0012.TN 702 8\nD/MESSAGES/.0013 702 8\nE/messages/.0012.tn 1 5",
                 "D:\\",
                 false,
                 "1 copied (8 bytes), 1 skipped",
                 {"messages/.0012.tn 5", "messages/.0013 8"},
                 "MESSAGES\\.0012.TN  (it is there already)"},
        CopyCase{"or_overwritten_a_link_too",
                 "D/MESSAGES/.0012.TN 702 8\nD/MESSAGES/.0013 702 8\nE/messages/.0012.tn 1 5\nE/kept 1 5\n"
                 "E/messages/.0013 link ../kept",
                 "D:\\",
                 true,
                 "2 copied (16 bytes)",
                 {"kept 5", "messages/.0012.tn 8", "messages/.0013 8"}},
        CopyCase{"links_devices_and_unreachable_names_are_passed_over",
                 "outside/.0001 500 8\nD/MESSAGES/.0012 702 8\nD/MESSAGES/a\\b\x1B 702 8\nD/MACHINE link ../outside\n"
                 "D/MESSAGES/.0001 link ../../outside/.0001\nD/MESSAGES/.0002 pipe",
                 "D:\\",
                 false,
                 "1 copied (8 bytes)",
                 {"MESSAGES/.0012 8"},
                 "MESSAGES\\a\\b?: no import can open a file of that name"},
        CopyCase{"a_file_that_fails_does_not_hinder_the_next",
                 "D/MESSAGES/.0012 702 8\nD/MESSAGES/.0013 702 8\nD/MACHINE/.0013 500 8\nE/MESSAGES/.0012 folder\n"
                 "E/MACHINE 1 6",
                 "D:\\",
                 true,
                 "1 copied (8 bytes), 2 failed",
                 {"MACHINE 6", "MESSAGES/.0013 8"},
                 "MESSAGES\\.0012  (what is there is no file)"},
        CopyCase{"what_a_killed_run_has_left_goes",
                 "D/MESSAGES/.0012 702 8\nE/MESSAGES/zelcopy.part 1 4",
                 "D:\\",
                 false,
                 "1 copied (8 bytes)",
                 {"MESSAGES/.0012 8"}},
        CopyCase{"a_path_that_no_import_can_open_is_not_made",
                 "D/MESSAGES/" + kLong + "n 702 8\nD/MESSAGES/" + kLong + "mm 702 8",
                 "D:\\",
                 false,
                 "1 copied (8 bytes), 1 failed",
                 {"MESSAGES/" + kLong + "n 8"},
                 "(its path would be longer than 259 characters)"}),
    kCaseName);

struct RefusedCase {
    const char* name;
    const char* source;
    const char* target;
    const char* message;
};
using Refusal = CopyTable<RefusedCase>;

TEST_P(Refusal, IsShownAndNothingIsWritten) {
    m_scratch.Make("D/MESSAGES/.0012 702 8\nE/MESSAGES link ../D/MESSAGES\nD/empty folder\nE/busy folder");
    system::MountUnreadableDrive('F', ERROR_NOT_DOS_DISK);
    const int busy = open((m_scratch.path / "E/busy").c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(busy, LOCK_EX), 0);
    const auto before = m_scratch.Files("");
    Copy(GetParam().source, GetParam().target);
    EXPECT_THAT(LastBox(), HasSubstr(GetParam().message));
    EXPECT_EQ(m_scratch.Files(""), before);
    EXPECT_EQ(g_shown_log, "");
    close(busy);
    system::MountDrive('F', "");
}

INSTANTIATE_TEST_SUITE_P(
    Each, Refusal,
    testing::Values(
        RefusedCase{"no_source", "", "E:\\X", "Name the source folder."},
        RefusedCase{"no_target", "D:\\", "", "Name the target folder."},
        RefusedCase{"missing_source", "D:\\no", "E:\\X", "D:\\no can't be read.\nNo such file or directory"},
        RefusedCase{"foreign_disk", "F:\\", "E:\\X",
                    "The source F:\\ can't be used.\nThe specified disk or diskette cannot be accessed."},
        RefusedCase{"target_without_a_drive", "D:\\", "Q:\\X", "The system cannot find the path specified."},
        RefusedCase{"target_that_is_a_file", "D:\\", "D:\\messages\\.0012", "Not a directory"},
        RefusedCase{"nothing_to_copy", "D:\\empty", "E:\\X", "no messages and fonts in D:\\empty."},
        RefusedCase{"the_source_itself", "D:\\", "D:\\empty\\..", "It is the source itself"},
        RefusedCase{"the_disk_of_the_source", "D:\\MESSAGES", "D:\\", "It is the source itself"},
        RefusedCase{"a_link_to_the_source", "D:\\", "E:\\", "It is the source itself"},
        RefusedCase{"two_runs_at_once", "D:\\", "E:\\busy", "Another copy to it is under way."}),
    kCaseName);

struct FaultCase {
    const char* name;
    int read_error, write_error, escape_at;  // the asking for the key that is answered; -1 for none
    const char* status;
    const char* logged;
};
using FailingDisk = CopyTable<FaultCase>;

// One file of three pieces, then two short ones; the disk fails at the second piece.
TEST_P(FailingDisk, LeavesNoHalfFile) {
    m_scratch.Make("D/MESSAGES/.0001 702 150000\nD/MESSAGES/.0002 702 8\nD/MACHINE/.0003 500 8");
    int asked = 0;
    m_desktop.AnswerKeys([&](int) {
        if (asked == 1) {  // the run begins
            g_read_error = GetParam().read_error;
            g_write_error = GetParam().write_error;
            g_good_calls = 1;
        }
        return asked++ == GetParam().escape_at;
    });
    EXPECT_EQ(Copy(), GetParam().status);
    EXPECT_THAT(Log(), HasSubstr(GetParam().logged));
    EXPECT_THAT(m_scratch.Files("E"),
                testing::Each(testing::AnyOf("MESSAGES/.0001 150000", "MESSAGES/.0002 8", "MACHINE/.0003 8",
                                             testing::StartsWith("CopyLog.txt"))));
}

INSTANTIATE_TEST_SUITE_P(
    Each, FailingDisk,
    testing::Values(FaultCase{"source_that_can_not_be_read", EIO, 0, -1, "2 copied (16 bytes), 1 failed",
                              "MESSAGES\\.0001  (can't be read: Input/output error)"},
                    FaultCase{"target_that_can_not_be_written", 0, EIO, -1, "2 copied (16 bytes), 1 failed",
                              "MESSAGES\\.0001  (can't be written: Input/output error)"},
                    FaultCase{"full_target", 0, ENOSPC, -1,
                              "0 copied (0 bytes), 1 failed, 2 not copied; the target disk is full",
                              "MESSAGES\\.0001  (can't be written: No space left on device)"},
                    FaultCase{"escape_in_a_file", 0, 0, 2, "0 copied (0 bytes), 3 not copied; stopped by the user",
                              "MESSAGES\\.0001  (stopped while it was being copied)"},
                    FaultCase{"escape_between_files", 0, 0, 4,
                              "1 copied (150,000 bytes), 2 not copied; stopped by the user",
                              "not copied                 MACHINE\\.0003\r\n"},
                    FaultCase{"escape_from_before", 0, 0, 0, "3 copied (150,016 bytes)", "copied "}),
    kCaseName);

TEST_F(CopyDialogTest, ListsWhatItWillCopyOnceASourceIsPicked) {
    m_scratch.Make("D/MESSAGES/.0012 702 8\nD/MACHINE/.0012 500 9\nD/MACHINE/.0013 link .0012");
    m_desktop.QueueFile((m_scratch.path / "D/MACHINE/.0012").string());
    m_desktop.QueueFile((m_scratch.path / "E/any name").string());
    Run([](script::DialogDriver& user) {
        EXPECT_TRUE(user.IsChecked(diskcopy::kCopySkipRadio));
        user.Press(diskcopy::kCopySourceBrowse);
        EXPECT_EQ(user.Text(diskcopy::kCopySourceEdit), "D:\\");
        EXPECT_THAT(user.List(diskcopy::kCopyFileList),
                    ElementsAre("MESSAGES\\.0012  (message, 8 bytes)", "MACHINE\\.0012  (font, 9 bytes)"));
        EXPECT_EQ(user.Text(diskcopy::kCopyStatus), "Files to copy: 2; passed over: 1");
        user.Press(diskcopy::kCopyTargetBrowse);
        EXPECT_EQ(user.Text(diskcopy::kCopyTargetEdit), "E:\\");
        user.Type(diskcopy::kCopySourceEdit, "D:\\MACHINE");
        EXPECT_THAT(user.List(diskcopy::kCopyFileList), IsEmpty()) << "another source";
        user.Press(diskcopy::kCopyShowButton);
        EXPECT_THAT(user.List(diskcopy::kCopyFileList), ElementsAre(".0012  (font, 9 bytes)"));
    });
}

TEST_F(CopyDialogTest, ShowsItsProgressAndStopsByItsButton) {
    m_scratch.Make("D/MESSAGES/.0001 702 8\nD/MESSAGES/.0002 702 8");
    std::vector<std::string> seen;
    Run([&](script::DialogDriver& user) {
        m_desktop.AnswerKeys([&](int) {
            seen.push_back(user.Text(diskcopy::kCopyStatus));
            EXPECT_FALSE(user.IsEnabled(IDOK));
            EXPECT_EQ(user.Text(IDCANCEL), "Stop");
            if (seen.size() == 3) user.Press(IDCANCEL);
            return false;
        });
        user.Type(diskcopy::kCopySourceEdit, "D:\\");
        user.Type(diskcopy::kCopyTargetEdit, "E:\\");
        user.Press(IDOK);
        EXPECT_THAT(seen, ElementsAre("Files to copy: 2", "Files to copy: 2", "Copying 1 of 2: MESSAGES\\.0001"));
        EXPECT_EQ(user.Text(diskcopy::kCopyStatus), "1 copied (8 bytes), 1 not copied; stopped by the user");
        EXPECT_EQ(user.Text(IDCANCEL), "Close");
        user.PressEscape();
    });
    EXPECT_FALSE(m_desktop.Modals().at(0).left_open);
}

TEST_F(CopyDialogTest, HandsTheLogOfTheLastRunToItsCallerOnceItIsClosed) {
    m_scratch.Make("D/MESSAGES/.0001 702 1234");
    const HINSTANCE own = AfxGetModuleState()->m_hCurrentResourceHandle;
    Run([](script::DialogDriver&) {});
    EXPECT_EQ(g_shown_log, "") << "nothing was copied";
    Run([](script::DialogDriver& user) {
        user.Type(diskcopy::kCopySourceEdit, "D:\\");
        user.Type(diskcopy::kCopyTargetEdit, "E:\\new\\folder");
        for (int run = 0; run < 2; ++run) user.Press(IDOK);
        EXPECT_EQ(g_shown_log, "");
    });
    EXPECT_EQ(g_shown_log, "E:\\new\\folder\\CopyLog-2.txt");
    EXPECT_EQ(g_resources_of_caller, own);
    std::string log = samples_test::ReadAll(m_scratch.path / "E/new/folder/CopyLog.txt");
    log.erase(0, log.find('\n') + 1);  // the time
    EXPECT_EQ(log,
              "Source: D:\\\r\nTarget: E:\\new\\folder\r\nFiles that were there already: skipped\r\n\r\n"
              "copied              1,234  MESSAGES\\.0001  (message)\r\n\r\n1 copied (1,234 bytes)\r\n");
    Run([](script::DialogDriver& user) { user.Press(IDOK); }, nullptr);
}

}  // namespace
