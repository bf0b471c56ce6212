#include "base/sha256.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "base/whole_file.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

TEST(Sha256, HasTheKnownValues) {
    const samples_test::ScratchDirectory scratch;
    const std::filesystem::path file = scratch.Path() / "file";
    EXPECT_EQ(base::Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    base::WriteWholeFile(file, std::string(1000000, 'a'));
    EXPECT_EQ(base::Sha256OfFile(file), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    EXPECT_THROW(base::Sha256OfFile(scratch.Path()), std::runtime_error);
}

}  // namespace

}  // namespace zel::test
