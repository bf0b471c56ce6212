#include "host/library/kept_files.h"

#include <algorithm>
#include <stdexcept>

#include "host/library/library_schema.h"

namespace zel::library {

namespace {

bool IsKept(LibraryFile& file, const std::string& sha256) {
    base::SqliteStatement& query = file.Cached("SELECT 1 FROM file WHERE sha256 = ?");
    const base::SqliteReset reset(query);
    return file.Next(query.Bind(sha256));
}

/// The file, if its bytes are those of its checksum.
SharedFile ReadIntactFile(LibraryFile& file, const std::string& sha256) {
    SharedFile kept = ReadKeptFile(file, sha256);
    try {
        if (kept) ContentsOf(*kept);
    } catch (const std::runtime_error& error) {
        file.Fail(std::string("the library is damaged: ") + error.what());
    }
    return kept;
}

}  // namespace

void KeepFile(LibraryFile& file, const PackedFile& kept) {
    if (IsKept(file, kept.sha256)) return;
    base::SqliteStatement& insert = file.Cached("INSERT INTO file VALUES (?, ?, ?)");
    insert.Bind(kept.sha256).Bind(static_cast<std::int64_t>(kept.size));
    file.Run(insert.BindKeptBytes(kept.stream));
}

SharedFile ReadKeptFile(LibraryFile& file, const std::string& sha256) {
    if (file.Version() < kVersionWithFiles) return nullptr;
    base::SqliteStatement& query = file.Cached("SELECT size, stream FROM file WHERE sha256 = ?");
    const base::SqliteReset reset(query);
    if (!file.Next(query.Bind(sha256))) return nullptr;
    const auto size = static_cast<std::uint64_t>(std::max<std::int64_t>(0, query.Int(0)));
    return std::make_shared<const PackedFile>(PackedFile{sha256, size, query.Bytes(1)});
}

void CopyKeptFiles(LibraryFile& from, LibraryFile& to, const std::vector<SourceFile>& sources) {
    for (const SourceFile& source : sources) {
        if (source.sha256.empty() || IsKept(to, source.sha256)) continue;
        if (const SharedFile kept = ReadIntactFile(from, source.sha256)) KeepFile(to, *kept);
    }
}

std::vector<std::string> ChecksumsOf(LibraryFile& file, RecordingId id) {
    base::SqliteStatement& query = file.Cached("SELECT DISTINCT sha256 FROM source WHERE recording = ?");
    const base::SqliteReset reset(query);
    std::vector<std::string> checksums;
    for (query.Bind(id); file.Next(query);) checksums.push_back(query.Text(0));
    return checksums;
}

void DropUnusedFiles(LibraryFile& file, std::span<const std::string> checksums) {
    for (const std::string& sha256 : checksums) {
        base::SqliteStatement& drop = file.Cached(
            "DELETE FROM file WHERE sha256 = ?1 AND NOT EXISTS (SELECT 1 FROM source WHERE source.sha256 = ?1)");
        file.Run(drop.Bind(sha256));
    }
}

bool HasKeptFiles(LibraryFile& file, RecordingId id) {
    base::SqliteStatement kind = file.Prepare("SELECT kind = 'message' FROM recording WHERE id = ?");
    if (!file.Next(kind.Bind(id)) || kind.Int(0) == 0) return true;
    if (file.Version() < kVersionWithFiles) return false;
    base::SqliteStatement query = file.Prepare(
        "SELECT 1 FROM source LEFT JOIN file ON file.sha256 = source.sha256"
        " WHERE recording = ? AND source.sha256 <> '' AND source.size <= ? AND file.sha256 IS NULL");
    return !file.Next(query.Bind(id).Bind(static_cast<std::int64_t>(kLargestKeptFile)));
}

}  // namespace zel::library
