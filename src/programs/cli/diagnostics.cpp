#include "programs/cli/diagnostics.h"

#include <cstdio>
#include <iostream>

#include "base/terminal_text.h"

namespace zel::cli {

void PrintLine(const std::string& text) {
    std::cout << base::TerminalText(text) << std::endl;
}

void PrintLines(const std::string& text) {
    std::cout << base::TerminalLines(text) << std::flush;
}

void PrintError(const std::string& text) {
    std::fprintf(stderr, "zeltrans: %s\n", base::TerminalText(text).c_str());
}

void PrintErrorLines(const std::string& text) {
    std::fprintf(stderr, "zeltrans: %s\n", base::TerminalLines(text).c_str());
}

void PrintNote(const std::string& text) {
    std::fprintf(stderr, "note: %s\n", base::TerminalText(text).c_str());
}

}  // namespace zel::cli
