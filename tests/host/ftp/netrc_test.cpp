#include "host/ftp/netrc.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

TEST(Netrc, GivesThePasswordOfHostAndUser) {
    constexpr std::string_view kText =
        "# machine h login anna password no\nmachine other password x\nmacdef init\npassword no\n\n"
        "machine h login ben password bens\nmachine H password \"a \\\"b\\\" c\" login anna\ndefault login anna "
        "password rest";
    const auto find = [&](std::string_view host, std::string_view user) {
        const auto password = ftp::FindNetrcPassword(kText, host, user);
        return password ? password->Reveal() : "none";
    };
    EXPECT_EQ(find("h", "anna"), "a \"b\" c");
    EXPECT_EQ(find("h", "ben"), "bens");
    EXPECT_EQ(find("other", "anyone"), "x");
    EXPECT_EQ(find("elsewhere", "anna"), "rest");
    EXPECT_EQ(find("elsewhere", "ben"), "none");
    EXPECT_FALSE(ftp::FindNetrcPassword("machine h login anna password", "h", "ben"));
}

}  // namespace

}  // namespace zel::test
