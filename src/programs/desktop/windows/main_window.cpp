#include "programs/desktop/windows/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QStatusBar>
#include <QUrl>
#include <QVBoxLayout>

#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/widgets/start_page.h"
#include "programs/desktop/windows/detail_docks.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/work/name_lists.h"

namespace zel::desktop {

namespace {

/// Of the layout that restoreState takes; another one when docks or bars change.
constexpr int kLayoutVersion = 2;

/// What a message is, in a line.
QString SummaryOf(const MessageDetails& details) {
    return QStringList{details.title, details.standard, Counted(details.rows.size(), "row", "rows"),
                       Counted(details.fonts.size(), "font", "fonts"),
                       Counted(details.fields.size(), "tab field", "tab fields")}
        .join(QStringLiteral("   "));
}

}  // namespace

MainWindow::MainWindow(const Places& places)
    : m_places(places),
      m_settings(places.settings, QSettings::IniFormat),
      m_desktop(this),
      m_previous_desktop(seam::SetDesktop(&m_desktop)),
      m_library(new LibraryPanel(places.library)),
      m_picture(new PictureView),
      m_start(new StartPage),
      m_centre(new QStackedWidget),
      m_notice(new NoticeBar),
      m_pointed(new QLabel),
      m_zoom(new QLabel),
      m_task(new QLabel),
      m_count(new QLabel),
      m_progress(new QProgressBar),
      m_stop(new QPushButton(tr("Stop"))),
      m_import(new DiskImport(places.library, this)) {
    setObjectName(QStringLiteral("main"));
    setWindowTitle(tr("ZelTrans"));
    setAcceptDrops(true);
    LayOut();
    MakeMenus();
    MakeToolbar();
    RestoreLayout();

    connect(m_library, &LibraryPanel::chosen, this, &MainWindow::ShowCurrent);
    connect(m_library, &LibraryPanel::reloaded, this, &MainWindow::ShowCount);
    connect(m_library, &LibraryPanel::failed, this, [this](const QString& reason) {
        Warn(reason, tr("Nothing is lost. Close the program that holds the library, or look after the file, then press "
                        "F5; or start with another library by --library FILE."));
    });
    connect(m_picture, &PictureView::pointedAt, this, &MainWindow::ShowPointed);
    connect(m_picture, &PictureView::dragged, this, &MainWindow::DragPicture);
    connect(m_picture, &PictureView::zoomed, this,
            [this](double zoom) { m_zoom->setText(m_current ? tr("%1 %").arg(qRound(zoom * 100)) : QString()); });
    connect(m_docks, &DetailDocks::marked, m_picture, &PictureView::Mark);
    connect(m_docks, &DetailDocks::pointedAt, this, &MainWindow::ShowPointed);
    connect(m_docks, &DetailDocks::fontOpened, this, &MainWindow::ShowFont);
    connect(m_import, &DiskImport::recorded, m_library, &LibraryPanel::ReloadSoon);
    connect(m_import, &DiskImport::progressed, this, [this](int done, int total, const QString& name) {
        ShowTask(tr("Importing %1").arg(name.section(u'/', -1)), done, total);
    });
    connect(m_import, &DiskImport::finished, this, &MainWindow::ImportEnded);
    connect(m_stop, &QPushButton::clicked, this, &MainWindow::StopTask);
    ShowCurrent();
    m_library->Reload();
    if (m_library->IsEmpty()) {
        m_start->setFocus();
    } else {
        m_library->FocusList();
    }
}

MainWindow::~MainWindow() {
    m_import->disconnect();
    m_import->Cancel();
    delete m_export;
    delete m_fetch;
    seam::SetDesktop(m_previous_desktop);
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

    m_pointed->setObjectName(QStringLiteral("pointed"));
    m_pointed->setTextFormat(Qt::PlainText);
    m_pointed->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (QLabel* const label : {m_pointed, m_task, m_count, m_zoom}) label->setContentsMargins(8, 0, 8, 0);
    m_count->setObjectName(QStringLiteral("count"));
    m_task->setObjectName(QStringLiteral("task"));
    m_task->setTextFormat(Qt::PlainText);
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setMaximumWidth(200);
    m_stop->setObjectName(QStringLiteral("stop"));
    statusBar()->addWidget(m_pointed, 1);
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_task), static_cast<QWidget*>(m_progress), static_cast<QWidget*>(m_stop),
          static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_zoom)})
        statusBar()->addPermanentWidget(widget);
    m_progress->hide();
    m_stop->hide();
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

