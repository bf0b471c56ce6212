#include "programs/cli/recording_text.h"

#include <algorithm>
#include <vector>

#include "base/terminal_text.h"
#include "base/text.h"
#include "base/text_columns.h"
#include "programs/cli/library_table.h"

namespace zel::cli {

namespace {

constexpr std::size_t kLabelWidth = 12;

std::string Labelled(const std::string& label, const std::string& text) {
    return text.empty() ? "" : "  " + base::Padded(label, kLabelWidth) + base::TerminalText(text) + '\n';
}

std::string Section(const std::string& title, const std::vector<std::string>& lines) {
    std::string text = lines.empty() ? "" : "\n  " + title + '\n';
    for (const std::string& line : lines) text += "    " + base::TerminalText(line) + '\n';
    return text;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::vector<std::string> FieldLines(const library::Recording& recording) {
    std::vector<std::string> lines;
    for (const library::RecordedField& field : recording.fields) {
        lines.push_back((field.name.empty() ? "unnamed" : field.name) + ": " + std::to_string(field.left) + ", " +
                        std::to_string(field.top) + " to " + std::to_string(field.right) + ", " +
                        std::to_string(field.bottom));
    }
    return lines;
}

std::vector<std::string> SourceLines(const library::Recording& recording) {
    std::vector<std::string> lines;
    for (const library::SourceFile& source : recording.sources) {
        const char* const without_checksum = source.size == 0 ? ", missing" : ", without a checksum";
        lines.push_back(source.path + (source.sha256.empty() ? without_checksum : ", sha256 " + source.sha256));
    }
    return lines;
}

std::string PictureSize(const library::Recording& recording) {
    if (recording.picture.empty()) return "none";
    return std::to_string(recording.width) + " x " + std::to_string(recording.height) + " pixels";
}

}  // namespace

std::string RecordingText(const library::Recording& recording) {
    return KindName(recording.kind) + ' ' + base::NumberedName(recording.number) + '\n' +
           Labelled("Disk", recording.disk) + Labelled("Recorded", recording.recorded_at) +
           Labelled("Options", recording.options) + Labelled("Lines", std::to_string(ActiveLines(recording.standard))) +
           Labelled("Picture", PictureSize(recording)) + Section("Text", LinesOf(recording.text)) +
           Section("Fonts", recording.fonts) + Section("Tab fields", FieldLines(recording)) +
           Section("Made from", SourceLines(recording)) + Section("Warnings", recording.warnings);
}

}  // namespace zel::cli
