#include "host/library/library.h"

#include <algorithm>
#include <tuple>

#include "host/library/library_file.h"
#include "host/library/recording_rows.h"

namespace zel::library {

namespace {

/// Limits of one transaction of a merge.
constexpr std::size_t kMergeRecordings = 64;
constexpr std::size_t kMergeBytes = 16 << 20;

/// A query for the full text search: each word quoted, and matched as a prefix.
std::string SearchQuery(const std::string& words) {
    std::string query_text;
    bool inside = false;
    for (const char c : words) {
        const bool blank = c == '\0' || c == ' ' || (c >= '\t' && c <= '\r');
        if (blank == inside) query_text += blank ? "\"* " : "\"";
        inside = !blank;
        if (!blank) query_text += c == '"' ? std::string("\"\"") : std::string(1, c);
    }
    return inside ? query_text + "\"*" : query_text;
}

bool SameSources(const std::vector<SourceFile>& one, const std::vector<SourceFile>& other) {
    using Role = std::pair<std::optional<int>, std::string>;
    const auto roles = [](const std::vector<SourceFile>& sources) {
        std::vector<Role> sorted;
        sorted.reserve(sources.size());
        for (const SourceFile& source : sources) sorted.emplace_back(source.font_number, source.sha256);
        std::ranges::sort(sorted);
        return sorted;
    };
    return roles(one) == roles(other);
}

/// Whether both were made from the same files with the same options. The paths of the files are not compared.
bool IsSame(const Recording& one, const Recording& other) {
    return one.kind == other.kind && one.options == other.options && SameSources(one.sources, other.sources) &&
           std::tie(one.width, one.height, one.picture) == std::tie(other.width, other.height, other.picture);
}

std::size_t BytesOf(const Recording& recording) {
    return recording.picture.size() + recording.document.size() + recording.text.size();
}

}  // namespace

class Library::Impl {
  public:
    Impl(const std::filesystem::path& path, Access access, std::chrono::milliseconds waiting_time)
        : file(path, access, waiting_time), patience(waiting_time) {}

    /// Stores a recording in place of `existing`, within a transaction.
    void Replace(const Recording& recording, std::optional<RecordingId> existing) {
        if (existing) DeleteRecording(file, *existing);
        InsertRecording(file, recording);
    }

    /// Merges one recording, within a transaction.
    void Merge(const Recording& recording, MergeCount& count) {
        const auto existing = FindRecording(file, {recording.disk, recording.number});
        if (existing && IsSame(ReadRecording(file, *existing), recording)) {
            ++count.unchanged;
            return;
        }
        Replace(recording, existing);
        ++(existing ? count.replaced : count.added);
    }

    /// Reads a part of a recording with a function of recording_rows.h, in one transaction.
    template <typename Part>
    std::optional<Part> Find(const RecordingKey& key, Part (*read)(LibraryFile&, RecordingId)) {
        std::optional<Part> part;
        file.Read([&] {
            if (const auto id = FindRecording(file, key)) part = read(file, *id);
        });
        return part;
    }

    LibraryFile file;
    const std::chrono::milliseconds patience;
};

Library::Library(const std::filesystem::path& file, Access access, std::chrono::milliseconds patience)
    : m_impl(std::make_unique<Impl>(file, access, patience)) {}

Library::~Library() = default;

std::vector<bool> Library::Record(std::span<const Recording> recordings) {
    std::vector<bool> replaced;
    if (recordings.empty()) return replaced;
    replaced.reserve(recordings.size());
    m_impl->file.Write([&] {
        for (const Recording& recording : recordings) {
            const auto existing = FindRecording(m_impl->file, {recording.disk, recording.number});
            m_impl->Replace(recording, existing);
            replaced.push_back(existing.has_value());
        }
    });
    return replaced;
}

bool Library::Has(const RecordingKey& key) {
    return FindRecording(m_impl->file, key).has_value();
}

std::optional<Recording> Library::Find(const RecordingKey& key) {
    return m_impl->Find(key, ReadRecording);
}

std::optional<RecordingOrigin> Library::Origin(const RecordingKey& key) {
    return m_impl->Find(key, ReadOrigin);
}

std::string Library::Picture(const RecordingKey& key) {
    return m_impl->Find(key, ReadPicture).value_or(std::string());
}

std::vector<std::string> Library::Disks() {
    base::SqliteStatement query = m_impl->file.Prepare("SELECT DISTINCT disk FROM recording ORDER BY disk");
    std::vector<std::string> disks;
    while (m_impl->file.Next(query)) disks.push_back(query.Text(0));
    return disks;
}

std::vector<LibraryEntry> Library::List(const std::optional<std::string>& disk) {
    const std::string sql = SelectEntries(disk ? "WHERE disk = ? ORDER BY number" : "ORDER BY disk, number");
    base::SqliteStatement query = m_impl->file.Prepare(sql.c_str());
    if (disk) query.Bind(*disk);
    return ReadEntries(m_impl->file, query);
}

std::vector<LibraryEntry> Library::Search(const std::string& words) {
    const std::string query_text = SearchQuery(words);
    if (query_text.empty()) return List();
    const std::string sql =
        SelectEntries("JOIN search ON search.rowid = recording.id WHERE search MATCH ? ORDER BY rank, disk, number");
    base::SqliteStatement query = m_impl->file.Prepare(sql.c_str());
    return ReadEntries(m_impl->file, query.Bind(query_text));
}

bool Library::Remove(const RecordingKey& key) {
    bool removed = false;
    m_impl->file.Write([&] {
        const auto id = FindRecording(m_impl->file, key);
        if (id) DeleteRecording(m_impl->file, *id);
        removed = id.has_value();
    });
    return removed;
}

MergeCount Library::Merge(const std::filesystem::path& other) {
    LibraryFile source(other, Access::kRead, m_impl->patience);
    MergeCount count;
    source.Read([&] {
        std::vector<Recording> batch;
        std::size_t bytes = 0;
        const auto merge_batch = [&] {
            m_impl->file.Write([&] {
                for (const Recording& recording : batch) m_impl->Merge(recording, count);
            });
            batch.clear();
            bytes = 0;
        };
        for (const RecordingId id : ReadIds(source)) {
            batch.push_back(ReadRecording(source, id));
            bytes += BytesOf(batch.back());
            if (batch.size() >= kMergeRecordings || bytes >= kMergeBytes) merge_batch();
        }
        if (!batch.empty()) merge_batch();
    });
    return count;
}

}  // namespace zel::library
