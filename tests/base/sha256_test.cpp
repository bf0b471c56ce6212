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

TEST(Sha256, HasTheKnownValues) {
    const samples_test::ScratchDirectory scratch;
    const std::filesystem::path file = scratch.Path() / "file";
    EXPECT_EQ(base::Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    base::WriteWholeFile(file, std::string(1000000, 'a'));
    EXPECT_EQ(base::Sha256OfFile(file), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    EXPECT_THROW(base::Sha256OfFile(scratch.Path()), std::runtime_error);
}

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
}

}  // namespace

}  // namespace zel::test
