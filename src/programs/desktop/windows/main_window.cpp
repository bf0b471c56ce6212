#include "programs/desktop/windows/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QStackedWidget>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/widgets/start_page.h"
#include "programs/desktop/widgets/status_line.h"
#include "programs/desktop/windows/detail_docks.h"
#include "programs/desktop/windows/full_screen_view.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/main_menus.h"
#include "programs/desktop/windows/main_toolbar.h"

namespace zel::desktop {

namespace {

/// Version of the stored layout. Increase it when docks or bars change.
constexpr int kLayoutVersion = 2;

/// One line about a message.
QString SummaryOf(const MessageDetails& details) {
    return QStringList{details.title, details.standard, Counted(details.rows.size(), "row", "rows"),
                       Counted(details.fonts.size(), "font", "fonts"),
                       Counted(details.fields.size(), "tab field", "tab fields")}
        .join(QStringLiteral("   "));
}

/// What is undone for a tab field; empty for none.
QString TextOf(const QString& field) {
    return field.isEmpty() ? QString() : MainWindow::tr("text of %1").arg(field);
}

// A recording is stored as its number and the name of its disk.

void StoreKey(QSettings& settings, const QString& name, const std::optional<library::RecordingKey>& key) {
    settings.setValue(name, key ? QVariant(QStringList{QString::number(key->number), Text(key->disk)}) : QVariant());
}

std::optional<library::RecordingKey> StoredKey(const QSettings& settings, const QString& name) {
    const QStringList parts = settings.value(name).toStringList();
    if (parts.size() != 2) return std::nullopt;
    return library::RecordingKey{parts[1].toStdString(), parts[0].toInt()};
}

}  // namespace

MainWindow::MainWindow(const Places& places)
    : m_places(places),
      m_settings(places.settings, QSettings::IniFormat),
      m_desktop(this),
      m_library(new LibraryPanel(places.library)),
      m_picture(new PictureView),
      m_full_screen(new FullScreenView(this)),
      m_start(new StartPage),
      m_centre(new QStackedWidget),
      m_notice(new NoticeBar),
      m_status(new StatusLine),
      m_workspace{*this, m_places, m_settings, *m_library, *m_notice, *m_status, m_current},
      m_recent(m_settings),
      m_fonts(m_workspace, m_recent),
      m_libraries(m_workspace),
      m_imports(m_workspace, m_desktop, m_recent, m_fonts),
      m_exports(m_workspace),
      m_fetches(m_workspace),
      m_pictures(m_workspace, *m_picture),
      m_fields(m_workspace, *m_picture, m_imports),
      m_compares(m_workspace, *m_picture) {
    setObjectName(QStringLiteral("main"));
    setWindowTitle(tr("ZelTrans"));
    setAcceptDrops(true);
    LayOut();
    m_menus = std::make_unique<MainMenus>(
        m_workspace, MainMenus::Targets{m_libraries, m_imports, m_exports, m_fetches, m_fonts, m_pictures, m_fields,
                                        m_compares, *m_picture, *m_docks, m_recent});
    m_menus->AddToPanels(AddMainToolbar(*this)->toggleViewAction());
    FillStartPage();
    RestoreLayout();
    Connect();
    ConnectFields();
    ShowCurrent();
    RestorePlace();
    m_library->Reload();
    m_libraries.AddRecent(QFile::decodeName(m_places.library.c_str()));
    if (m_library->IsEmpty()) {
        m_start->setFocus();
    } else {
        m_library->FocusList();
    }
}

MainWindow::~MainWindow() = default;

void MainWindow::Connect() {
    connect(&m_libraries, &LibraryCommands::opened, this, &MainWindow::ShowLibrary);
    connect(m_library, &LibraryPanel::currentChanged, this, &MainWindow::ShowCurrent);
    connect(m_library, &LibraryPanel::reloaded, this, &MainWindow::ShowCount);
    connect(m_library, &LibraryPanel::failed, this, [this](const QString& reason) {
        m_notice->Warn(reason, tr("Nothing is lost. Close the program that is using the library, or check the file, "
                                  "then press F5; or use another library with --library FILE."));
    });
    connect(m_picture, &PictureView::pointedAt, this, &MainWindow::ShowPointed);
    connect(m_library, &LibraryPanel::selectionChanged, this, &MainWindow::ShowCount);
    connect(m_library, &LibraryPanel::dragged, &m_pictures, &PictureCommands::DragSelected);
    connect(m_library, &LibraryPanel::removeRequested, &m_pictures, &PictureCommands::RemoveSelected);
    connect(&m_pictures, &PictureCommands::undoChanged, this, [this] {
        m_removed_last = m_pictures.CanUndo();
        EnableActions();
    });
    connect(m_picture, &PictureView::dragged, &m_pictures, &PictureCommands::Drag);
    connect(m_picture, &PictureView::zoomed, this,
            [this](double zoom) { m_status->ShowZoom(m_current ? tr("%1 %").arg(qRound(zoom * 100)) : QString()); });
    connect(m_docks, &DetailDocks::marked, m_picture, &PictureView::Mark);
    connect(m_docks, &DetailDocks::pointedAt, this, &MainWindow::ShowPointed);
    connect(m_docks, &DetailDocks::fontOpened, &m_fonts, &FontCommands::Show);
    connect(&m_fetches, &FetchCommands::importRequested, this, [this](const QString& directory) { Open({directory}); });
    connect(m_menus.get(), &MainMenus::fullScreenRequested, this, &MainWindow::ShowFullScreen);
    connect(m_full_screen, &FullScreenView::stepped, m_library, &LibraryPanel::Step);
    connect(m_menus.get(), &MainMenus::stopRequested, this, &MainWindow::StopTask);
    connect(m_status, &StatusLine::stopRequested, this, &MainWindow::StopTask);
    connect(m_status, &StatusLine::warningsRequested, &m_imports, &ImportCommands::ShowWarnings);
    connect(&m_imports, &ImportCommands::warningsChanged, this, &MainWindow::EnableActions);
    connect(m_status, &StatusLine::taskChanged, this, &MainWindow::EnableActions);
}

void MainWindow::ConnectFields() {
    m_picture->SetFieldsEditable(true);
    connect(m_picture, &PictureView::fieldActivated, &m_fields, &FieldCommands::Edit);
    connect(m_docks, &DetailDocks::fieldOpened, &m_fields, &FieldCommands::Edit);
    connect(m_menus.get(), &MainMenus::undoRequested, this, &MainWindow::Undo);
    connect(&m_fields, &FieldCommands::changed, this, &MainWindow::ShowChangedFields);
    connect(&m_fields, &FieldCommands::stateChanged, this, &MainWindow::EnableActions);
}

void MainWindow::LayOut() {
    auto* const centre = new QWidget;
    auto* const column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_notice);
    column->addWidget(m_centre, 1);
    m_centre->addWidget(m_picture);
    m_centre->addWidget(m_start);
    setCentralWidget(centre);

