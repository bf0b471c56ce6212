#include "base/whole_file.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/regular_file.h"
#include "samples/scratch_directory.h"

namespace {

/// The error that a file without a name gives, as on a file system that has none; 0 where they work.
int g_nameless_error = 0;
/// Calls of read and write that a signal interrupts before each of them works.
int g_interrupts = 0;
/// What one call of read or write moves at most.
constexpr std::size_t kPiece = 3;
bool g_in_pieces = false;
/// The error that writing or syncing gives once; 0 for none.
int g_write_error = 0, g_sync_error = 0;
/// What was synced, in order: f for a file, d for a directory.
std::string g_synced;

std::size_t Piece(std::size_t size) {
    return g_in_pieces ? std::min(size, kPiece) : size;
}

bool Interrupted() {
    if (g_interrupts == 0) return false;
    --g_interrupts;
    errno = EINTR;
    return true;
}

}  // namespace

// These replace the system's functions.
extern "C" int openat(int directory, const char* name, int flags, ...) {
    if ((flags & O_TMPFILE) == O_TMPFILE && g_nameless_error != 0) return errno = g_nameless_error, -1;
    va_list more;
    va_start(more, flags);
    const auto mode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(more, mode_t) : mode_t{0};
    va_end(more);
    return static_cast<int>(syscall(SYS_openat, directory, name, flags, mode));
}
extern "C" ssize_t read(int descriptor, void* buffer, size_t size) {
    return Interrupted() ? -1 : syscall(SYS_read, descriptor, buffer, Piece(size));
}
extern "C" ssize_t write(int descriptor, const void* buffer, size_t size) {
    if (g_write_error != 0) return errno = std::exchange(g_write_error, 0), -1;
    return Interrupted() ? -1 : syscall(SYS_write, descriptor, buffer, Piece(size));
}
extern "C" int fsync(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) == 0) g_synced += S_ISDIR(status.st_mode) ? 'd' : 'f';
    if (g_sync_error != 0) return errno = std::exchange(g_sync_error, 0), -1;
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace zel::test {

namespace {

using samples_test::ReadAll;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

/// With the error of a file system that has no nameless files, and without.
class WholeFile : public testing::TestWithParam<int> {
  protected:
    WholeFile() { g_nameless_error = GetParam(); }
    ~WholeFile() override { g_nameless_error = 0; }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_scratch.Path())) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    samples_test::ScratchDirectory m_scratch;
    std::filesystem::path m_file = m_scratch.Path() / "file";
};
INSTANTIATE_TEST_SUITE_P(Each, WholeFile, testing::Values(0, EOPNOTSUPP),
                         [](const auto& each) { return each.param == 0 ? "nameless" : "named"; });

TEST_P(WholeFile, OfTheLongestNameReplacesWhatWasThere) {
    m_file = m_scratch.Path() / std::string(255, 'n');
    base::WriteWholeFile(m_file, "long before");
    base::WriteWholeFile(m_file, std::string_view("a\0b", 3));
    EXPECT_EQ(ReadAll(m_file), std::string("a\0b", 3));
    EXPECT_THAT(Names(), ElementsAre(m_file.filename()));
}

TEST_P(WholeFile, ReplacesALinkAndNotItsTarget) {
    base::WriteWholeFile(m_scratch.Path() / "target", "kept");
    std::filesystem::create_symlink("target", m_file);
    base::WriteWholeFile(m_file, "new");
    EXPECT_FALSE(std::filesystem::is_symlink(m_file));
    EXPECT_EQ(ReadAll(m_scratch.Path() / "target"), "kept");
}

TEST_P(WholeFile, IsOnTheDiskBeforeItHasItsNameAndWithIt) {
    g_synced.clear();
    base::WriteWholeFile(m_file, "x");
    base::WriteWholeFile(m_file, "y");
    EXPECT_EQ(g_synced, "fdfd");
    EXPECT_EQ(base::TryWriteWholeFile(m_file, "z", base::Durability::kUnsynced), std::error_code());
    EXPECT_EQ(g_synced, "fdfd");
}

