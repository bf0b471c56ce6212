// Prints the commands of a command library as JSON: describe LIBRARY
#include <cstdio>

#include <dlfcn.h>

#include "programs/cli/command_description.h"

int main(int argc, char** argv) {
    using namespace zel::cli;
    void* const library = argc == 2 ? ::dlopen(argv[1], RTLD_LAZY | RTLD_LOCAL) : nullptr;
    void* const entry = library != nullptr ? ::dlsym(library, kDescriptionEntry) : nullptr;
    if (entry == nullptr) {
        std::fputs("usage: describe LIBRARY, the library with the commands\n", stderr);
        return 2;
    }
    reinterpret_cast<DescribeAllCommandsFunction>(entry)(stdout);
    return 0;
}