    auto* const dock = new QDockWidget(tr("Library"), this);
    dock->setObjectName(QStringLiteral("library_dock"));
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setTitleBarWidget(new QWidget(dock));
    dock->setWidget(m_library);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    setDockOptions(dockOptions() | QMainWindow::AllowTabbedDocks);
    setTabPosition(Qt::RightDockWidgetArea, QTabWidget::North);
    m_docks = new DetailDocks(this);
    setStatusBar(m_status);
}

void MainWindow::FillStartPage() {
    const auto action = [this](const char* name) { return findChild<QAction*>(QLatin1String(name)); };
    m_start->AddChoices({{action("import_folder"), tr("Every message in it, with its fonts")},
                         {action("import"), tr("One message or a range, in the module's dialog")},
                         {action("fetch"), tr("Messages and the fonts that they use")}});
}

void MainWindow::RestoreLayout() {
    const QByteArray geometry = m_settings.value(QStringLiteral("window/geometry")).toByteArray();
    if (geometry.isEmpty() || !restoreGeometry(geometry)) resize(1280, 800);
    const QByteArray state = m_settings.value(QStringLiteral("window/state")).toByteArray();
    if (!state.isEmpty() && restoreState(state, kLayoutVersion)) return;
    resizeDocks({findChild<QDockWidget*>(QStringLiteral("library_dock")), m_docks->Docks().front()}, {350, 390},
                Qt::Horizontal);
    resizeDocks({m_docks->Docks()[0], m_docks->Docks()[2], m_docks->Docks()[4]}, {330, 260, 130}, Qt::Vertical);
}

