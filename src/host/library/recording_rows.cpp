#include "host/library/recording_rows.h"

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>
#include <utility>

#include "host/library/kept_files.h"

namespace zel::library {

namespace {

constexpr std::array<std::pair<RecordingKind, const char*>, 3> kKinds{{
    {RecordingKind::kMessage, "message"},
    {RecordingKind::kRgbaObject, "rgba_object"},
    {RecordingKind::kRgbaBackground, "rgba_background"},
}};

const char* KindName(RecordingKind kind) {
    return std::ranges::find(kKinds, kind, &std::pair<RecordingKind, const char*>::first)->second;
}

bool IsSha256(const std::string& digits) {
    return digits.size() == 64 && digits.find_first_not_of("0123456789abcdef") == std::string::npos;
}

/// Reads the columns of a row in order. A value that is not valid in a library is reported as damage of the file.
class Columns {
  public:
    Columns(const LibraryFile& file, const base::SqliteStatement& row) : m_file(file), m_row(row) {}

    int Int(const char* what, std::int64_t low = std::numeric_limits<int>::min(),
            std::int64_t high = std::numeric_limits<int>::max()) {
        const std::int64_t value = m_row.Int(m_column);
        if (m_row.IsNull(m_column++) || value < low || value > high) FailAt(what, value);
        return static_cast<int>(value);
    }
    std::optional<int> OptionalInt(const char* what, std::int64_t low, std::int64_t high) {
        if (!m_row.IsNull(m_column)) return Int(what, low, high);
        ++m_column;
        return std::nullopt;
    }
    RecordingId Id() { return m_row.Int(m_column++); }
    std::uint64_t Size() { return static_cast<std::uint64_t>(std::max<std::int64_t>(0, m_row.Int(m_column++))); }
    std::string Text() { return m_row.Text(m_column++); }
    std::string Bytes() { return m_row.Bytes(m_column++); }

    std::string Sha256() {
        std::string digits = Text();
        if (!digits.empty() && !IsSha256(digits)) m_file.Fail("the library is damaged: a file has an invalid checksum");
        return digits;
    }
    int Number() { return Int("number", 0, 9999); }
    RecordingKey Key() {
        std::string disk = Text();
        return {std::move(disk), Number()};
    }
    RecordingKind Kind() {
        const std::string text = Text();
        for (const auto& [kind, name] : kKinds) {
            if (text == name) return kind;
        }
        m_file.Fail("the library is damaged: a recording has an unknown kind");
    }

    VideoStandard Standard() {
        constexpr const char* kWhat = "number of lines";
        const int lines = Int(kWhat);
        const std::optional<VideoStandard> standard = VideoStandardOf(lines);
        if (!standard) FailAt(kWhat, lines);
        return *standard;
    }

  private:
    [[noreturn]] void FailAt(const std::string& what, std::int64_t value) const {
        m_file.Fail("the library is damaged: a recording has the " + what + ' ' + std::to_string(value));
    }

