#include "diskcopy/copy_log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

#include "diskcopy/draft.h"
#include "platform/system/files.h"

namespace zel::diskcopy {

namespace {

/// Digits in groups of three.
std::string Grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, 1, ',');
    return digits;
}

std::string Padded(const std::string& text, std::size_t width, bool right = false) {
    const std::string blanks(width > text.size() ? width - text.size() : 0, ' ');
    return right ? blanks + text : text + blanks;
}

std::string Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    std::array<char, 32> text{};
    if (::localtime_r(&now, &local) != nullptr) std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
    return text.data();
}

const char* Word(CopyResult result) {
    switch (result) {
        case CopyResult::kCopied:
            return "copied";
        case CopyResult::kSkipped:
            return "skipped";
        case CopyResult::kFailed:
            return "failed";
        case CopyResult::kNotReached:
            break;
    }
    return "not copied";
}

std::string Line(const CopyItem& item, const CopyRecord& record) {
    const std::string bytes = record.result == CopyResult::kCopied ? Grouped(record.bytes) : std::string();
    const std::string note = record.result == CopyResult::kCopied ? item.kind : record.reason;
    return Padded(Word(record.result), 11) + Padded(bytes, 14, true) + "  " + item.label +
           (note.empty() ? "" : "  (" + note + ")") + "\r\n";
}

std::string LogText(const CopyPlan& plan, const CopyOutcome& outcome, const std::string& source,
                    const CopyRequest& request) {
    std::string text = "Copy of Zelmara! files, " + Now() + "\r\n";
    text += "Source: " + source + "\r\nTarget: " + request.target +
            "\r\nFiles that were there already: " + (request.overwrite ? "overwritten" : "skipped") + "\r\n\r\n";
    for (std::size_t i = 0; i < plan.items.size(); ++i) text += Line(plan.items[i], outcome.records[i]);
    for (const std::string& passed_over : plan.passed_over) text += Padded("passed over", 27) + passed_over + "\r\n";
    text += "\r\n" + CopySummary(outcome) + "\r\n";
    if (plan.other_files != 0) text += "Neither messages nor fonts: " + Grouped(plan.other_files) + "\r\n";
    return text;
}

}  // namespace

std::string CopySummary(const CopyOutcome& outcome) {
    std::array<std::size_t, 4> counts{};
    std::uint64_t bytes = 0;
    for (const CopyRecord& record : outcome.records) {
        ++counts[static_cast<std::size_t>(record.result)];
        bytes += record.bytes;
    }
    const auto count = [&](CopyResult result) { return counts[static_cast<std::size_t>(result)]; };
    std::string text = Grouped(count(CopyResult::kCopied)) + " copied (" + Grouped(bytes) + " bytes)";
    for (const CopyResult result : {CopyResult::kSkipped, CopyResult::kFailed, CopyResult::kNotReached}) {
        if (count(result) != 0) text += ", " + Grouped(count(result)) + " " + Word(result);
    }
    if (outcome.end == CopyEnd::kStopped) text += "; stopped by the user";
    if (outcome.end == CopyEnd::kDiskFull) text += "; the target disk is full";
    return text;
}

std::string WriteCopyLog(const CopyPlan& plan, const CopyOutcome& outcome, const std::string& source,
                         const CopyRequest& request) {
    const std::string path = FolderPath(request.target, "target");
    const Folder folder = Folder::Open(path);
    if (!folder.IsOpen()) return {};
    std::string name = "CopyLog.txt";
    for (int number = 2; !folder.Find(name).empty(); ++number) name = "CopyLog-" + std::to_string(number) + ".txt";
    const std::string text = LogText(plan, outcome, source, request);
    Draft draft(folder);
    if (!draft.IsOpen() || !draft.Write(text.data(), text.size()) || !draft.Commit(name)) return {};
    return system::ModulePath(Join(path, name));
}

}  // namespace zel::diskcopy
