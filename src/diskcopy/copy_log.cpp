#include "diskcopy/copy_log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

#include "base/text.h"
#include "base/text_columns.h"
#include "base/whole_file.h"
#include "diskcopy/folder.h"
#include "platform/system/files.h"

namespace zel::diskcopy {

namespace {

std::string Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    std::array<char, 32> text{};
    if (::localtime_r(&now, &local) != nullptr) std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
    return text.data();
}

const char* ResultName(CopyResult result) {
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
    const std::string bytes = record.result == CopyResult::kCopied ? base::GroupedDigits(record.bytes) : std::string();
    const std::string note = record.result == CopyResult::kCopied ? item.kind : record.reason;
    return base::Padded(ResultName(record.result), 11) + base::Padded(bytes, 14, base::Align::kRight) + "  " +
           item.label + (note.empty() ? "" : "  (" + note + ")") + "\r\n";
}

std::string LogText(const CopyPlan& plan, const CopyOutcome& outcome, const std::string& source,
                    const CopyRequest& request) {
    std::string text = "Copy of Zelmara! files, " + Now() + "\r\n";
    text += "Source: " + source + "\r\nTarget: " + request.target +
            "\r\nFiles that were there already: " + (request.overwrite ? "overwritten" : "skipped") + "\r\n\r\n";
    for (std::size_t i = 0; i < plan.items.size(); ++i) text += Line(plan.items[i], outcome.records[i]);
    for (const std::string& passed_over : plan.passed_over)
        text += base::Padded("passed over", 27) + passed_over + "\r\n";
    text += "\r\n" + CopySummary(outcome) + "\r\n";
    if (plan.other_files != 0) text += "Neither messages nor fonts: " + base::GroupedDigits(plan.other_files) + "\r\n";
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
    std::string text =
        base::GroupedDigits(count(CopyResult::kCopied)) + " copied (" + base::GroupedDigits(bytes) + " bytes)";
    for (const CopyResult result : {CopyResult::kSkipped, CopyResult::kFailed, CopyResult::kNotReached}) {
        if (count(result) != 0) text += ", " + base::GroupedDigits(count(result)) + " " + ResultName(result);
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
    base::UnfinishedFile log(folder.Get(), name, kTemporaryName);
    if (!log.IsOpen() || !log.Write(text) || !log.Sync() || !log.Commit()) return {};
    return system::ModulePath(Join(path, name));
}

}  // namespace zel::diskcopy