    const LibraryFile& m_file;
    const base::SqliteStatement& m_row;
    int m_column = 0;
};

std::string Joined(const std::vector<RecordedField>& fields) {
    std::string text;
    for (const RecordedField& field : fields) text += (text.empty() ? "" : "\n") + field.name;
    return text;
}

std::string Joined(const std::vector<SourceFile>& sources) {
    std::string text;
    for (const SourceFile& source : sources) {
        if (!source.font_number) text += (text.empty() ? "" : "\n") + source.path;
    }
    return text;
}

RecordingId InsertHead(LibraryFile& file, const Recording& recording) {
    base::SqliteStatement& insert = file.Cached(
        "INSERT INTO recording (disk, number, kind, recorded_at, options, lines, text) VALUES (?, ?, ?, ?, ?, ?, ?)");
    insert.Bind(recording.disk).Bind(recording.number).Bind(KindName(recording.kind)).Bind(recording.recorded_at);
    file.Run(insert.Bind(recording.options).Bind(ActiveLines(recording.standard)).Bind(recording.text));
    return file.LastRow();
}

void InsertContents(LibraryFile& file, RecordingId id, const Recording& recording) {
    if (!recording.document.empty()) {
        file.Run(file.Cached("INSERT INTO document VALUES (?, ?)").Bind(id).BindKept(recording.document));
    }
    if (!recording.picture.empty()) {
        base::SqliteStatement& insert = file.Cached("INSERT INTO picture VALUES (?, ?, ?, ?)");
        file.Run(insert.Bind(id).Bind(recording.width).Bind(recording.height).BindKeptBytes(recording.picture));
    }
    base::SqliteStatement& search = file.Cached("INSERT INTO search (rowid, text, fields, source) VALUES (?, ?, ?, ?)");
    file.Run(search.Bind(id).Bind(recording.text).Bind(Joined(recording.fields)).Bind(Joined(recording.sources)));
}

void InsertTexts(LibraryFile& file, const char* sql, RecordingId id, const std::vector<std::string>& texts) {
    base::SqliteStatement& insert = file.Cached(sql);
    std::int64_t position = 0;
    for (const std::string& text : texts) file.Run(insert.Again().Bind(id).Bind(position++).Bind(text));
}

void InsertFields(LibraryFile& file, RecordingId id, const std::vector<RecordedField>& fields) {
    base::SqliteStatement& insert = file.Cached("INSERT INTO field VALUES (?, ?, ?, ?, ?, ?, ?)");
    std::int64_t position = 0;
    for (const RecordedField& field : fields) {
        insert.Again().Bind(id).Bind(position++).Bind(field.name);
        file.Run(insert.Bind(field.left).Bind(field.top).Bind(field.right).Bind(field.bottom));
    }
}

void InsertSources(LibraryFile& file, RecordingId id, const std::vector<SourceFile>& sources) {
    base::SqliteStatement& insert = file.Cached("INSERT INTO source VALUES (?, ?, ?, ?, ?, ?)");
    std::int64_t position = 0;
    for (const SourceFile& source : sources) {
        insert.Again().Bind(id).Bind(position++).Bind(source.path);
        if (source.font_number) {
            insert.Bind(*source.font_number);
        } else {
            insert.BindNull();
        }
        file.Run(insert.Bind(static_cast<std::int64_t>(source.size)).Bind(source.sha256));
    }
}

/// Reads the rows of one recording in a table, one item from each row.
/// @param sql   has the recording's id as its only parameter.
/// @param read  receives the columns of one row and returns the item.
template <typename Read>
auto ReadPart(LibraryFile& file, const char* sql, RecordingId id, Read read) {
    base::SqliteStatement query = file.Prepare(sql);
    std::vector<std::invoke_result_t<Read, Columns&>> items;
    for (query.Bind(id); file.Next(query);) {
        Columns columns(file, query);
        items.push_back(read(columns));
    }
    return items;
}

std::vector<std::string> ReadTexts(LibraryFile& file, const char* sql, RecordingId id) {
    return ReadPart(file, sql, id, [](Columns& columns) { return columns.Text(); });
}

RecordedField ReadField(Columns& columns) {
    RecordedField field;
    field.name = columns.Text();
    for (int* edge : {&field.left, &field.top, &field.right, &field.bottom}) *edge = columns.Int("field's edge");
    return field;
}

std::vector<RecordedField> ReadFields(LibraryFile& file, RecordingId id) {
    return ReadPart(file,
                    "SELECT name, \"left\", top, \"right\", bottom FROM field WHERE recording = ? ORDER BY position",
                    id, ReadField);
}

SourceFile ReadSource(Columns& columns) {
    SourceFile source;
    source.path = columns.Text();
    source.font_number = columns.OptionalInt("font number", 0, 65535);
    source.size = columns.Size();
    source.sha256 = columns.Sha256();
    return source;
}

std::vector<SourceFile> ReadSources(LibraryFile& file, RecordingId id) {
    return ReadPart(file, "SELECT path, font_number, size, sha256 FROM source WHERE recording = ? ORDER BY position",
                    id, ReadSource);
}

}  // namespace

std::optional<RecordingId> FindRecording(LibraryFile& file, const RecordingKey& key) {
    base::SqliteStatement& query = file.Cached("SELECT id FROM recording WHERE disk = ? AND number = ?");
    const base::SqliteReset reset(query);
    if (!file.Next(query.Bind(key.disk).Bind(key.number))) return std::nullopt;
    return query.Int(0);
}

void InsertRecording(LibraryFile& file, const Recording& recording) {
    const RecordingId id = InsertHead(file, recording);
    InsertContents(file, id, recording);
    InsertTexts(file, "INSERT INTO font VALUES (?, ?, ?)", id, recording.fonts);
    InsertTexts(file, "INSERT INTO warning VALUES (?, ?, ?)", id, recording.warnings);
    InsertFields(file, id, recording.fields);
    InsertSources(file, id, recording.sources);
}

void DeleteRecording(LibraryFile& file, RecordingId id) {
    file.Run(file.Cached("DELETE FROM search WHERE rowid = ?").Bind(id));
    file.Run(file.Cached("DELETE FROM recording WHERE id = ?").Bind(id));
}

Recording ReadRecording(LibraryFile& file, RecordingId id) {
    base::SqliteStatement query = file.Prepare(
        "SELECT disk, number, kind, recorded_at, options, lines, text, json, width, height, png FROM recording"
        " LEFT JOIN document ON document.recording = id LEFT JOIN picture ON picture.recording = id WHERE id = ?");
    if (!file.Next(query.Bind(id))) file.Fail("the library is damaged: a recording is missing");
    Columns columns(file, query);
    Recording recording;
    RecordingKey key = columns.Key();
    recording.disk = std::move(key.disk);
    recording.number = key.number;
    recording.kind = columns.Kind();
    recording.recorded_at = columns.Text();
    recording.options = columns.Text();
    recording.standard = columns.Standard();
    recording.text = columns.Text();
    recording.document = columns.Text();
    recording.width = columns.OptionalInt("width", 1, 32767).value_or(0);
    recording.height = columns.OptionalInt("height", 1, 32767).value_or(0);
    recording.picture = columns.Bytes();
    // Earlier versions stored 486 lines for every RGBA file.
    if (recording.kind != RecordingKind::kMessage)
        recording.standard = RgbaStandard(recording.height, recording.standard);
    recording.fonts = ReadTexts(file, "SELECT name FROM font WHERE recording = ? ORDER BY position", id);
    recording.warnings = ReadTexts(file, "SELECT text FROM warning WHERE recording = ? ORDER BY position", id);
    recording.fields = ReadFields(file, id);
    recording.sources = ReadSources(file, id);
    return recording;
}

RecordingOrigin ReadOrigin(LibraryFile& file, RecordingId id) {
    base::SqliteStatement query =
        file.Prepare("SELECT options, (SELECT count(*) FROM warning WHERE recording = id) FROM recording WHERE id = ?");
    if (!file.Next(query.Bind(id))) file.Fail("the library is damaged: a recording is missing");
    Columns columns(file, query);
    RecordingOrigin origin;
    origin.options = columns.Text();
    origin.warnings = columns.Int("number of warnings", 0);
    origin.sources = ReadSources(file, id);
    origin.has_files = HasKeptFiles(file, id);
    return origin;
}

std::string ReadPicture(LibraryFile& file, RecordingId id) {
    base::SqliteStatement query = file.Prepare("SELECT png FROM picture WHERE recording = ?");
    return file.Next(query.Bind(id)) ? query.Bytes(0) : std::string();
}

std::string ReadDocument(LibraryFile& file, RecordingId id) {
    base::SqliteStatement& query = file.Cached("SELECT json FROM document WHERE recording = ?");
    const base::SqliteReset reset(query);
    return file.Next(query.Bind(id)) ? query.Text(0) : std::string();
}

std::vector<RecordingId> ReadIds(LibraryFile& file) {
    base::SqliteStatement query = file.Prepare("SELECT id FROM recording ORDER BY disk, number");
    std::vector<RecordingId> ids;
    while (file.Next(query)) ids.push_back(query.Int(0));
    return ids;
}

std::string SelectEntries(const std::string& rest) {
    return "SELECT recording.id, recording.disk, recording.number, recording.kind, recording.text, "
           "recording.recorded_at,"
           " (SELECT path FROM source WHERE source.recording = recording.id ORDER BY position LIMIT 1),"
           " (SELECT count(*) FROM warning WHERE warning.recording = recording.id) FROM recording " +
           rest;
}

void ReadEntries(LibraryFile& file, base::SqliteStatement& query, std::vector<LibraryEntry>& entries) {
    while (file.Next(query)) {
        Columns columns(file, query);
        LibraryEntry& entry = entries.emplace_back();
        entry.id = columns.Id();
        entry.key = columns.Key();
        entry.kind = columns.Kind();
        entry.text = columns.Text();
        entry.recorded_at = columns.Text();
        entry.source = columns.Text();
        entry.warnings = columns.Int("number of warnings", 0);
    }
}

std::vector<std::string> ReadDisks(LibraryFile& file) {
    // Each step looks up the next disk in the index, where DISTINCT would read all of it.
    base::SqliteStatement query = file.Prepare(
        "WITH RECURSIVE disks(name) AS (SELECT min(disk) FROM recording UNION ALL"
        " SELECT (SELECT min(disk) FROM recording WHERE disk > disks.name) FROM disks WHERE disks.name IS NOT NULL)"
        " SELECT name FROM disks WHERE name IS NOT NULL");
    std::vector<std::string> disks;
    while (file.Next(query)) disks.push_back(query.Text(0));
    return disks;
}

void ReadTableRows(LibraryFile& file, base::SqliteStatement& query, const std::vector<std::string>& disks,
                   std::vector<LibraryTable::Row>& rows) {
    while (file.Next(query)) {
        Columns columns(file, query);
        const RecordingId id = columns.Id();
        const RecordingKey key = columns.Key();
        const auto disk = std::ranges::lower_bound(disks, key.disk);
        if (disk == disks.end() || *disk != key.disk) file.Fail("the library is damaged: a recording has no disk");
        rows.push_back({id, static_cast<std::uint32_t>(disk - disks.begin()), key.number});
    }
}

void ReadDiskRows(LibraryFile& file, base::SqliteStatement& query, std::uint32_t disk,
                  std::vector<LibraryTable::Row>& rows) {
    while (file.Next(query)) {
        Columns columns(file, query);
        const RecordingId id = columns.Id();
        rows.push_back({id, disk, columns.Number()});
    }
}

}  // namespace zel::library
