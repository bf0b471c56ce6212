// The exported names of the library, compared with the checked-in list.
#include <cstdio>
#include <fstream>
#include <memory>
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
        // address, kind, name
        std::string name(line);
        name = name.substr(name.find(' ') + 3);
        name.pop_back();
        if (name.starts_with("__")) continue;  // added by sanitizers and coverage
        // FontAddress is int in a 32-bit build, long in a 64-bit one.
        if (const std::size_t at = name.find("(long,"); at != std::string::npos) name.replace(at, 6, "(int,");
        names.insert(name);
    }
    return names;
}

TEST(Exports, AreExactlyTheListedNames) {
    std::ifstream file(EXPORTS_LIST);
    std::set<std::string> listed;
    for (std::string line; std::getline(file, line);) listed.insert(line);
    EXPECT_EQ(listed.size(), 66U);
    EXPECT_THAT(ExportedNames(), testing::ContainerEq(listed));
}

}  // namespace
