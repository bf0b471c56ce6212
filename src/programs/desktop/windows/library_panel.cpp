#include "programs/desktop/windows/library_panel.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "programs/desktop/common/text.h"
#include "programs/desktop/models/library_model.h"
#include "programs/desktop/models/library_watch.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/widgets/thumbnail_delegate.h"
#include "programs/desktop/widgets/thumbnail_list.h"

namespace zel::desktop {

namespace {

constexpr int kSearchDelay_ms = 200;
constexpr int kReloadDelay_ms = 150;
/// A reload is followed by a delay of at least this many times its duration.
constexpr int kReloadPause = 10;

ThumbnailList* MakeList(QAbstractItemModel* model, QWidget* parent) {
    auto* const list = new ThumbnailList(parent);
    list->setObjectName(QStringLiteral("library"));
    list->setAccessibleName(LibraryPanel::tr("Library"));
    list->setModel(model);
    list->setItemDelegate(new ThumbnailDelegate(list));
    list->setMinimumWidth(ThumbnailDelegate::kThumbnail.width() + 48);
    return list;
}

}  // namespace

LibraryPanel::LibraryPanel(std::string library, QWidget* parent)
    : QWidget(parent),
      m_model(new LibraryModel(library, ThumbnailDelegate::kThumbnail * qGuiApp->devicePixelRatio(), this)),
      m_watch(new LibraryWatch(std::move(library), this)),
      m_search(new QLineEdit(this)),
      m_options(new QPushButton(tr("S&ort"), this)),
      m_disk(new QComboBox(this)),
      m_list(MakeList(m_model, this)),
      m_message(new QLabel(this)),
      m_pages(new QStackedWidget(this)),
      m_search_timer(new QTimer(this)),
      m_reload_timer(new QTimer(this)) {
    SetUpFields();
    LayOut();
    Connect();
}

void LibraryPanel::SetUpFields() {
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(tr("Search texts, fields and files"));
    m_search->setAccessibleName(tr("Search the library"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_options->setObjectName(QStringLiteral("list_options"));
    m_options->setToolTip(tr("Order of the messages; only those with warnings"));
    constexpr int kArrow = 44;
    m_options->setMaximumWidth(m_options->fontMetrics().horizontalAdvance(m_options->text()) + kArrow);
    m_options->setAccessibleName(tr("Order of the messages"));
    m_disk->setObjectName(QStringLiteral("disk_filter"));
    m_disk->setAccessibleName(tr("Disk"));
    // A long name must not make the panel wider.
    m_disk->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_disk->setMinimumContentsLength(8);
    m_disk->hide();
    m_message->setObjectName(QStringLiteral("library_message"));
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    m_message->setMargin(12);
    m_message->setTextFormat(Qt::PlainText);
}

void LibraryPanel::LayOut() {
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_message);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 0, 6);
    auto* const top = new QHBoxLayout;
    top->addWidget(m_search);
    top->addWidget(m_options);
    column->addLayout(top);
    column->addWidget(m_disk);
    column->addWidget(m_pages);
}

void LibraryPanel::Connect() {
    m_search_timer->setSingleShot(true);
    m_reload_timer->setSingleShot(true);
    m_reload_timer->setInterval(kReloadDelay_ms);
    connect(m_search, &QLineEdit::textChanged, m_search_timer, [this] { m_search_timer->start(kSearchDelay_ms); });
    connect(m_search_timer, &QTimer::timeout, this, &LibraryPanel::Reload);
    connect(m_reload_timer, &QTimer::timeout, this, &LibraryPanel::Reload);
    connect(m_model, &LibraryModel::failed, this, &LibraryPanel::failed);
    connect(m_watch, &LibraryWatch::changed, this, &LibraryPanel::ReloadSoon);
    connect(m_disk, &QComboBox::currentIndexChanged, this, &LibraryPanel::Reload);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        if (m_reloading) return;
        ChooseCurrent();
        ReportCurrent();
    });
    // The first message found is current, so that a click on it changes nothing.
    connect(m_list, &QListView::pressed, this, &LibraryPanel::ChooseCurrent);
    connect(m_list, &ThumbnailList::dragged, this, &LibraryPanel::dragged);
    connect(m_list, &ThumbnailList::removeRequested, this, &LibraryPanel::removeRequested);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &LibraryPanel::selectionChanged);
}

