#pragma once

#include <QStringList>
#include <vector>

namespace zel::desktop {

/// A record of a table file.
struct FileRecord {
    QString number;
    /// One for each column of the table; null where the record has none.
    QStringList values;
    /// Why the record cannot be used; else empty.
    QStringList faults;
};

struct RecordFile {
    /// All columns of all records.
    QStringList columns;
    std::vector<FileRecord> records;
};

/// Reads a table: CSV if its name ends in .csv, JSON for .json, otherwise by its contents.
/// @throws std::runtime_error with the file's name and the reason. A table beyond 100,000 records or 64 MiB, which the
///         command fills without a window, is refused.
RecordFile ReadRecordFile(const QString& file);

}  // namespace zel::desktop
