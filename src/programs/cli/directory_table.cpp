#include "programs/cli/directory_table.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>

#include "base/terminal_text.h"
#include "base/text_columns.h"
#include "inspect/font_use.h"
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

}  // namespace

DirectoryTable::DirectoryTable(const std::string& directory, std::string name) : m_name(std::move(name)) {
    FileTree tree = FindFiles(directory);
    m_unlisted = std::move(tree.unlisted);
    m_entries.reserve(tree.files.size());
    for (const fs::path& file : tree.files)
        m_entries.push_back(Inspect(file, file.lexically_relative(directory).string()));
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
    inspect::FontUse use;
    for (const DirectoryEntry& entry : m_entries) {
        if (entry.report) use.Add(*entry.report, entry.name);
    }
    std::string text;
    for (const inspect::MissingFont& font : use.Missing()) text += "  " + inspect::MissingFontText(font) + "\n";
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
    for (const UnlistedDirectory& directory : m_unlisted) parts.push_back(directory.Text());
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
    return text;
}

}  // namespace zel::cli
