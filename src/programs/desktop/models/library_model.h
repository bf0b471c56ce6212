#pragma once

#include <QAbstractListModel>
#include <QCache>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/library/library.h"
#include "programs/desktop/models/entry_cache.h"
#include "programs/desktop/models/library_filter.h"

namespace zel::desktop {

class ThumbnailLoader;

/// Whether two entries are equal and of the same recording.
bool IsSame(const library::LibraryEntry& one, const library::LibraryEntry& other);

/// The recordings of a library that a filter lists, with their thumbnails. Texts and thumbnails are read when they are
/// first shown, so that a library of very many recordings is listed at once.
/// A row is a recording or, in a grouped list, the heading of a disk, which can't be selected; a recording follows it.
class LibraryModel : public QAbstractListModel {
    Q_OBJECT

  public:
    enum Role { kThumbnail = Qt::UserRole, kText, kWarnings, kIsHeading };

    /// @param thumbnail  size of the largest thumbnail, in device pixels.
    LibraryModel(std::string library, QSize thumbnail, QObject* parent = nullptr);
    ~LibraryModel() override;

    /// Shows another library from the next Reload on; until then, no recordings.
    void SetLibrary(std::string library);

    /// Reads the library again. Entries that stay in their order keep their model indexes.
    /// @throws LibraryError
    void Reload(const LibraryFilter& filter);

    /// Names of the disks in the library, as of the last Reload; sorted.
    const std::vector<std::string>& Disks() const noexcept { return m_table.disks; }

    /// Number of recordings that are listed.
    std::size_t Count() const noexcept { return m_table.rows.size(); }
    /// Those of all recordings, in the order of the rows.
    std::vector<library::RecordingKey> Keys() const;
    bool IsHeading(int row) const { return !m_lines.empty() && m_lines[static_cast<std::size_t>(row)].is_heading; }
    /// The recording of a row, or the first one below a heading.
    library::RecordingKey KeyAt(int row) const;
    /// Its entry, with the key alone if it was removed after the last Reload or the library cannot be read.
    library::LibraryEntry EntryAt(int row) const;
    /// -1 for an entry that is not in the model.
    int RowOf(const library::RecordingKey& key) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    /// Items can be dragged.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  Q_SIGNALS:
    /// Recordings cannot be read, and are listed without their texts. Emitted once for each Reload.
    void failed(const QString& reason);

  private:
    /// A row of a grouped list.
    struct Line {
        bool is_heading = false;
        /// In the table.
        std::size_t entry = 0;
    };

    void MakeLoader();
    void Open();
    std::vector<library::LibraryEntry> ReadEntries(std::span<const library::RecordingId> ids);
    void Sort(library::LibraryTable& table, LibraryOrder order);
    void SortByTitle(library::LibraryTable& table);
    void Update(library::LibraryTable table, bool grouped);
    void Group();
    bool InsertInto(const library::LibraryTable& table);
    bool TakeDisks(const std::vector<std::string>& disks);
    std::size_t EntryOf(int row) const;
    QImage ThumbnailOf(const library::LibraryEntry& entry) const;
    void AddThumbnail(const QString& disk, int number, const QImage& image);

    std::string m_file;
    const QSize m_thumbnail;
    std::optional<library::Library> m_library;
    library::Access m_access = library::Access::kWrite;
    library::LibraryTable m_table;
    /// A failure was reported since the last Reload.
    bool m_failed = false;
    mutable EntryCache m_entries;
    /// Empty unless the list is grouped: each row is an entry.
    std::vector<Line> m_lines;
    ThumbnailLoader* m_loader = nullptr;
    mutable QCache<QString, QImage> m_thumbnails;
    /// The keys in the cache of the thumbnails that were requested, by disk and number.
    mutable QHash<QString, QString> m_requested;
};

}  // namespace zel::desktop
