#pragma once

#include <QAbstractListModel>
#include <QCache>
#include <QImage>
#include <QSet>
#include <QSize>
#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/library/library.h"
#include "programs/desktop/models/library_filter.h"

namespace zel::desktop {

class ThumbnailLoader;

/// Whether two entries are equal and of the same recording.
bool IsSame(const library::LibraryEntry& one, const library::LibraryEntry& other);

/// The recordings of a library that a filter lists, with their thumbnails. A thumbnail is read when it is first shown.
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
    const std::vector<std::string>& Disks() const noexcept { return m_disks; }

    /// In the order of the rows.
    const std::vector<library::LibraryEntry>& Entries() const noexcept { return m_entries; }
    bool IsHeading(int row) const { return !m_lines.empty() && m_lines[static_cast<std::size_t>(row)].is_heading; }
    /// The recording of a row, or the first one below a heading.
    const library::LibraryEntry& EntryAt(int row) const;
    /// -1 for an entry that is not in the model.
    int RowOf(const library::RecordingKey& key) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    /// Items can be dragged.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    /// A row of a grouped list.
    struct Line {
        bool is_heading = false;
        /// In m_entries.
        std::size_t entry = 0;
    };

    void MakeLoader();
    void Open();
    void Update(std::vector<library::LibraryEntry> entries, bool grouped);
    void Group();
    bool InsertInto(std::vector<library::LibraryEntry>& entries);
    QImage ThumbnailOf(const library::LibraryEntry& entry) const;
    void AddThumbnail(const QString& disk, int number, const QImage& image);
    static QString CacheKey(const library::RecordingKey& key);

    std::string m_file;
    const QSize m_thumbnail;
    std::optional<library::Library> m_library;
    library::Access m_access = library::Access::kWrite;
    std::vector<library::LibraryEntry> m_entries;
    /// Empty unless the list is grouped: each row is an entry.
    std::vector<Line> m_lines;
    std::vector<std::string> m_disks;
    ThumbnailLoader* m_loader = nullptr;
    mutable QCache<QString, QImage> m_thumbnails;
    mutable QSet<QString> m_requested;
};

}  // namespace zel::desktop
