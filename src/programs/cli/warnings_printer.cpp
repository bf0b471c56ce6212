#include "programs/cli/warnings_printer.h"

#include <cstdio>

#include "base/terminal_text.h"
#include "base/utf8.h"
#include "host/module_text.h"

namespace zel::cli {

namespace {

const char* AnswerName(int answer) noexcept {
    switch (answer) {
        case IDOK:
            return "OK";
        case IDCANCEL:
            return "Cancel";
        case IDYES:
            return "Yes";
        case IDNO:
            return "No";
        default:
            return "another button";
    }
}

std::string OnOneLine(const std::string& text) {
    std::string line = base::Utf8FromLatin1(host::OneLine(text));
    while (line.ends_with(' ')) line.pop_back();
    return base::TerminalText(line);
}

}  // namespace

void WarningsPrinter::OnBox(const script::HeadlessDesktop::Box& box) {
    std::fprintf(stderr, "box: %s: %s (%s)\n", OnOneLine(box.caption).c_str(), OnOneLine(box.text).c_str(),
                 AnswerName(box.answer));
}

void WarningsPrinter::OnFileDialog(const script::HeadlessDesktop::FileDialog& dialog) {
    const std::string answer = dialog.answer == IDOK ? dialog.path : "Cancel";
    std::fprintf(stderr, "file dialog: %s: %s (%s)\n", OnOneLine(dialog.title).c_str(),
                 OnOneLine(dialog.initial_name).c_str(), OnOneLine(answer).c_str());
}

}  // namespace zel::cli