void MainWindow::ShowLibrary(const QString& file) {
    if (!MayLeave()) return;
    m_fields.Leave();
    StorePlace();
    m_places.library = QFile::encodeName(QFileInfo(file).absoluteFilePath()).toStdString();
    m_library->SetLibrary(m_places.library);
    RestorePlace();
    m_imports.ForgetWarnings();
    m_imports.ReloadLibrary();
    RememberLibrary();
}

/// The library is opened again at the next start.
void MainWindow::RememberLibrary() {
    const QString file = QFile::decodeName(m_places.library.c_str());
    m_libraries.AddRecent(file);
    m_settings.setValue(kLastLibrarySetting, file);
}

void MainWindow::StorePlace() {
    const LibraryPanel::Place place = m_library->PlaceInList();
    m_settings.setValue(QStringLiteral("place/library"), QFile::decodeName(m_places.library.c_str()));
    StoreKey(m_settings, QStringLiteral("place/current"), place.current);
    StoreKey(m_settings, QStringLiteral("place/first"), place.first);
}

void MainWindow::RestorePlace() {
    if (m_settings.value(QStringLiteral("place/library")).toString() != QFile::decodeName(m_places.library.c_str()))
        return;
    m_library->RestorePlace(
        {StoredKey(m_settings, QStringLiteral("place/current")), StoredKey(m_settings, QStringLiteral("place/first"))});
}

void MainWindow::Open(const QStringList& paths) {
    QStringList imported;
    for (const QString& path : paths) {
        if (!QFileInfo(path).isFile() || QFileInfo(path).suffix() != QStringLiteral("zellib")) {
            imported.append(path);
        } else if (IsBusy()) {
            m_notice->Warn(tr("%1 is not opened while a task is running.").arg(path));
        } else {
            m_libraries.OpenFile(path);
        }
    }
    m_imports.Open(imported);
}

void MainWindow::ShowNotice(const QString& text) {
    m_notice->Warn(text);
}

bool MainWindow::IsBusy() const {
    return m_imports.IsRunning() || m_exports.IsRunning() || m_fetches.IsRunning();
}

void MainWindow::StopTask() {
    m_imports.Cancel();
    m_exports.Cancel();
    m_fetches.Cancel();
}

void MainWindow::EnableActions() {
    m_menus->Enable({.has_picture = m_current.has_value(),
                     .has_messages = m_library->Count() != 0,
                     .busy = IsBusy(),
                     .has_fields = m_current && !m_current->fields.empty(),
                     .can_undo = m_fields.CanUndo() || m_pictures.CanUndo(),
                     .can_redo = m_fields.CanRedo(),
                     .undo_text = UndoesRemoval() ? tr("removal") : TextOf(m_fields.UndoText()),
                     .redo_text = TextOf(m_fields.RedoText()),
                     .has_warnings = m_imports.HasWarnings()});
    ShowTitle();
}

/// Only while there are changes the title has the place where the toolkit marks them.
void MainWindow::ShowTitle() {
    const bool changed = m_fields.HasChanges();
    const QString mark = QStringLiteral("[*]");
    const QString title = QString(m_title).replace(mark, mark + mark) + (changed ? mark : QString());
    if (!changed) setWindowModified(false);
    setWindowTitle(m_current ? tr("%1 – ZelTrans").arg(title) : tr("ZelTrans"));
    setWindowModified(changed);
}