// Down or Return in the search field moves to the list.
bool LibraryPanel::eventFilter(QObject* object, QEvent* event) {
    if (object == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape && !m_search->text().isEmpty()) {
            m_search->clear();
            return true;
        }
        if (key == Qt::Key_Down || key == Qt::Key_Return) {
            if (m_search_timer->isActive()) Reload();
            ChooseCurrent();
            m_list->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

void LibraryPanel::SetLibrary(std::string library) {
    m_search->clear();
    {
        const QSignalBlocker blocked(m_disk);
        m_disk->clear();
    }
    m_chosen.reset();
    m_watch->SetLibrary(library);
    m_model->SetLibrary(std::move(library));
}

void LibraryPanel::SetMenu(QMenu* menu) {
    m_options->setMenu(menu);
}

void LibraryPanel::SetOrder(LibraryOrder order) {
    m_order = order;
    ReloadIfLoaded();
}

void LibraryPanel::SetOnlyWithWarnings(bool on) {
    m_only_with_warnings = on;
    ReloadIfLoaded();
}

void LibraryPanel::SetGrouped(bool on) {
    m_grouped = on;
    // A heading has a size of its own.
    m_list->setUniformItemSizes(!on);
    ReloadIfLoaded();
}

/// The settings are applied before the library is read for the first time.
void LibraryPanel::ReloadIfLoaded() {
    if (m_loaded) Reload();
}

LibraryFilter LibraryPanel::Filter() const {
    LibraryFilter filter{m_search->text(), std::nullopt, m_only_with_warnings, m_order, m_grouped};
    // The first entry is for all disks.
    if (m_disk->currentIndex() > 0) filter.disk = m_disk->currentData().toString().toStdString();
    return filter;
}

/// Lists the disks if there are several. The chosen one stays chosen while it exists.
void LibraryPanel::ShowDisks() {
    const QSignalBlocker blocked(m_disk);
    const QVariant chosen = m_disk->currentData();
    m_disk->clear();
    m_disk->addItem(tr("All disks"));
    for (const std::string& disk : m_model->Disks()) m_disk->addItem(NameOfDisk(disk), Text(disk));
    m_disk->setCurrentIndex(chosen.isValid() ? std::max(m_disk->findData(chosen), 0) : 0);
    m_disk->setVisible(m_model->Disks().size() > 1);
}

void LibraryPanel::Read(const LibraryFilter& filter) {
    m_watch->Note();
    m_model->Reload(filter);
    ShowDisks();
    // The chosen disk may have been removed.
    if (const LibraryFilter now = Filter(); now.disk != filter.disk) m_model->Reload(now);
}

void LibraryPanel::Reload() {
    m_search_timer->stop();
    const std::optional<library::RecordingKey> current = Current();
    const int row = m_list->currentIndex().row();
    QElapsedTimer elapsed;
    elapsed.start();
    m_readable = true;
    m_reloading = true;
    try {
        Read(Filter());
    } catch (const library::LibraryError& error) {
        m_readable = false;
        m_reported.reset();
        Q_EMIT failed(Text(error.what()));
    }
    m_reload_timer->setInterval(std::max(kReloadDelay_ms, static_cast<int>(elapsed.elapsed()) * kReloadPause));
    ShowMessage();
    RestoreCurrent(row, current);
    m_reloading = false;
    m_loaded = true;
    ReportCurrent();
    Q_EMIT reloaded();
}

void LibraryPanel::ReloadSoon() {
    if (!m_reload_timer->isActive()) m_reload_timer->start();
}

void LibraryPanel::SelectSoon(const library::RecordingKey& key) {
    m_wanted = key;
    ReloadSoon();
}

void LibraryPanel::Select(const library::RecordingKey& key) {
    if (m_model->RowOf(key) < 0) {
        {
            const QSignalBlocker search(m_search), disk(m_disk);
            m_search->clear();
            m_disk->setCurrentIndex(0);
        }
        m_wanted = key;
        Reload();
    }
    if (const int row = m_model->RowOf(key); row >= 0) m_list->setCurrentIndex(m_model->index(row));
}

void LibraryPanel::RestoreCurrent(int previous_row, const std::optional<library::RecordingKey>& previous) {
    const auto row_of = [this](const std::optional<library::RecordingKey>& key) {
        return key ? m_model->RowOf(*key) : -1;
    };
    const LibraryFilter filter = Filter();
    const bool searched = std::exchange(m_filter, filter) != filter;
    if (row_of(m_wanted) >= 0) m_chosen = m_wanted;
    m_wanted.reset();
    int row = row_of(m_chosen);
    if (row < 0) row = row_of(previous);
    // After a removal, the message that has taken the place of the current one.
    if (row < 0 && !searched) row = std::min(previous_row, m_model->rowCount() - 1);
    row = std::max(row, 0);
    // A message follows each heading.
    if (row < m_model->rowCount() && m_model->IsHeading(row)) ++row;
    const QModelIndex now = m_model->index(row);
    if (now.isValid() && m_list->currentIndex() != now) m_list->setCurrentIndex(now);
    if (searched && now.isValid()) m_list->scrollTo(now);
}

void LibraryPanel::Step(int step) {
    int row = m_list->currentIndex().row() + step;
    if (row >= 0 && row < m_model->rowCount() && m_model->IsHeading(row)) row += step;
    if (row >= 0 && row < m_model->rowCount()) m_list->setCurrentIndex(m_model->index(row));
}

void LibraryPanel::ChooseCurrent() {
    if (const auto current = Current()) m_chosen = current;
}

LibraryPanel::Place LibraryPanel::PlaceInList() const {
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_list->visualRect(m_model->index(row)).bottom() > 0) return {Current(), m_model->KeyAt(row)};
    }
    return {Current(), std::nullopt};
}

