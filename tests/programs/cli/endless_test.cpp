// Pipes, devices and very large files in place of each kind of input.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/whole_file.h"
#include "host/library/library.h"
#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// A disk with pipes and links to an endless device among its messages and fonts.
class EndlessFiles : public testing::Test {
  protected:
    EndlessFiles() {
        m_disk.Shell(
            "mkfifo pipe MESSAGES/.0030 MACHINE/.0030 && ln -s /dev/zero MESSAGES/.0031 && "
            "ln -s /dev/zero MACHINE/.0031 && mkdir lists && mkfifo lists/typeface_list.txt && "
            "ln -s /dev/zero lists/bitstream_fontlist.txt");
        library::Library(m_disk / "a.zellib", library::Access::kWrite);
    }

    /// Runs the command, but not for ever: exit code 124 after a while.
    CommandResult Run(const std::string& arguments) const {
        return m_disk.Shell("timeout 20 " + CommandDisk::Quoted(ZELTRANS_COMMAND) + " " + arguments);
    }

    CommandDisk m_disk;
};

struct EndlessCase {
    const char* arguments;
    int exit_code;
    const char* error_end;
};

TEST_F(EndlessFiles, AreRefusedAtOnce) {
    const EndlessCase cases[] = {
        {"import MESSAGES/.0030", 1, ".0030: a pipe, not a message file\n"},
        {"import MESSAGES/.0030 --warnings", 1, ""},
        {"import MESSAGES/.0031", 1, ".0031: a device, not a message file\n"},
        {"import MESSAGES/.0012 --maps lists --png pipe", 1, "pipe: can't be written: it is not a regular file\n"},
        {"import MESSAGES/.0012 --maps lists", 0, ""},
        {"import MESSAGES/.0012 --warnings --answer yes --browse MACHINE/.0030", 0, ""},
        {"import pipe", 1, "pipe: a pipe, not a message file\n"},  // without a font directory
        {"font MACHINE/.0030", 1, "a pipe, not a font file\n"},
        {"font MACHINE/.0031", 1, "a device, not a font file\n"},
        {"batch . 30 31 --library b.zellib", 1,
         "2 numbers failed, the first: ./MESSAGES/.0030: a pipe, not a message file\n"},
        {"batch . 12 12 --maps lists --library c.zellib", 0, ""},
        {"batch . 12 12 --library pipe", 1, "pipe: it is a pipe, not a library\n"},
        {"library list pipe", 1, "pipe: it is a pipe, not a library\n"},
        {"library list /dev/zero", 1, "/dev/zero: it is a device, not a library\n"},
        {"library merge a.zellib pipe", 1, "pipe: it is a pipe, not a library\n"},
        {"export pipe 1 2 --out out", 1, "pipe: it is a pipe, not a library\n"},
        {"info pipe", 1, "pipe: a pipe, not a file\n"},
        {"info /dev/zero", 1, "/dev/zero: a device, not a file\n"},
    };
    for (const EndlessCase& row : cases) {
        const CommandResult result = Run(row.arguments);
        EXPECT_EQ(result.exit_code, row.exit_code) << row.arguments << "\n" << result.err;
        EXPECT_THAT(result.err, EndsWith(row.error_end)) << row.arguments;
    }
    // The message names font 31, which is the link to the device.
    EXPECT_THAT(Run("library show c.zellib 12").out, HasSubstr("MACHINE/.0031, missing\n"));
}

TEST_F(EndlessFiles, OfManyGigabytesAreRecordedWithoutAChecksum) {
    std::filesystem::copy(m_disk / "MESSAGES/.0012", m_disk / "MESSAGES/.0032");
    std::filesystem::resize_file(m_disk / "MESSAGES/.0032", std::uintmax_t{1} << 36);
    const std::string batch = "batch . 32 32 --library b.zellib";
    EXPECT_EQ(Run(batch).exit_code, 0);
    EXPECT_THAT(Run("library show b.zellib 32").out, HasSubstr("MESSAGES/.0032, without a checksum\n"));
    EXPECT_THAT(Run(batch + " --resume").out, HasSubstr("1 imported"));
}

}  // namespace

}  // namespace zel::test
