#include "base/file_descriptor.h"

#include <cerrno>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace zel::test {

namespace {

int OpenAny() {
    return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool IsOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) >= 0;
}

TEST(FileDescriptor, IsClosedByItsLastOwner) {
    const int number = OpenAny();
    {
        base::FileDescriptor first(number);
        base::FileDescriptor second(std::move(first));
        base::FileDescriptor third;
        third = std::move(second);
        EXPECT_EQ(third.Get(), number);
        errno = ENOSPC;
    }
    EXPECT_EQ(errno, ENOSPC) << "the error of the call before remains";
    EXPECT_FALSE(IsOpen(number));
}

TEST(FileDescriptor, IsLeftToWhoeverTakesIt) {
    base::FileDescriptor owner(OpenAny());
    const int number = owner.Release();
    EXPECT_FALSE(owner.IsOpen());
    owner = base::FileDescriptor();
    EXPECT_TRUE(IsOpen(number));
    close(number);
}

TEST(ReadFullyAt, EndsWithTheFileAndLeavesThePosition) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const base::FileDescriptor pipe_end(ends[0]), other_end(ends[1]);
    char buffer[8];
    EXPECT_EQ(base::ReadFullyAt(pipe_end.Get(), buffer, sizeof buffer, 0), 0U);
    EXPECT_EQ(errno, ESPIPE);

    const base::FileDescriptor file(open("/proc/self/exe", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(base::ReadFullyAt(file.Get(), buffer, 3, 1), 3U);
    EXPECT_EQ(std::string(buffer, 3), "ELF");
    EXPECT_EQ(lseek(file.Get(), 0, SEEK_CUR), 0);
    const auto size = static_cast<std::uint64_t>(lseek(file.Get(), 0, SEEK_END));
    EXPECT_EQ(base::ReadFullyAt(file.Get(), buffer, sizeof buffer, size - 2), 2U);
    EXPECT_EQ(errno, 0);
}

}  // namespace

}  // namespace zel::test
