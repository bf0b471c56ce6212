#include "cli/warnings_printer.h"

#include <cstdio>

#include "host/module_text.h"

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

std::string Shown(const std::string& text) {
    std::string line = Utf8FromBytes(OneLine(text));
    while (line.ends_with(' ')) line.pop_back();
    return line;
}

}  // namespace

void WarningsPrinter::OnBox(const HeadlessDesktop::Box& box) {
    std::fprintf(stderr, "box: %s: %s (%s)\n", Shown(box.caption).c_str(), Shown(box.text).c_str(),
                 AnswerName(box.answer));
}

void WarningsPrinter::OnFileDialog(const HeadlessDesktop::FileDialog& dialog) {
    const std::string answer = dialog.answer == IDOK ? dialog.path : "Cancel";
    std::fprintf(stderr, "file dialog: %s: %s (%s)\n", Shown(dialog.title).c_str(), Shown(dialog.initial_name).c_str(),
                 Shown(answer).c_str());
}
