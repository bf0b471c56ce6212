#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/sha256.h"
#include "base/whole_file.h"
#include "host/crc32.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

class FileBytes : public testing::Test {
  protected:
    std::size_t Names() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_scratch.Path()), {}));
    }
    samples_test::ScratchDirectory m_scratch;
    std::filesystem::path m_file = m_scratch.Path() / "file";
};

TEST_F(FileBytes, ReplaceTheFile) {
    base::WriteWholeFile(m_file, "long before");
    base::WriteWholeFile(m_file, std::string_view("a\0b", 3));
    EXPECT_EQ(samples_test::ReadAll(m_file), std::string("a\0b", 3));
    EXPECT_EQ(Names(), 1U);
}

TEST_F(FileBytes, LeaveNoUnfinishedFileWhereADirectoryHasTheName) {
    std::filesystem::create_directory(m_file);
    EXPECT_THAT([&] { base::WriteWholeFile(m_file, "x"); },
                ThrowsMessage<std::runtime_error>(AllOf(StartsWith(m_file.string()), HasSubstr("directory"))));
    EXPECT_EQ(Names(), 1U);
}

TEST_F(FileBytes, HaveTheKnownChecksums) {
    const std::string million(1000000, 'a');
    EXPECT_EQ(base::Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    base::WriteWholeFile(m_file, million);
    EXPECT_EQ(base::Sha256OfFile(m_file), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    EXPECT_THROW(base::Sha256OfFile(m_scratch.Path()), std::runtime_error);
}

TEST(Checksum32, IsThatOfPngAndZip) {
    const std::string_view digits = "123456789";
    EXPECT_EQ(host::Crc32({reinterpret_cast<const std::uint8_t*>(digits.data()), digits.size()}), 0xCBF43926U);
    EXPECT_EQ(host::Crc32({}), 0U);
}

}  // namespace

}  // namespace zel::test