TEST_P(WholeFile, LeavesTheOldFileAfterAnError) {
    base::WriteWholeFile(m_file, "old");
    g_write_error = ENOSPC;
    EXPECT_EQ(base::TryWriteWholeFile(m_file, "new"), std::errc::no_space_on_device);
    g_sync_error = EIO;
    EXPECT_EQ(base::TryWriteWholeFile(m_file, "new"), std::errc::io_error);
    EXPECT_EQ(ReadAll(m_file), "old");
    EXPECT_THAT(Names(), ElementsAre("file"));
}

TEST_P(WholeFile, LeavesNothingWhereItCantBe) {
    EXPECT_EQ(base::TryWriteWholeFile(m_file / "file", "x"), std::errc::no_such_file_or_directory);
    base::WriteWholeFile(m_file, "x");
    EXPECT_EQ(base::TryWriteWholeFile(m_file / "file", "x"), std::errc::not_a_directory);
    std::filesystem::remove(m_file);
    std::filesystem::create_directory(m_file);
    EXPECT_THAT([&] { base::WriteWholeFile(m_file, "x"); },
                ThrowsMessage<std::runtime_error>(AllOf(StartsWith(m_file.string()), HasSubstr("directory"))));
    EXPECT_THAT(Names(), ElementsAre("file"));
}

TEST_P(WholeFile, KeepsThePermissionsOfTheOneBefore) {
    const mode_t mask = ::umask(022);
    const auto mode = [this] {
        struct stat status {};
        ::stat(m_file.c_str(), &status);
        return status.st_mode & 07777;
    };
    base::WriteWholeFile(m_file, "x");
    EXPECT_EQ(mode(), mode_t{0644});
    for (const mode_t kept : {0600, 0640, 0664, 0755, 0400}) {
        ASSERT_EQ(::chmod(m_file.c_str(), kept), 0);
        base::WriteWholeFile(m_file, "y");
        EXPECT_EQ(mode(), kept);
    }
    ::umask(mask);
}

/// Links that somebody has put under the names that a draft could have next.
TEST_P(WholeFile, FollowsNoLinkUnderATemporaryName) {
    base::WriteWholeFile(m_file, "old");
    base::WriteWholeFile(m_scratch.Path() / "target", "kept");
    for (unsigned n = 0; n < 200; ++n) {
        const std::string name = ".zeltrans-" + std::to_string(::getpid()) + "-" + std::to_string(n) + ".part";
        std::filesystem::create_symlink("target", m_scratch.Path() / name);
    }
    const std::size_t names = Names().size();
    base::WriteWholeFile(m_file, "new");
    EXPECT_EQ(ReadAll(m_file), "new");
    EXPECT_EQ(ReadAll(m_scratch.Path() / "target"), "kept");
    EXPECT_EQ(Names().size(), names);
}

TEST_P(WholeFile, LeavesNothingOfAKilledProgram) {
    const pid_t child = ::fork();
    if (child == 0) {
        base::UnfinishedFile file(m_file);
        file.Write("half");
        ::raise(SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
    // Without nameless files it can't be helped.
    EXPECT_EQ(Names().size(), GetParam() == 0 ? 0U : 1U);
}

TEST_P(WholeFile, KeepsAnotherFileOfItsNameIfAsked) {
    const auto write = [this](const char* text) {
        base::UnfinishedFile file(m_file);
        return file.Write(text) && file.Commit(base::UnfinishedFile::Existing::kKeep);
    };
    EXPECT_TRUE(write("first"));
    EXPECT_FALSE(write("second"));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(ReadAll(m_file), "first");
    EXPECT_THAT(Names(), ElementsAre("file"));
}

TEST_P(WholeFile, IsWrittenAndReadThroughInterruptsAndShortCalls) {
    const std::string bytes = "more than one piece";
    g_in_pieces = true;
    g_interrupts = 2;
    base::WriteWholeFile(m_file, bytes);
    g_interrupts = 2;
    const std::vector<std::uint8_t> back = base::ReadFileBytes(m_file, 1000);
    g_in_pieces = false;
    EXPECT_EQ(std::string(back.begin(), back.end()), bytes);
    EXPECT_EQ(base::ReadFileBytes(m_file, 4).size(), 4U);
}

}  // namespace

}  // namespace zel::test
