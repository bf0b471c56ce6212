#include "programs/desktop/models/library_model.h"

#include <QCollator>
#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <unordered_map>
#include <utility>

#include "host/export/message_title.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/models/thumbnail_loader.h"

namespace zel::desktop {

namespace {

/// More than fit on several screens.
constexpr int kCachedThumbnails = 600;

/// The text of a message and the number of its warnings.
QString DescriptionOf(const library::LibraryEntry& entry) {
    const QString text = Text(entry.text);
    return entry.warnings == 0 ? text : text + u'\n' + LibraryModel::tr("Warnings: %1").arg(entry.warnings);
}

QString HeadlineOf(const library::LibraryEntry& entry) {
    return QString::fromUtf8(exporter::TitleOf(entry.text).c_str()).simplified();
}

QString NameOf(const library::RecordingKey& key) {
    return Text(key.disk) + QLatin1Char('\n') + QString::number(key.number);
}

/// A recording that replaces another one has another key in the cache.
QString CacheKey(const library::LibraryEntry& entry) {
    return NameOf(entry.key) + QLatin1Char('\n') + QString::number(entry.id) + QLatin1Char('\n') +
           Text(entry.recorded_at);
}

bool HaveSameKey(const library::LibraryTable::Row& one, const library::LibraryTable::Row& other) {
    return one.disk == other.disk && one.number == other.number;
}

}  // namespace

bool IsSame(const library::LibraryEntry& one, const library::LibraryEntry& other) {
    return one.id == other.id && one.key == other.key && one.recorded_at == other.recorded_at &&
           one.text == other.text && one.warnings == other.warnings && one.source == other.source;
}

LibraryModel::LibraryModel(std::string library, QSize thumbnail, QObject* parent)
    : QAbstractListModel(parent),
      m_file(std::move(library)),
      m_thumbnail(thumbnail),
      m_entries([this](std::span<const library::RecordingId> ids) { return ReadEntries(ids); }),
      m_thumbnails(kCachedThumbnails) {
    MakeLoader();
}

void LibraryModel::MakeLoader() {
    const ThumbnailLoader* const before = m_loader;
    auto* const loader = m_loader = new ThumbnailLoader(m_file, m_thumbnail, this);
    delete before;
    // Signals of an earlier loader may still be queued.
    connect(loader, &ThumbnailLoader::loaded, this,
            [this, loader](const QString& disk, int number, const QImage& image) {
                if (loader == m_loader) AddThumbnail(disk, number, image);
            });
    connect(loader, &ThumbnailLoader::dropped, this, [this, loader](const QString& disk, int number) {
        if (loader == m_loader) m_requested.remove(NameOf({disk.toStdString(), number}));
    });
}

LibraryModel::~LibraryModel() = default;

void LibraryModel::SetLibrary(std::string library) {
    beginResetModel();
    m_file = std::move(library);
    m_library.reset();
    m_table = {};
    m_entries.Clear();
    m_lines.clear();
    m_thumbnails.clear();
    m_requested.clear();
    MakeLoader();
    endResetModel();
}

void LibraryModel::Reload(const LibraryFilter& filter) {
    m_failed = false;
    if (!m_library) Open();
    library::LibraryTable table =
        m_library->Table({filter.words.toStdString(), filter.disk, filter.only_with_warnings});
    if (!filter.HasWords()) Sort(table, filter.order);
    const bool grouped = filter.grouped && !filter.HasWords();
    if (grouped) std::ranges::stable_sort(table.rows, {}, &library::LibraryTable::Row::disk);
    // It may have been opened without its log, and would not show what other programs record.
    if (m_access == library::Access::kRead) m_library.reset();
    Update(std::move(table), grouped);
}

/// The library lists its recordings by disk and number; those that are otherwise equal stay in that order.
void LibraryModel::Sort(library::LibraryTable& table, LibraryOrder order) {
    if (order == LibraryOrder::kNumber) std::ranges::stable_sort(table.rows, {}, &library::LibraryTable::Row::number);
    if (order == LibraryOrder::kTitle) SortByTitle(table);
}

void LibraryModel::SortByTitle(library::LibraryTable& table) {
    struct Titled {
        /// Messages without a title are last.
        bool is_untitled;
        QCollatorSortKey key;
        library::LibraryTable::Row row;
    };
    const QCollator collator;
    std::vector<Titled> titled;
    titled.reserve(table.rows.size());
    constexpr std::size_t kAtOnce = 1024;
    for (std::size_t first = 0; first < table.rows.size(); first += kAtOnce) {
        std::unordered_map<library::RecordingId, QString> titles;
        const auto rows = std::span(table.rows).subspan(first, std::min(kAtOnce, table.rows.size() - first));
        std::vector<library::RecordingId> ids;
        for (const library::LibraryTable::Row& row : rows) ids.push_back(row.id);
        for (const library::LibraryEntry& entry : m_library->Entries(ids))
            titles.emplace(entry.id, HeadlineOf(entry).toCaseFolded());
        for (const library::LibraryTable::Row& row : rows) {
            const QString& title = titles[row.id];
            titled.push_back({title.isEmpty(), collator.sortKey(title), row});
        }
    }
    std::ranges::stable_sort(titled, [](const Titled& a, const Titled& b) {
        return a.is_untitled != b.is_untitled ? b.is_untitled : !a.is_untitled && a.key < b.key;
    });
    std::ranges::transform(titled, table.rows.begin(), &Titled::row);
}

/// Creates a missing library. One that cannot be written is opened for reading.
void LibraryModel::Open() {
    m_access = library::Access::kWrite;
    try {
        m_library.emplace(m_file, m_access, kLibraryWait);
    } catch (const library::LibraryError&) {
        std::error_code error;
        if (!std::filesystem::exists(m_file, error)) throw;
        m_access = library::Access::kRead;
        m_library.emplace(m_file, m_access, kLibraryWait);
    }
}

/// Leaves out what cannot be read, and reports that once.
std::vector<library::LibraryEntry> LibraryModel::ReadEntries(std::span<const library::RecordingId> ids) {
    try {
        if (m_library) return m_library->Entries(ids);
        return library::Library(m_file, library::Access::kRead, kLibraryWait).Entries(ids);
    } catch (const library::LibraryError& error) {
        if (!std::exchange(m_failed, true)) {
            // The list is being painted.
            const QString reason = Text(error.what());
            QMetaObject::invokeMethod(
                this, [this, reason] { Q_EMIT failed(reason); }, Qt::QueuedConnection);
        }
    }
    std::vector<library::LibraryEntry> entries;
    if (ids.size() < 2) return entries;
    // One damaged recording does not hide the others. A locked library would be waited for each time.
    QElapsedTimer elapsed;
    elapsed.start();
    for (const library::RecordingId& id : ids) {
        if (elapsed.hasExpired(std::chrono::milliseconds(kLibraryWait).count())) break;
        for (library::LibraryEntry& entry : ReadEntries({&id, 1})) entries.push_back(std::move(entry));
    }
    return entries;
}

int LibraryModel::RowOf(const library::RecordingKey& key) const {
    const auto disk = std::ranges::lower_bound(m_table.disks, key.disk);
    if (disk == m_table.disks.end() || *disk != key.disk) return -1;
    const library::LibraryTable::Row wanted{.disk = static_cast<std::uint32_t>(disk - m_table.disks.begin()),
                                            .number = key.number};
    const auto found = std::ranges::find_if(
        m_table.rows, [&](const library::LibraryTable::Row& row) { return HaveSameKey(row, wanted); });
    if (found == m_table.rows.end()) return -1;
    const auto entry = static_cast<std::size_t>(found - m_table.rows.begin());
    if (m_lines.empty()) return static_cast<int>(entry);
    const auto line =
        std::ranges::find_if(m_lines, [entry](const Line& each) { return !each.is_heading && each.entry == entry; });
    return static_cast<int>(line - m_lines.begin());
}

std::size_t LibraryModel::EntryOf(int row) const {
    const auto at = static_cast<std::size_t>(row);
    return m_lines.empty() ? at : m_lines[at].entry;
}

library::RecordingKey LibraryModel::KeyAt(int row) const {
    return m_table.KeyOf(m_table.rows[EntryOf(row)]);
}

library::LibraryEntry LibraryModel::EntryAt(int row) const {
    return m_entries.At(m_table, EntryOf(row));
}

std::vector<library::RecordingKey> LibraryModel::Keys() const {
    std::vector<library::RecordingKey> keys;
    keys.reserve(Count());
    for (const library::LibraryTable::Row& row : m_table.rows) keys.push_back(m_table.KeyOf(row));
    return keys;
}

int LibraryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_lines.empty() ? Count() : m_lines.size());
}

