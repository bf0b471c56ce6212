#include "host/ftp/remote_name.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

TEST(RemoteName, AcceptsNamesOfMessagesAndFonts) {
    for (const char* name :
         {".0012", "0012", "12", ".12", ".00123456", ".0012.TN", "PROMO", "promo", "NEWS.0012", "A_B-C~1.DAT", "X"}) {
        EXPECT_TRUE(ftp::IsFileName(name)) << name;
    }
}

TEST(RemoteName, RejectsEverythingElse) {
    for (const char* name :
         {"",           ".",       "..",       "...", "/etc", "a/b",         "..\\a",  "a\\b",       ".0012/",
          ".123456789", ".bashrc", "-rf",      "a b", "a\n",  "TOOLONGNAME", "A.PART", ".0012.part", ".0012.",
          ".0012.0012", "a.b.c",   "\xC3\xA4", "a:b", "*",    "C:",          "a.12345"}) {
        EXPECT_FALSE(ftp::IsFileName(name)) << name;
    }
    EXPECT_FALSE(ftp::IsFileName(std::string_view(".0012\0", 6)));
    EXPECT_TRUE(ftp::IsDirectoryName("hd0 disk (old)"));
    for (const char* name : {"", ".", "..", "a/b", "a\\b", "a\x1B[31m"})
        EXPECT_FALSE(ftp::IsDirectoryName(name)) << name;
}

TEST(RemoteName, SplitsAndJoinsPaths) {
    EXPECT_EQ(ftp::LastPart("/DISK/MESSAGES/"), "MESSAGES");
    EXPECT_EQ(ftp::LastPart("/"), "");
    EXPECT_EQ(ftp::Sibling("/DISK/MESSAGES/", "MACHINE"), "/DISK/MACHINE");
    EXPECT_EQ(ftp::Sibling("MESSAGES", "MACHINE"), "MACHINE");
    EXPECT_EQ(ftp::Below("/", "A"), "/A");
    EXPECT_EQ(ftp::Below("", "A"), "A");
    EXPECT_EQ(ftp::Printable("a\x1B[1mb\n"), "a?[1mb?");
}

}  // namespace

}  // namespace zel::test
