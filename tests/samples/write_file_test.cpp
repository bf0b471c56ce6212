#include "samples/write_file.h"

#include <iterator>
#include <stdexcept>

#include <gmock/gmock.h>

#include "samples/scratch_directory.h"

namespace zel::samples {
namespace {

using samples_test::ReadAll;
using samples_test::ScratchDirectory;

TEST(WriteWholeFile, CreatesDirectoriesAndReplacesAFile) {
    const ScratchDirectory scratch;
    const auto file = scratch.Path() / "a" / "b" / ".0001";
    WriteWholeFile(file, "a longer first text");
    WriteWholeFile(file, "second");
    EXPECT_EQ(ReadAll(file), "second");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file.parent_path()), {}), 1)
        << "no temporary file remains";
}

TEST(WriteWholeFile, NamesTheFileAndTheReason) {
    const ScratchDirectory scratch;
    WriteWholeFile(scratch.Path() / "plain", "a file, no directory");
    EXPECT_THAT([&] { WriteWholeFile(scratch.Path() / "plain" / ".0001", "text"); },
                testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("plain/.0001: ")));
}

}  // namespace
}  // namespace zel::samples