void LibraryPanel::RestorePlace(const Place& place) {
    m_wanted = place.current;
    m_first = place.first;
    if (isVisible()) ScrollToFirst();
}

void LibraryPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The list has its final size later.
    QMetaObject::invokeMethod(this, &LibraryPanel::ScrollToFirst, Qt::QueuedConnection);
}

void LibraryPanel::ScrollToFirst() {
    const auto first = std::exchange(m_first, std::nullopt);
    const int row = first ? m_model->RowOf(*first) : -1;
    if (row >= 0) m_list->scrollTo(m_model->index(row), QAbstractItemView::PositionAtTop);
}

/// Reports only a change, so that a reload does not reset what the user is looking at.
void LibraryPanel::ReportCurrent() {
    const QModelIndex current = m_list->currentIndex();
    std::optional<library::LibraryEntry> now;
    if (current.isValid()) now = m_model->EntryAt(current.row());
    const bool same = m_reported.has_value() == now.has_value() && (!now || IsSame(*m_reported, *now));
    m_reported = std::move(now);
    if (!same) Q_EMIT currentChanged();
}

void LibraryPanel::ShowMessage() {
    const bool empty = m_model->rowCount() == 0;
    m_pages->setCurrentIndex(empty ? 1 : 0);
    if (!m_readable) {
        m_message->setText(tr("The library cannot be read."));
    } else if (Filter().HasWords()) {
        m_message->setText(m_only_with_warnings
                               ? tr("No message with warnings contains “%1”.").arg(m_search->text().trimmed())
                               : tr("No message contains “%1”.").arg(m_search->text().trimmed()));
    } else if (m_only_with_warnings) {
        m_message->setText(tr("No message has warnings."));
    } else {
        m_message->setText(tr("The library is empty."));
    }
}

int LibraryPanel::Count() const {
    return static_cast<int>(m_model->Count());
}

bool LibraryPanel::IsEmpty() const {
    return m_readable && !IsFiltered() && Count() == 0;
}

bool LibraryPanel::IsFiltered() const {
    return !Filter().IsAll();
}

std::optional<library::RecordingKey> LibraryPanel::Current() const {
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid()) return std::nullopt;
    return m_model->KeyAt(current.row());
}

std::vector<library::RecordingKey> LibraryPanel::Selected() const {
    std::vector<library::RecordingKey> keys;
    for (const QModelIndex& index : m_list->selectionModel()->selectedIndexes())
        keys.push_back(m_model->KeyAt(index.row()));
    std::ranges::sort(keys);
    return keys;
}

QStringList LibraryPanel::SelectedTexts() const {
    QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    // An index has no operator that std::ranges::sort requires besides <.
    std::sort(selected.begin(), selected.end());
    QStringList texts;
    for (const QModelIndex& index : selected) texts.append(Text(m_model->EntryAt(index.row()).text));
    return texts;
}

QString LibraryPanel::CurrentSource() const {
    const QModelIndex current = m_list->currentIndex();
    return current.isValid() ? QFile::decodeName(m_model->EntryAt(current.row()).source.c_str()) : QString();
}

void LibraryPanel::AddContextActions(const QList<QAction*>& actions) {
    m_list->addActions(actions);
}

std::vector<library::RecordingKey> LibraryPanel::Shown() const {
    std::vector<library::RecordingKey> keys = m_model->Keys();
    std::ranges::sort(keys);
    return keys;
}

void LibraryPanel::FocusList() {
    m_list->setFocus(Qt::OtherFocusReason);
}

void LibraryPanel::FocusSearch() {
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

}  // namespace zel::desktop