Qt::ItemFlags LibraryModel::flags(const QModelIndex& index) const {
    if (index.isValid() && IsHeading(index.row())) return Qt::NoItemFlags;
    return QAbstractListModel::flags(index) | (index.isValid() ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
}

void LibraryModel::Update(library::LibraryTable table, bool grouped) {
    m_entries.Clear();
    if (!grouped && m_lines.empty() && InsertInto(table)) return;
    beginResetModel();
    m_table = std::move(table);
    m_entries.Clear();
    m_lines.clear();
    if (grouped) Group();
    endResetModel();
}

/// The entries of each disk are together.
void LibraryModel::Group() {
    for (std::size_t entry = 0; entry < Count(); ++entry) {
        if (entry == 0 || m_table.rows[entry].disk != m_table.rows[entry - 1].disk) m_lines.push_back({true, entry});
        m_lines.push_back({false, entry});
    }
}

/// Takes the disks of a newer table. Returns false, without a change, if one of the present ones is missing there.
bool LibraryModel::TakeDisks(const std::vector<std::string>& disks) {
    std::vector<std::uint32_t> places;
    for (const std::string& disk : m_table.disks) {
        const auto place = std::ranges::lower_bound(disks, disk);
        if (place == disks.end() || *place != disk) return false;
        places.push_back(static_cast<std::uint32_t>(place - disks.begin()));
    }
    m_table.disks = disks;
    for (library::LibraryTable::Row& row : m_table.rows) row.disk = places[row.disk];
    return true;
}

/// Inserts new recordings between the present ones. Returns false if there are no present ones, one of them is missing
/// or has moved, or there would be very many insertions; the model has its recordings as before then.
bool LibraryModel::InsertInto(const library::LibraryTable& table) {
    if (m_table.rows.empty() || !TakeDisks(table.disks)) return false;
    constexpr std::size_t kMaxInsertions = 64;
    std::size_t old = 0, insertions = 0;
    bool inserting = false;
    for (const library::LibraryTable::Row& row : table.rows) {
        const bool is_old = old < m_table.rows.size() && HaveSameKey(m_table.rows[old], row);
        if (is_old) ++old;
        if (!is_old && !inserting) ++insertions;
        inserting = !is_old;
    }
    if (old != m_table.rows.size() || insertions > kMaxInsertions) return false;
    for (std::size_t row = 0; row < table.rows.size();) {
        if (row < m_table.rows.size() && HaveSameKey(m_table.rows[row], table.rows[row])) {
            m_table.rows[row].id = table.rows[row].id;
            ++row;
            continue;
        }
        std::size_t end = row;
        while (end < table.rows.size() &&
               (row >= m_table.rows.size() || !HaveSameKey(table.rows[end], m_table.rows[row])))
            ++end;
        beginInsertRows({}, static_cast<int>(row), static_cast<int>(end) - 1);
        m_entries.Clear();
        const auto at = [](auto& rows, std::size_t index) { return rows.begin() + static_cast<std::ptrdiff_t>(index); };
        m_table.rows.insert(at(m_table.rows, row), at(table.rows, row), at(table.rows, end));
        endInsertRows();
        row = end;
    }
    m_entries.Clear();
    // Which texts have changed shows when they are read again.
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    return true;
}

QVariant LibraryModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (IsHeading(index.row())) {
        if (role == kIsHeading) return true;
        const bool is_text = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
        return is_text ? QVariant(NameOfDisk(KeyAt(index.row()).disk)) : QVariant();
    }
    if (role == Qt::DisplayRole) return TitleOf(KeyAt(index.row()));
    if (role == kIsHeading) return {};
    const library::LibraryEntry& entry = m_entries.At(m_table, EntryOf(index.row()));
    switch (role) {
        case Qt::ToolTipRole:
            return PlainToolTip(DescriptionOf(entry));
        case Qt::AccessibleDescriptionRole:
            return DescriptionOf(entry);
        case Qt::AccessibleTextRole:
            return TitleOf(entry.key) + QStringLiteral(", ") + HeadlineOf(entry);
        case kThumbnail:
            return ThumbnailOf(entry);
        case kText:
            return HeadlineOf(entry);
        case kWarnings:
            return entry.warnings;
        default:
            return {};
    }
}

QImage LibraryModel::ThumbnailOf(const library::LibraryEntry& entry) const {
    const QString key = CacheKey(entry);
    if (const QImage* image = m_thumbnails.object(key)) return *image;
    QString& requested = m_requested[NameOf(entry.key)];
    if (requested != key) {
        requested = key;
        m_loader->Request(entry.key);
    }
    return {};
}

void LibraryModel::AddThumbnail(const QString& disk, int number, const QImage& image) {
    const library::RecordingKey key{disk.toStdString(), number};
    // Of the recording that was listed when the thumbnail was requested.
    m_thumbnails.insert(m_requested.take(NameOf(key)), new QImage(image));
    const int row = RowOf(key);
    if (row >= 0) Q_EMIT dataChanged(index(row), index(row), {kThumbnail});
}

}  // namespace zel::desktop
