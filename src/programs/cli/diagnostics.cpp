#include "programs/cli/diagnostics.h"

#include <cstdio>

namespace zel::cli {

void PrintError(const std::string& text) {
    std::fprintf(stderr, "zeltrans: %s\n", text.c_str());
}

void PrintNote(const std::string& text) {
    std::fprintf(stderr, "note: %s\n", text.c_str());
}

}  // namespace zel::cli
