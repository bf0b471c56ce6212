#include "programs/cli/directory_table.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <set>

#include "base/terminal_text.h"
#include "base/text_columns.h"
#include "inspect/inspect.h"
#include "inspect/report_text.h"
#include "inspect/words.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;
using inspect::Count;
using inspect::FileKind;
using inspect::Verdict;

DirectoryEntry Inspect(const fs::path& file, const std::string& name) {
    DirectoryEntry entry{name, {}, {}};
    try {
        entry.report = inspect::InspectFile(file);
    } catch (const std::runtime_error& error) {
        entry.error = error.what();
    }
    return entry;
}

// Name, kind, size, verdict, contents.
std::vector<std::string> CellsOf(const DirectoryEntry& entry) {
    const std::string name = base::TerminalText(entry.name);
    if (!entry.report) return {name, "", "", "unreadable", entry.error};
    const inspect::FileReport& report = *entry.report;
    const auto cells = [&](const std::string& verdict, const std::string& contents) -> std::vector<std::string> {
        return {name, inspect::KindName(report.kind), inspect::Number(report.size), verdict, contents};
    };
    switch (report.verdict) {
        case Verdict::kWhole:
            break;
        case Verdict::kReadable:
            return cells(Count(report.defects.size(), "defect"), inspect::Contents(report));
        case Verdict::kBroken:
            return cells("broken", report.reason);
        case Verdict::kForeign:
            return cells("-", report.reason);
    }
    return cells("whole", inspect::Contents(report));
}

// The number in the name of a font file: a dot and digits.
std::optional<int> FontNumber(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    if (name.size() < 2 || name.size() > 6 || name[0] != '.') return std::nullopt;
    int number = 0;
    for (const char c : name.substr(1)) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

}  // namespace

DirectoryTable::DirectoryTable(const std::string& directory, std::string name)
    : m_directory(directory), m_name(std::move(name)) {
    const std::vector<fs::path> files = FindFiles();
    m_entries.reserve(files.size());
    for (const fs::path& file : files) m_entries.push_back(Inspect(file, file.lexically_relative(directory).string()));
}

std::vector<fs::path> DirectoryTable::FindFiles() {
    std::vector<fs::path> files, directories{m_directory};
    while (!directories.empty()) {
        const fs::path directory = std::move(directories.back());
        directories.pop_back();
        std::error_code error;
        fs::directory_iterator it(directory, error);
        for (const fs::directory_iterator end; !error && it != end; it.increment(error)) {
            std::error_code ignored;
            if (!it->is_directory(ignored)) {
                files.push_back(it->path());
            } else if (!it->is_symlink(ignored)) {
                directories.push_back(it->path());
            }
        }
        if (error) m_unlisted.push_back({directory.lexically_relative(m_directory).string(), error.message()});
    }
    std::ranges::sort(files);
    std::ranges::sort(m_unlisted, {}, &Unlisted::name);
    return files;
}

std::string DirectoryTable::Text() const {
    std::vector<std::vector<std::string>> lines;
    lines.reserve(m_entries.size());
    for (const DirectoryEntry& entry : m_entries) lines.push_back(CellsOf(entry));
    constexpr base::ColumnStyle kLeft{}, kRight{base::Align::kRight};
    return base::TerminalText(m_name) + ": " + (m_entries.empty() && m_unlisted.empty() ? "no files" : Totals()) +
           "\n" + base::TableText(lines, std::array{kLeft, kLeft, kRight, kLeft, kLeft}) + MissingFonts();
}

std::string DirectoryTable::Totals() const {
    std::map<FileKind, std::size_t> kinds;
    for (const DirectoryEntry& entry : m_entries) {
        if (!entry.report) continue;
        ++kinds[entry.report->kind];
    }
    std::vector<std::string> parts;
    parts.reserve(kinds.size());
    for (const auto& [kind, count] : kinds) {
        parts.push_back(kind == FileKind::kOther || kind == FileKind::kText
                            ? inspect::Number(count) + " " + inspect::KindName(kind)
                            : Count(count, inspect::KindName(kind)));
    }
    std::string text = Count(m_entries.size(), "file");
    if (!parts.empty()) text += " (" + inspect::Listed(parts) + ")";
    const std::size_t defects = DefectCount();
    if (defects != 0) text += ", " + inspect::Number(defects) + " with defects";
    const std::string failure = Failure();
    return failure.empty() ? text : text + ", " + failure;
}

std::size_t DirectoryTable::DefectCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(m_entries, [](const DirectoryEntry& entry) {
        return entry.report && entry.report->verdict == Verdict::kReadable;
    }));
}

std::string DirectoryTable::MissingFonts() const {
    std::set<int> present;
    std::map<int, std::vector<std::string>> users;
    for (const DirectoryEntry& entry : m_entries) {
        if (!entry.report) continue;
        if (entry.report->font) present.insert(FontNumber(entry.name).value_or(-1));
        if (!entry.report->message) continue;
        for (const inspect::SlotReport& slot : entry.report->message->slots) {
            if (slot.number) users[*slot.number].push_back(base::TerminalText(entry.name));
        }
    }
    if (present.empty()) return {};  // the fonts are in another directory
    std::string text;
    for (const auto& [number, messages] : users) {
        if (!present.contains(number))
            text += "  font " + std::to_string(number) + " is missing; used by " + inspect::Listed(messages) + "\n";
    }
    return text.empty() ? text : "\n" + text;
}

std::string DirectoryTable::Failure() const {
    std::size_t broken = 0, unreadable = 0;
    for (const DirectoryEntry& entry : m_entries) {
        if (!entry.report) {
            ++unreadable;
        } else if (entry.report->verdict == Verdict::kBroken) {
            ++broken;
        }
    }
    std::vector<std::string> parts;
    if (broken != 0) parts.push_back(inspect::Number(broken) + " broken");
    if (unreadable != 0) parts.push_back(inspect::Number(unreadable) + " unreadable");
    for (const Unlisted& directory : m_unlisted) {
        parts.push_back((directory.name == "." ? "the directory" : base::TerminalText(directory.name)) +
                        " can't be listed: " + directory.reason);
    }
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
    return text;
}

}  // namespace zel::cli
