#include "host/archive/entry_name.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

struct NameCase {
    std::string name, path, fault;
};

TEST(EntryName, IsAPathBelowTheTopOrRefused) {
    const NameCase cases[] = {
        {".0001", ".0001", ""},
        {"./NEWS//MESSAGES/./.0001", "NEWS/MESSAGES/.0001", ""},
        {"NEWS/MESSAGES/", "NEWS/MESSAGES", ""},
        {"./", "", ""},
        {"St\xC3\xB6rung/..a/a..", "St\xC3\xB6rung/..a/a..", ""},
        {"\xFF\x80", "\xFF\x80", ""},
        {"", "", "an entry without a name"},
        {"/etc/passwd", "", "its name is an absolute path"},
        {"//a", "", "its name is an absolute path"},
        {"..", "", "its name leads out of the archive"},
        {"a/../../b", "a/b", "its name leads out of the archive"},
        {"a\\..\\b", "", "its name has a backslash"},
        {"a\nb", "", "its name has a control character"},
        {"a\x7F", "", "its name has a control character"},
        {"a\xC2\x9B", "", "its name has a control character"},
        {std::string("a\0b", 3), "", "its name has a control character"},
        {std::string(1025, 'a'), "", "its name is longer than 1024 bytes"},
    };
    for (const NameCase& row : cases) {
        const archive::EntryName name = archive::ParseEntryName(row.name);
        EXPECT_EQ(name.fault, row.fault) << row.name;
        EXPECT_EQ(row.fault.empty() ? name.Path() : row.path, row.path) << row.name;
    }
    std::string deep;
    for (int n = 0; n < 33; ++n) deep += "a/";
    EXPECT_EQ(archive::ParseEntryName(deep).fault, "it is in more than 31 folders");
    EXPECT_EQ(archive::ParseEntryName(deep.substr(2)).fault, "");
}

TEST(EntryName, IsInAFolderWhateverItsCase) {
    EXPECT_TRUE(archive::ParseEntryName("NEWS/Messages/.0001").IsIn("MESSAGES"));
    for (const char* name : {"MESSAGES", "MESSAGES/a/b", "MESSAGES2/a"})
        EXPECT_FALSE(archive::ParseEntryName(name).IsIn("MESSAGES")) << name;
}

}  // namespace

}  // namespace zel::test
