#include "programs/desktop/models/library_model.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string_view>
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

/// The library lists its entries by disk and number; entries that are otherwise equal stay in that order.
void Sort(std::vector<library::LibraryEntry>& entries, LibraryOrder order) {
    if (order == LibraryOrder::kNumber) {
        std::ranges::stable_sort(entries, {}, [](const library::LibraryEntry& entry) { return entry.key.number; });
    } else if (order == LibraryOrder::kTitle) {
        using Titled = std::pair<QString, library::LibraryEntry>;
        std::vector<Titled> titled;
        titled.reserve(entries.size());
        for (library::LibraryEntry& entry : entries)
            titled.emplace_back(HeadlineOf(entry).toCaseFolded(), std::move(entry));
        // Messages without a title are last.
        const auto is_before = [](const QString& a, const QString& b) {
            return a.isEmpty() || b.isEmpty() ? !a.isEmpty() && b.isEmpty() : a.localeAwareCompare(b) < 0;
        };
        std::ranges::stable_sort(titled, is_before, &Titled::first);
        entries.clear();
        for (auto& [title, entry] : titled) entries.push_back(std::move(entry));
    }
}

}  // namespace

bool IsSame(const library::LibraryEntry& one, const library::LibraryEntry& other) {
    return one.key == other.key && one.recorded_at == other.recorded_at && one.text == other.text &&
           one.warnings == other.warnings && one.source == other.source;
}

LibraryModel::LibraryModel(std::string library, QSize thumbnail, QObject* parent)
    : QAbstractListModel(parent), m_file(std::move(library)), m_thumbnail(thumbnail), m_thumbnails(kCachedThumbnails) {
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
        if (loader == m_loader) m_requested.remove(CacheKey({disk.toStdString(), number}));
    });
}

LibraryModel::~LibraryModel() = default;

void LibraryModel::SetLibrary(std::string library) {
    beginResetModel();
    m_file = std::move(library);
    m_library.reset();
    m_entries.clear();
    m_lines.clear();
    m_disks.clear();
    m_thumbnails.clear();
    m_requested.clear();
    MakeLoader();
    endResetModel();
}

QString LibraryModel::CacheKey(const library::RecordingKey& key) {
    return Text(key.disk) + QLatin1Char('\n') + QString::number(key.number);
}

void LibraryModel::Reload(const LibraryFilter& filter) {
    if (!m_library) Open();
    std::vector<library::LibraryEntry> entries = m_library->Search(filter.words.toStdString());
    std::erase_if(entries, [&](const library::LibraryEntry& entry) {
        return (filter.only_with_warnings && entry.warnings == 0) || (filter.disk && entry.key.disk != *filter.disk);
    });
    if (!filter.HasWords()) Sort(entries, filter.order);
    m_disks = m_library->Disks();
    const bool grouped = filter.grouped && !filter.HasWords();
    if (grouped)
        std::ranges::stable_sort(entries, {}, [](const library::LibraryEntry& entry) { return entry.key.disk; });
    Update(std::move(entries), grouped);
    // It may have been opened without its log, and would not show what other programs record.
    if (m_access == library::Access::kRead) m_library.reset();
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

int LibraryModel::RowOf(const library::RecordingKey& key) const {
    const auto found = std::ranges::find(m_entries, key, &library::LibraryEntry::key);
    if (found == m_entries.end()) return -1;
    const auto entry = static_cast<std::size_t>(found - m_entries.begin());
    if (m_lines.empty()) return static_cast<int>(entry);
    const auto line =
        std::ranges::find_if(m_lines, [entry](const Line& each) { return !each.is_heading && each.entry == entry; });
    return static_cast<int>(line - m_lines.begin());
}

const library::LibraryEntry& LibraryModel::EntryAt(int row) const {
    const auto at = static_cast<std::size_t>(row);
    return m_entries[m_lines.empty() ? at : m_lines[at].entry];
}

int LibraryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_lines.empty() ? m_entries.size() : m_lines.size());
}

