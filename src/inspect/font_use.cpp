#include "inspect/font_use.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "base/fold_case.h"
#include "base/terminal_text.h"
#include "inspect/words.h"
#include "module/contract/records/msg_header.h"

namespace zel::inspect {

namespace {

/// The parts of a path: the disk, the folder of the file if it is one of a disk, and the name.
struct DiskPath {
    std::string disk;
    std::string_view folder;
    std::string_view name;
};

DiskPath Split(std::string_view path) {
    const std::size_t name_at = path.find_last_of('/') + 1;  // 0 without a slash
    DiskPath parts{{}, {}, path.substr(name_at)};
    if (name_at == 0) return parts;
    const std::string_view parent = path.substr(0, name_at - 1);
    const std::size_t folder_at = parent.find_last_of('/') + 1;
    const std::string_view folder = parent.substr(folder_at);
    if (!base::EqualsFolded(folder, "MESSAGES") && !base::EqualsFolded(folder, "MACHINE")) return parts;
    parts.folder = folder;
    if (folder_at != 0) parts.disk = parent.substr(0, folder_at - 1);
    return parts;
}

/// The number of a font file, and whether it has leading zeros or four digits and more.
struct FontName {
    int number;
    bool padded;
};

/// Nothing for a name that no import looks for.
std::optional<FontName> ParseName(std::string_view name) {
    if (name.size() < 2 || name.size() > 6 || name[0] != '.') return std::nullopt;
    name.remove_prefix(1);
    int number = 0;
    for (const char c : name) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + (c - '0');
    }
    const bool leading_zero = name.size() > 1 && name[0] == '0';
    if (number >= kNoFont || (leading_zero && name.size() != 4)) return std::nullopt;
    return FontName{number, name.size() >= 4};
}

}  // namespace

std::string MissingFontText(const MissingFont& font) {
    std::vector<std::string> users;
    for (const std::string& message : font.messages) users.push_back(base::TerminalText(message));
    constexpr std::size_t kListed = 8;
    users.resize(std::min(users.size(), kListed));
    std::string text = "font " + std::to_string(font.number) +
                       (font.file.empty() ? " is missing" : " can't be read (" + base::TerminalText(font.file) + ")") +
                       "; used by " + Listed(users);
    if (users.size() < font.message_count) text += " and " + Number(font.message_count - users.size()) + " more";
    return text;
}

void FontUse::Add(const FileReport& report, const std::string& path) {
    const DiskPath parts = Split(path);
    if (!report.message && !report.font && parts.folder.empty()) return;
    Disk& disk = m_disks[parts.disk];
    if (!parts.folder.empty()) disk.has_folder = true;
    if (report.font) return AddFont(path, report.verdict != Verdict::kBroken, disk);
    if (base::EqualsFolded(parts.folder, "MACHINE")) {
        if (const auto name = ParseName(parts.name)) disk.others.try_emplace(name->number, path);
    }
    if (!report.message) return;
    disk.has_messages = true;
    std::set<int> numbers;
    for (const SlotReport& slot : report.message->slots) {
        if (slot.number) numbers.insert(*slot.number);
    }
    for (const int number : numbers) {
        MissingFont& font = disk.named[number];
        ++font.message_count;
        if (font.messages.size() < MissingFont::kMostUsers) font.messages.push_back(path);
    }
}

void FontUse::AddFont(const std::string& path, bool whole, Disk& disk) {
    const auto name = ParseName(Split(path).name);
    if (!name) {
        disk.other_names.insert(path);
        return;
    }
    if (!whole) {
        disk.others[name->number] = path;
        return;
    }
    FontFiles& files = disk.fonts[name->number];
    (name->padded ? files.padded : files.plain) = path;
}

std::vector<MissingFont> FontUse::Missing() const {
    std::vector<MissingFont> missing;
    for (const auto& [path, disk] : m_disks) {
        if (disk.fonts.empty() && disk.others.empty() && !disk.has_folder) continue;
        for (const auto& [number, named] : disk.named) {
            const auto other = disk.others.find(number);
            const auto found = disk.fonts.find(number);
            // The padded name is tried first, whatever the file contains.
            const bool is_hidden =
                other != disk.others.end() && found != disk.fonts.end() && found->second.padded.empty();
            if (found != disk.fonts.end() && !is_hidden) continue;
            MissingFont& font = missing.emplace_back(named);
            font.disk = path;
            font.number = number;
            if (other != disk.others.end()) font.file = other->second;
        }
    }
    return missing;
}

std::vector<UnusedFont> FontUse::Unused() const {
    std::vector<UnusedFont> unused;
    for (const auto& [path, disk] : m_disks) {
        if (!disk.has_messages) continue;
        for (const std::string& file : disk.other_names) unused.push_back({path, file, UnusedFont::Reason::kName});
        for (const auto& [number, files] : disk.fonts) {
            if (!disk.named.contains(number)) {
                for (const std::string& file : {files.padded, files.plain}) {
                    if (!file.empty()) unused.push_back({path, file, UnusedFont::Reason::kNotNamed});
                }
            } else if (!files.padded.empty() && !files.plain.empty()) {
                unused.push_back({path, files.plain, UnusedFont::Reason::kOtherFile});
            }
        }
    }
    std::ranges::stable_sort(unused, [](const UnusedFont& a, const UnusedFont& b) {
        return std::pair(a.disk, a.file) < std::pair(b.disk, b.file);
    });
    return unused;
}

}  // namespace zel::inspect
