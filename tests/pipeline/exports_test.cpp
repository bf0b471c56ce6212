// What the library exports, against the checked-in list.
#include <cstdio>
#include <fstream>
#include <memory>
#include <regex>
#include <set>
#include <string>

#include <gmock/gmock.h>

namespace {

std::set<std::string> ExportedNames() {
    const std::string command = std::string(NM) + " -D --defined-only --demangle " + ZELTRANS_LIBRARY;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
    std::set<std::string> names;
    char line[1024];
    while (pipe && std::fgets(line, sizeof line, pipe.get()) != nullptr) {
        std::smatch match;
        std::string text(line);
        // address, kind, name; what sanitizers and counters add begins with two underscores
        if (!std::regex_match(text, match, std::regex("[0-9a-f]+ . ((?!__).*)\n"))) continue;
        // An address travels as an integer as wide as a pointer: int in 32 bits, long in 64.
        names.insert(std::regex_replace(match[1].str(), std::regex("\\blong\\b"), "int"));
    }
    return names;
}

TEST(Exports, AreExactlyTheListedNames) {
    std::ifstream file(EXPORTS_LIST);
    std::set<std::string> listed;
    for (std::string line; std::getline(file, line);) listed.insert(line);
    EXPECT_EQ(listed.size(), 63U);
    EXPECT_THAT(ExportedNames(), testing::ContainerEq(listed));
}

}  // namespace
