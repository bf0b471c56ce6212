#include "host/library/library.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <tuple>

#include "host/library/kept_files.h"
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

/// The limit of a query.
std::int64_t Limit(std::size_t most) {
    return static_cast<std::int64_t>(std::min<std::size_t>(most, std::numeric_limits<std::int64_t>::max()));
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
        std::vector<std::string> former;
        if (existing) {
            former = ChecksumsOf(file, *existing);
            DeleteRecording(file, *existing);
        }
        InsertRecording(file, recording);
        for (const SharedFile& kept : recording.files) KeepFile(file, *kept);
        DropUnusedFiles(file, former);
    }

    /// Merges one recording of another library, within a transaction.
    void Merge(LibraryFile& other, const Recording& recording, MergeCount& count) {
        const auto existing = FindRecording(file, {recording.disk, recording.number});
        if (existing && IsSame(ReadRecording(file, *existing), recording)) {
            ++count.unchanged;
        } else {
            Replace(recording, existing);
            ++(existing ? count.replaced : count.added);
        }
        CopyKeptFiles(other, file, recording.sources);
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

    /// The recordings that match a query of the full text search, best match first, otherwise by disk and number.
    /// Within a transaction.
    std::vector<RecordingId> BestIds(const std::string& query_text, std::size_t most) {
        std::vector<Match> matches = ReadMatches(query_text);
        if (matches.size() > most) {
            // Only those that can be among the best are looked up.
            const auto last = matches.begin() + static_cast<std::ptrdiff_t>(most);
            std::ranges::nth_element(matches, last, {}, &Match::rank);
            std::erase_if(matches, [worst = last->rank](const Match& match) { return match.rank > worst; });
            std::ranges::sort(matches, {}, &Match::id);
        }
        base::SqliteStatement query = file.Prepare("SELECT disk, number FROM recording WHERE id = ?");
        std::erase_if(matches, [&](Match& match) {
            if (!file.Next(query.Again().Bind(match.id))) return true;
            match.key = {query.Text(0), static_cast<int>(query.Int(1))};
            return false;
        });
        std::ranges::sort(matches, {}, [](const Match& match) { return std::tie(match.rank, match.key); });
        if (matches.size() > most) matches.resize(most);
        std::vector<RecordingId> ids;
        ids.reserve(matches.size());
        for (const Match& match : matches) ids.push_back(match.id);
        return ids;
    }

    /// Within a transaction.
    std::vector<LibraryEntry> ReadEntriesOf(std::span<const RecordingId> ids) {
        base::SqliteStatement query = file.Prepare(SelectEntries("WHERE recording.id = ?").c_str());
        std::vector<std::size_t> positions(ids.size());
        std::iota(positions.begin(), positions.end(), std::size_t{0});
        // In the order of the file.
        std::ranges::sort(positions, {}, [&](std::size_t position) { return ids[position]; });
        std::vector<LibraryEntry> found;
        std::vector<std::pair<std::size_t, std::size_t>> order;
        found.reserve(ids.size());
        for (const std::size_t position : positions) {
            const std::size_t before = found.size();
            ReadEntries(file, query.Again().Bind(ids[position]), found);
            if (found.size() != before) order.emplace_back(position, before);
        }
        std::ranges::sort(order);
        std::vector<LibraryEntry> entries;
        entries.reserve(found.size());
        for (const auto& [position, index] : order) entries.push_back(std::move(found[index]));
        return entries;
    }

    LibraryFile file;
    const std::chrono::milliseconds patience;

  private:
    struct Match {
        RecordingId id = 0;
        /// The best is the lowest.
        double rank = 0;
        RecordingKey key;
    };

    /// In the order of the file, without keys.
    std::vector<Match> ReadMatches(const std::string& query_text) {
        base::SqliteStatement query = file.Prepare("SELECT rowid, bm25(search) FROM search WHERE search MATCH ?");
        std::vector<Match> matches;
        for (query.Bind(query_text); file.Next(query);) matches.push_back({query.Int(0), query.Real(1), {}});
        return matches;
    }
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

std::string Library::Document(const RecordingKey& key) {
    return m_impl->Find(key, ReadDocument).value_or(std::string());
}

SharedFile Library::KeptFile(const std::string& sha256) {
    return ReadKeptFile(m_impl->file, sha256);
}

std::vector<std::string> Library::Disks() {
    return ReadDisks(m_impl->file);
}

std::vector<std::string> Library::DisksWith(int number) {
    std::vector<std::string> disks;
    m_impl->file.Read([&] {
        disks = ReadDisks(m_impl->file);
        std::erase_if(disks, [&](const std::string& disk) { return !FindRecording(m_impl->file, {disk, number}); });
    });
    return disks;
}

std::vector<LibraryEntry> Library::List(const std::optional<std::string>& disk, const ListPart& part) {
    std::string condition;
    if (disk) condition = "WHERE disk = ? ";
    if (part.after) condition += disk ? "AND (disk, number) > (?, ?) " : "WHERE (disk, number) > (?, ?) ";
    const std::string sql = SelectEntries(condition + "ORDER BY disk, number LIMIT ?");
    base::SqliteStatement query = m_impl->file.Prepare(sql.c_str());
    if (disk) query.Bind(*disk);
    if (part.after) query.Bind(part.after->disk).Bind(part.after->number);
    std::vector<LibraryEntry> entries;
    ReadEntries(m_impl->file, query.Bind(Limit(part.most)), entries);
    return entries;
}

std::vector<LibraryEntry> Library::Search(const std::string& words, std::size_t most) {
    const std::string query_text = SearchQuery(words);
    if (query_text.empty()) return List(std::nullopt, {.most = most});
    std::vector<LibraryEntry> entries;
    m_impl->file.Read([&] { entries = m_impl->ReadEntriesOf(m_impl->BestIds(query_text, most)); });
    return entries;
}

LibraryTable Library::Table(const TableFilter& filter) {
    LibraryTable table;
    const std::string query_text = SearchQuery(filter.words);
    const std::string warned =
        filter.only_with_warnings ? " AND EXISTS (SELECT 1 FROM warning WHERE warning.recording = recording.id)" : "";
    m_impl->file.Read([&] {
        table.disks = ReadDisks(m_impl->file);
        if (!query_text.empty()) {
            const std::string sql =
                "SELECT recording.id, disk, number FROM search JOIN recording"
                " ON recording.id = search.rowid WHERE search MATCH ?" +
                (filter.disk ? " AND disk = ?" + warned : warned) + " ORDER BY rank, disk, number";
            base::SqliteStatement query = m_impl->file.Prepare(sql.c_str());
            query.Bind(query_text);
            if (filter.disk) query.Bind(*filter.disk);
            ReadTableRows(m_impl->file, query, table.disks, table.rows);
            return;
        }
        // Disk by disk, so that no name is read with each row.
        const std::string sql = "SELECT id, number FROM recording WHERE disk = ?" + warned + " ORDER BY number";
        base::SqliteStatement query = m_impl->file.Prepare(sql.c_str());
        for (std::uint32_t disk = 0; disk < table.disks.size(); ++disk) {
            if (filter.disk && *filter.disk != table.disks[disk]) continue;
            ReadDiskRows(m_impl->file, query.Again().Bind(table.disks[disk]), disk, table.rows);
        }
    });
    return table;
}

std::vector<LibraryEntry> Library::Entries(std::span<const RecordingId> ids) {
    std::vector<LibraryEntry> entries;
    m_impl->file.Read([&] { entries = m_impl->ReadEntriesOf(ids); });
    return entries;
}

bool Library::Remove(const RecordingKey& key) {
    bool removed = false;
    m_impl->file.Write([&] {
        const auto id = FindRecording(m_impl->file, key);
        removed = id.has_value();
        if (!removed) return;
        const std::vector<std::string> checksums = ChecksumsOf(m_impl->file, *id);
        DeleteRecording(m_impl->file, *id);
        DropUnusedFiles(m_impl->file, checksums);
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
                for (const Recording& recording : batch) m_impl->Merge(source, recording, count);
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