bool MainWindow::UndoesRemoval() const {
    return m_pictures.CanUndo() && (m_removed_last || !m_fields.CanUndo());
}

void MainWindow::Undo() {
    if (UndoesRemoval()) {
        m_pictures.UndoRemoval();
    } else if (m_fields.CanUndo()) {
        m_fields.Undo();
    }
}

/// Asks about unsaved changes. What happens to the list meanwhile is shown afterwards.
bool MainWindow::MayLeave() {
    if (m_asking) return false;
    m_asking = true;
    const bool may_leave = m_fields.MayLeave();
    m_asking = false;
    return may_leave;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!MayLeave()) return event->ignore();
    m_imports.Cancel();
    m_settings.setValue(QStringLiteral("window/geometry"), saveGeometry());
    m_settings.setValue(QStringLiteral("window/state"), saveState(kLayoutVersion));
    StorePlace();
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    // The picture dragged out of this window is not dropped into it.
    if (event->source() == nullptr && event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    m_workspace.BeginAction();
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        } else {
            m_notice->Warn(tr("%1 is not on this machine.").arg(url.toDisplayString()),
                           tr("For a disk on an FTP server, use Fetch over FTP… in the menu File."));
        }
    }
    Open(paths);
}

void MainWindow::ShowCurrent() {
    if (m_asking) return;
    if (!MayLeave()) {
        m_asking = true;
        m_library->Select(*m_fields.Key());
        m_asking = false;
        return;
    }
    m_fields.Leave();
    const std::optional<library::RecordingKey> key = m_library->Current();
    QString error;
    m_current.reset();
    try {
        if (key) m_current = library::Library(m_places.library, library::Access::kRead, kLibraryWait).Find(*key);
        if (m_current && m_current->picture.empty()) error = tr("This recording has no picture.");
    } catch (const library::LibraryError& failure) {
        error = Text(failure.what());
    }
    ShowRecording(error);
}

void MainWindow::ShowChangedFields(int field) {
    m_removed_last = false;
    m_current = m_fields.Recording();
    ShowRecording({});
    m_docks->SelectField(field);
}

/// Shows m_current.
/// @param error  why there is no picture; may be empty.
void MainWindow::ShowRecording(const QString& error) {
    QString message = error;
    const MessageDetails details = m_current ? DetailsOf(*m_current) : MessageDetails();
    m_summary = m_current ? SummaryOf(details) : QString();
    const QImage picture = m_current ? ImageOfPng(m_current->picture) : QImage();
    if (m_current && picture.isNull() && message.isEmpty()) message = tr("The picture of this recording is damaged.");
    m_picture->Show(picture, details, message);
    m_full_screen->Show(picture, details, message);
    m_docks->Show(details);
    ShowPointed({});
    m_title = details.title;
    EnableActions();
}

void MainWindow::ShowFullScreen() {
    m_full_screen->TakeSettings(*m_picture);
    m_full_screen->Fit();
    m_full_screen->showFullScreen();
    m_full_screen->setFocus();
}

/// @param description  empty: the summary of the message is shown.
void MainWindow::ShowPointed(const QString& description) {
    m_status->ShowPointed(description.isEmpty() ? m_summary : description);
}

void MainWindow::ShowCount() {
    const auto count = static_cast<std::size_t>(m_library->Count());
    const std::size_t selected = m_library->Selected().size();
    const QString all = m_library->IsFiltered() ? tr("%1 found").arg(count) : Counted(count, "message", "messages");
    m_status->ShowCount(selected > 1 ? tr("%1 selected, %2").arg(selected).arg(all) : all);
    const bool leaves_start_page = m_start->isAncestorOf(focusWidget()) && !m_library->IsEmpty();
    m_centre->setCurrentWidget(m_library->IsEmpty() ? static_cast<QWidget*>(m_start) : m_picture);
    if (leaves_start_page) m_library->FocusList();
    EnableActions();
}

}  // namespace zel::desktop