bool MainWindow::IsBusy() const {
    return m_import->IsRunning() || m_export || m_fetch;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    m_import->Cancel();
    m_settings.setValue(QStringLiteral("window/geometry"), saveGeometry());
    m_settings.setValue(QStringLiteral("window/state"), saveState(kLayoutVersion));
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    // What is dragged out of this window isn't to be dropped in.
    if (event->source() == nullptr && event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    m_notice->Clear();
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        } else {
            Warn(tr("%1 isn't on this machine.").arg(url.toDisplayString()),
                 tr("A disk on an FTP server comes by Fetch over FTP… in the menu File."));
        }
    }
    Open(paths);
}

void MainWindow::ShowCurrent() {
    const std::optional<library::RecordingKey> key = m_library->Current();
    QString words;
    m_current.reset();
    try {
        if (key)
            m_current = library::Library(m_places.library, library::Access::kRead, kLibraryWait).Find(*key);
        if (m_current && m_current->picture.empty()) words = tr("This recording has no picture.");
    } catch (const library::LibraryError& error) {
        words = QString::fromUtf8(error.what());
    }
    const MessageDetails details = m_current ? DetailsOf(*m_current) : MessageDetails();
    m_summary = m_current ? SummaryOf(details) : QString();
    const QImage picture = m_current ? ImageOfPng(m_current->picture) : QImage();
    if (m_current && picture.isNull() && words.isEmpty()) words = tr("The picture of this recording is damaged.");
    m_picture->Show(picture, details, words);
    m_docks->Show(details);
    ShowPointed({});
    setWindowTitle(m_current ? tr("%1 – ZelTrans").arg(details.title) : tr("ZelTrans"));
    EnableActions();
}

/// Without anything to point at, what is on the screen is told.
void MainWindow::ShowPointed(const QString& name) {
    m_pointed->setText(name.isEmpty() ? m_summary : name);
}

void MainWindow::ShowCount() {
    const auto count = m_library->Count();
    m_count->setText(m_library->IsSearching() ? tr("%1 found").arg(count)
                     : count == 1             ? tr("1 message")
                                              : tr("%1 messages").arg(count));
    const bool started = m_start->isAncestorOf(focusWidget()) && !m_library->IsEmpty();
    m_centre->setCurrentWidget(m_library->IsEmpty() ? static_cast<QWidget*>(m_start) : m_picture);
    if (started) m_library->FocusList();
    EnableActions();
}

void MainWindow::Warn(const QString& text, const QString& advice) {
    m_notice->Warn(text, advice);
}

void MainWindow::ShowTask(const QString& what, int done, int total) {
    m_task->setText(what);
    m_progress->setRange(0, total);
    m_progress->setValue(done);
    if (!m_progress->isVisible()) {
        m_progress->show();
        m_stop->show();
        EnableActions();
    }
}

void MainWindow::EndTask(const QString& result) {
    m_progress->hide();
    m_stop->hide();
    m_task->setText(result);
    EnableActions();
}

/// @param places  beside which name lists are looked for.
host::HostOptions MainWindow::ImportOptions(const QStringList& places) const {
    host::HostOptions options;
    // An unknown value in the settings gives the default.
    options.standard =
        VideoStandardOf(m_settings.value(QStringLiteral("import/lines")).toInt()).value_or(VideoStandard::kNtsc);
    options.tt_convert = m_settings.value(QStringLiteral("import/typefaces"), false).toBool();
    options.baseline_align = m_settings.value(QStringLiteral("import/baseline"), true).toBool();
    const auto native = [](const QString& path) { return QFile::encodeName(path).toStdString(); };
    std::vector<std::string> near;
    for (const QString& place : places) near.push_back(native(place));
    const QString own = QFileInfo(m_places.settings).absolutePath() + QStringLiteral("/name-lists");
    const std::string maps =
        NameListsFor(native(m_settings.value(QStringLiteral("import/maps")).toString()), near, native(own));
    if (!maps.empty()) options.maps = maps;
    return options;
}

}  // namespace zel::desktop
