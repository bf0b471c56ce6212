#include "host/crc32.h"

#include <string_view>

#include <gtest/gtest.h>

namespace zel::test {

namespace {

TEST(Checksum32, IsThatOfPngAndZip) {
    const std::string_view digits = "123456789";
    EXPECT_EQ(host::Crc32({reinterpret_cast<const std::uint8_t*>(digits.data()), digits.size()}), 0xCBF43926U);
    EXPECT_EQ(host::Crc32({}), 0U);
}

}  // namespace

}  // namespace zel::test
