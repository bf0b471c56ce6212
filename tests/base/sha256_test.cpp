#include "base/sha256.h"

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/whole_file.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(Sha256OfFile, EndsForEveryFile) {
    const samples_test::ScratchDirectory scratch;
    const std::filesystem::path sparse = scratch.Path() / "sparse";
    base::WriteWholeFile(sparse, "x");
    std::filesystem::resize_file(sparse, base::kLargestHashedFile + 1);
    EXPECT_THAT([&] { base::Sha256OfFile(sparse); }, ThrowsMessage<std::runtime_error>(HasSubstr("80 MiB")));
    std::filesystem::resize_file(sparse, base::kLargestHashedFile);
    int asked = 0;
    EXPECT_THAT([&] { base::Sha256OfFile(sparse, [&] { return ++asked == 3; }); },
                ThrowsMessage<std::runtime_error>(HasSubstr("stopped")));
    EXPECT_EQ(asked, 3);
    EXPECT_THROW(base::Sha256OfFile(scratch.Path()), std::runtime_error) << "a directory";
}

}  // namespace

}  // namespace zel::test