Qt::ItemFlags LibraryModel::flags(const QModelIndex& index) const {
    if (index.isValid() && IsHeading(index.row())) return Qt::NoItemFlags;
    return QAbstractListModel::flags(index) | (index.isValid() ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
}

void LibraryModel::Update(std::vector<library::LibraryEntry> entries, bool grouped) {
    std::map<library::RecordingKey, std::string_view> recorded_at;
    for (const library::LibraryEntry& entry : m_entries) recorded_at.emplace(entry.key, entry.recorded_at);
    for (const library::LibraryEntry& entry : entries) {
        const auto before = recorded_at.find(entry.key);
        if (before != recorded_at.end() && before->second != entry.recorded_at)
            m_thumbnails.remove(CacheKey(entry.key));
    }
    if (!grouped && m_lines.empty() && InsertInto(entries)) return;
    beginResetModel();
    m_entries = std::move(entries);
    m_lines.clear();
    if (grouped) Group();
    endResetModel();
}

/// The entries of each disk are together.
void LibraryModel::Group() {
    for (std::size_t entry = 0; entry < m_entries.size(); ++entry) {
        if (entry == 0 || m_entries[entry].key.disk != m_entries[entry - 1].key.disk) m_lines.push_back({true, entry});
        m_lines.push_back({false, entry});
    }
}

/// Inserts new entries between the present ones. Returns false, without a change, if there are no present ones or one
/// of them is missing or has moved.
bool LibraryModel::InsertInto(std::vector<library::LibraryEntry>& entries) {
    std::size_t old = 0;
    for (const library::LibraryEntry& entry : entries) {
        if (old < m_entries.size() && m_entries[old].key == entry.key) ++old;
    }
    if (old != m_entries.size() || m_entries.empty()) return false;
    for (std::size_t row = 0; row < entries.size();) {
        if (row < m_entries.size() && m_entries[row].key == entries[row].key) {
            if (!IsSame(m_entries[row], entries[row])) {
                m_entries[row] = std::move(entries[row]);
                const QModelIndex changed = index(static_cast<int>(row));
                Q_EMIT dataChanged(changed, changed);
            }
            ++row;
            continue;
        }
        std::size_t end = row;
        while (end < entries.size() && (row >= m_entries.size() || entries[end].key != m_entries[row].key)) ++end;
        beginInsertRows({}, static_cast<int>(row), static_cast<int>(end) - 1);
        const auto at = [](std::vector<library::LibraryEntry>& list, std::size_t index) {
            return list.begin() + static_cast<std::ptrdiff_t>(index);
        };
        m_entries.insert(at(m_entries, row), at(entries, row), at(entries, end));
        endInsertRows();
        row = end;
    }
    return true;
}

QVariant LibraryModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const library::LibraryEntry& entry = EntryAt(index.row());
    if (IsHeading(index.row())) {
        if (role == kIsHeading) return true;
        const bool is_text = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
        return is_text ? QVariant(NameOfDisk(entry.key.disk)) : QVariant();
    }
    switch (role) {
        case Qt::DisplayRole:
            return TitleOf(entry.key);
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
    const QString key = CacheKey(entry.key);
    if (const QImage* image = m_thumbnails.object(key)) return *image;
    if (!m_requested.contains(key)) {
        m_requested.insert(key);
        m_loader->Request(entry.key);
    }
    return {};
}

void LibraryModel::AddThumbnail(const QString& disk, int number, const QImage& image) {
    const library::RecordingKey key{disk.toStdString(), number};
    m_requested.remove(CacheKey(key));
    m_thumbnails.insert(CacheKey(key), new QImage(image));
    const int row = RowOf(key);
    if (row >= 0) Q_EMIT dataChanged(index(row), index(row), {kThumbnail});
}

}  // namespace zel::desktop
