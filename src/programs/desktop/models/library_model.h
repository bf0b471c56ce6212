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

namespace zel::desktop {

class ThumbnailLoader;

/// Whether two entries tell the same of the same recording.
bool IsSame(const library::LibraryEntry& one, const library::LibraryEntry& other);

/// The recordings of a library, or those that a search finds, with their thumbnails, which are read when they are
/// first shown.
class LibraryModel : public QAbstractListModel {
    Q_OBJECT

  public:
    enum Role { kThumbnail = Qt::UserRole, kText, kWarnings };

    /// @param thumbnail  size of the largest, in the screen's own pixels.
    LibraryModel(std::string library, QSize thumbnail, QObject* parent = nullptr);
    ~LibraryModel() override;

    /// Reads the library anew. What is the same stays where it is. @throws LibraryError
    void Reload();
    /// As Reload, of what holds every word; without words, of everything.
    void Search(const QString& words);
    const QString& Words() const noexcept { return m_words; }

    const library::LibraryEntry& EntryAt(int row) const { return m_entries[static_cast<std::size_t>(row)]; }
    /// -1 when it isn't shown.
    int RowOf(const library::RecordingKey& key) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    void Take(std::vector<library::LibraryEntry> entries);
    bool InsertInto(std::vector<library::LibraryEntry>& entries);
    QImage ThumbnailOf(const library::LibraryEntry& entry) const;
    void TakeThumbnail(const QString& disk, int number, const QImage& image);
    static QString CacheKey(const library::RecordingKey& key);

    const std::string m_file;
    QString m_words;
    std::optional<library::Library> m_library;
    std::vector<library::LibraryEntry> m_entries;
    ThumbnailLoader* m_loader;
    mutable QCache<QString, QImage> m_thumbnails;
    mutable QSet<QString> m_asked;
};

}  // namespace zel::desktop
