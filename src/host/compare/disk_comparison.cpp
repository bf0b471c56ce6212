#include "host/compare/disk_comparison.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string_view>
#include <tuple>

#include "base/fold_case.h"

namespace zel::compare {

namespace {

namespace fs = std::filesystem;

/// By what files of two disks belong together: the number, and the name before its dot without regard to case. Of a
/// name without a number, and of the second file with the same number, the whole name.
struct FileKey {
    /// -1 without one.
    int number = -1;
    std::string name;
    auto operator<=>(const FileKey&) const = default;
};

FileKey KeyOf(const std::string& name) {
    std::string folded;
    for (const char c : name) folded += static_cast<char>(base::FoldCase(c));
    const std::size_t dot = folded.rfind('.');
    const std::string_view digits = std::string_view(folded).substr(dot == std::string::npos ? 0 : dot + 1);
    FileKey key;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), key.number);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size() || key.number < 0)
        return {-1, folded};
    key.name = folded.substr(0, dot == std::string::npos ? 0 : dot);
    return key;
}

using FileList = std::map<FileKey, std::string>;

[[noreturn]] void FailToList(const fs::path& directory, const std::error_code& error) {
    throw std::runtime_error(directory.string() + ": " + error.message());
}

FileList ListFiles(const fs::path& directory) {
    FileList files;
    if (directory.empty()) return files;
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator it(directory, error);
    for (const fs::directory_iterator end; !error && it != end; it.increment(error)) {
        std::error_code ignored;
        if (!it->is_directory(ignored)) names.push_back(it->path().filename().string());
    }
    if (error) FailToList(directory, error);
    std::ranges::sort(names);
    for (const std::string& name : names) {
        FileKey key = KeyOf(name);
        if (files.contains(key)) key.name = "/" + name;
        files.emplace(std::move(key), (directory / name).string());
    }
    return files;
}

/// The folder of a disk with this name, without regard to case; empty without one.
fs::path FindFolder(const std::string& disk, std::string_view name) {
    std::vector<fs::path> found;
    std::error_code error;
    fs::directory_iterator it(disk, error);
    for (const fs::directory_iterator end; !error && it != end; it.increment(error)) {
        std::error_code ignored;
        if (base::EqualsFolded(it->path().filename().string(), name) && it->is_directory(ignored))
            found.push_back(it->path());
    }
    if (error) FailToList(disk, error);
    return found.empty() ? fs::path() : *std::ranges::min_element(found);
}

class DiskPair {
  public:
    DiskPair(const ComparisonOptions& options, const std::function<void(const DiskItem&)>& take,
             const std::function<bool()>& stop)
        : m_options(options), m_take(take), m_stop(stop) {
        m_options.mark = false;
        m_options.fonts_may_differ = false;
    }

    void Compare(const char* folder, const FileList& a, const FileList& b);
    const ItemCounts& Counts() const noexcept { return m_counts; }

  private:
    void Take(const char* folder, const FileKey& key, const std::string& a, const std::string& b);

    ComparisonOptions m_options;
    const std::function<void(const DiskItem&)>& m_take;
    const std::function<bool()>& m_stop;
    ItemCounts m_counts;
};

void DiskPair::Take(const char* folder, const FileKey& key, const std::string& a, const std::string& b) {
    DiskItem item{folder, key.number < 0 ? std::nullopt : std::optional(key.number), a, b, {}};
    if (b.empty()) {
        ++m_counts.only_in_a;
    } else if (a.empty()) {
        ++m_counts.only_in_b;
    } else {
        item.comparison = CompareFiles(a, b, m_options);
        m_counts.Add(item.comparison.result);
    }
    m_take(item);
}

void DiskPair::Compare(const char* folder, const FileList& a, const FileList& b) {
    static const std::string kNone;
    for (auto i = a.begin(), j = b.begin(); i != a.end() || j != b.end();) {
        if (m_stop && m_stop()) return;
        if (j == b.end() || (i != a.end() && i->first < j->first)) {
            Take(folder, i->first, i->second, kNone);
            ++i;
        } else if (i == a.end() || j->first < i->first) {
            Take(folder, j->first, kNone, j->second);
            ++j;
        } else {
            Take(folder, i->first, i->second, j->second);
            ++i, ++j;
        }
    }
}

}  // namespace

void ItemCounts::Add(ComparisonResult result) noexcept {
    switch (result) {
        case ComparisonResult::kSame:
            ++same;
            break;
        case ComparisonResult::kSameButBytes:
            ++same_but_bytes;
            break;
        case ComparisonResult::kDifferent:
            ++different;
            break;
        case ComparisonResult::kTrouble:
            ++trouble;
            break;
    }
}

ItemCounts CompareDisks(const std::string& a, const std::string& b, const ComparisonOptions& options,
                        const std::function<void(const DiskItem&)>& take, const std::function<bool()>& stop) {
    DiskPair pair(options, take, stop);
    bool is_disk = false;
    for (const char* folder : {"MESSAGES", "MACHINE"}) {
        const fs::path folder_a = FindFolder(a, folder), folder_b = FindFolder(b, folder);
        if (folder_a.empty() && folder_b.empty()) continue;
        is_disk = true;
        pair.Compare(folder, ListFiles(folder_a), ListFiles(folder_b));
    }
    if (!is_disk) pair.Compare("", ListFiles(a), ListFiles(b));
    return pair.Counts();
}

}  // namespace zel::compare
