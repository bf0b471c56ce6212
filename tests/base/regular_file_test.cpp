#include "base/regular_file.h"

#include <system_error>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/whole_file.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(RegularFile, IsTheOnlyKindThatIsOpened) {
    const samples_test::ScratchDirectory scratch;
    const auto in = [&](const char* name) { return scratch.Path() / name; };
    ASSERT_EQ(::mkfifo(in("pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mknod(in("socket").c_str(), S_IFSOCK | 0600, 0), 0);
    std::filesystem::create_symlink("pipe", in("link to a pipe"));
    std::filesystem::create_symlink("/dev/zero", in("endless"));
    struct Case {
        std::filesystem::path file;
        const char* kind;
    };
    const Case cases[] = {{scratch.Path(), "a directory"},
                          {in("pipe"), "a pipe"},
                          {in("link to a pipe"), "a pipe"},
                          {in("socket"), "a socket"},
                          {in("endless"), "a device"}};
    for (const Case& row : cases) {
        EXPECT_EQ(base::OtherFileKind(row.file), row.kind) << row.file;
        EXPECT_THAT([&] { base::ReadFileBytes(row.file, 4); },
                    ThrowsMessage<std::runtime_error>(std::string("it is ") + row.kind + ", not a regular file"))
            << row.file;
    }
    base::WriteWholeFile(in("file"), "bytes");
    std::filesystem::create_symlink("file", in("link"));
    EXPECT_EQ(base::OtherFileKind(in("link")), "");
    EXPECT_EQ(base::ReadFileBytes(in("link"), 4).size(), 4U);
    EXPECT_EQ(base::OtherFileKind(in("missing")), "");
    EXPECT_THAT([&] { base::ReadFileBytes(in("missing"), 4); },
                ThrowsMessage<std::system_error>(HasSubstr("No such file or directory")));
}

}  // namespace

}  // namespace zel::test
