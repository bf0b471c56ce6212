#include "host/library/library_schema.h"

#include <cstddef>
#include <iterator>

namespace zel::library {

namespace {

// Texts are UTF-8. Document and picture, which a list does not show, have tables of their own, so that the rows of
// `recording` stay short. Positions count from 0. SQLite checks these conditions on each write; a file written by
// another program may violate them, so a reader checks what it depends on. The numbers of lines are those of the video
// standards; like every other text here they are part of the stored version.
constexpr const char* kSchema[] = {
    "CREATE TABLE recording (id INTEGER PRIMARY KEY, disk TEXT NOT NULL,"
    " number INTEGER NOT NULL CHECK (number BETWEEN 0 AND 9999),"
    " kind TEXT NOT NULL CHECK (kind IN ('message', 'rgba_object', 'rgba_background')),"
    " recorded_at TEXT NOT NULL, options TEXT NOT NULL, lines INTEGER NOT NULL CHECK (lines IN (486, 576)),"
    " text TEXT NOT NULL, UNIQUE (disk, number)) STRICT",

    "CREATE TABLE document (recording INTEGER PRIMARY KEY REFERENCES recording ON DELETE CASCADE,"
    " json TEXT NOT NULL) STRICT",

    "CREATE TABLE picture (recording INTEGER PRIMARY KEY REFERENCES recording ON DELETE CASCADE,"
    " width INTEGER NOT NULL CHECK (width BETWEEN 1 AND 32767),"
    " height INTEGER NOT NULL CHECK (height BETWEEN 1 AND 32767), png BLOB NOT NULL) STRICT",

    "CREATE TABLE font (recording INTEGER NOT NULL REFERENCES recording ON DELETE CASCADE,"
    " position INTEGER NOT NULL, name TEXT NOT NULL, PRIMARY KEY (recording, position)) STRICT, WITHOUT ROWID",

    "CREATE TABLE field (recording INTEGER NOT NULL REFERENCES recording ON DELETE CASCADE,"
    " position INTEGER NOT NULL, name TEXT NOT NULL, \"left\" INTEGER NOT NULL, top INTEGER NOT NULL,"
    " \"right\" INTEGER NOT NULL, bottom INTEGER NOT NULL, PRIMARY KEY (recording, position)) STRICT, WITHOUT ROWID",

    "CREATE TABLE warning (recording INTEGER NOT NULL REFERENCES recording ON DELETE CASCADE,"
    " position INTEGER NOT NULL, text TEXT NOT NULL, PRIMARY KEY (recording, position)) STRICT, WITHOUT ROWID",

    "CREATE TABLE source (recording INTEGER NOT NULL REFERENCES recording ON DELETE CASCADE,"
    " position INTEGER NOT NULL, path TEXT NOT NULL, font_number INTEGER CHECK (font_number BETWEEN 0 AND 65535),"
    " size INTEGER NOT NULL CHECK (size >= 0),"
    " sha256 TEXT NOT NULL CHECK (length(sha256) IN (0, 64) AND sha256 NOT GLOB '*[^0-9a-f]*'),"
    " PRIMARY KEY (recording, position)) STRICT, WITHOUT ROWID",

    // The row number is the recording's id.
    "CREATE VIRTUAL TABLE search USING fts5(text, fields, source, tokenize = \"unicode61 remove_diacritics 2\","
    " prefix = '2 3')",

    // From here on of version 2. The stream is raw deflate.
    "CREATE TABLE file (sha256 TEXT PRIMARY KEY CHECK (length(sha256) = 64 AND sha256 NOT GLOB '*[^0-9a-f]*'),"
    " size INTEGER NOT NULL CHECK (size >= 0), stream BLOB NOT NULL) STRICT",

    // To find out whether a file is still needed.
    "CREATE INDEX source_sha256 ON source (sha256)",
};

/// Statements of the versions 1, 2 and so on.
constexpr std::size_t kCounts[] = {std::size(kSchema) - 2, std::size(kSchema)};
static_assert(std::size(kCounts) == kLibraryVersion);

}  // namespace

std::span<const char* const> LibrarySchema(int version) noexcept {
    return std::span(kSchema).first(kCounts[static_cast<std::size_t>(version) - 1]);
}

}  // namespace zel::library
