#include <QActionGroup>
#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QDockWidget>
#include <QMenuBar>
#include <QMessageBox>

#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/windows/detail_docks.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/main_window.h"

namespace zel::desktop {

namespace {

constexpr int kRecentDisks = 10;

}  // namespace

QAction* MainWindow::AddAction(QMenu* menu, const QString& name, const QString& text, const QList<QKeySequence>& keys,
                               const std::function<void()>& call) {
    QAction* const action = menu->addAction(text);
    action->setObjectName(name);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, call);
    return action;
}

QAction* MainWindow::AddToggle(QMenu* menu, const QString& name, const QString& text, const QKeySequence& keys, bool on,
                               const std::function<void(bool)>& call) {
    QAction* const action = menu->addAction(text);
    const QString setting = QStringLiteral("view/") + name;
    action->setObjectName(name);
    action->setShortcut(keys);
    action->setCheckable(true);
    connect(action, &QAction::toggled, this, [this, setting, call](bool checked) {
        m_settings.setValue(setting, checked);
        call(checked);
    });
    action->setChecked(m_settings.value(setting, on).toBool());
    call(action->isChecked());
    return action;
}

void MainWindow::MakeMenus() {
    MakeFileMenu();
    MakeEditMenu();
    MakeViewMenu();
    MakeHelpMenu();
}

void MainWindow::MakeFileMenu() {
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    const auto add = [&](const char* name, const QString& text, const QKeySequence& keys, void (MainWindow::*call)()) {
        return AddAction(file, QLatin1String(name), text, {keys}, [this, call] { (this->*call)(); });
    };
    m_needs_module.append(add("import", tr("&Import…"), tr("Ctrl+I"), &MainWindow::ImportByModule));
    add("import_file", tr("Import &file…"), QKeySequence::Open, &MainWindow::ImportFiles);
    add("import_folder", tr("Import &disk or folder…"), tr("Ctrl+Shift+O"), &MainWindow::ImportFolder);
    m_recent = file->addMenu(tr("&Recent disks"));
    m_recent->setToolTipsVisible(true);
    connect(m_recent, &QMenu::aboutToShow, this, &MainWindow::ShowRecentDisks);
    m_needs_module.append(add("fetch", tr("Fetch over F&TP…"), tr("Ctrl+T"), &MainWindow::Fetch));
    add("import_options", tr("Import &options…"), {}, &MainWindow::ChangeImportOptions);
    file->addSeparator();
    m_needs_picture.append(add("save_picture", tr("&Save picture as…"), QKeySequence::Save, &MainWindow::SavePicture));
    m_needs_messages.append(add("export", tr("&Export…"), tr("Ctrl+E"), &MainWindow::Export));
    m_needs_messages.append(add("batch_export", tr("&Batch export…"), tr("Ctrl+Shift+E"), &MainWindow::BatchExport));
    file->addSeparator();
    add("make_font", tr("&Make font…"), tr("Ctrl+G"), &MainWindow::MakeFont);
    file->addSeparator();
    m_needs_task.append(add("stop_task", tr("St&op what is under way"), tr("Ctrl+."), &MainWindow::StopTask));
    AddAction(file, QStringLiteral("quit"), tr("&Quit"), {QKeySequence(tr("Ctrl+Q"))}, [this] { close(); });
}

void MainWindow::MakeEditMenu() {
    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    m_needs_picture.append(
        AddAction(edit, QStringLiteral("copy"), tr("&Copy picture"), {QKeySequence::Copy}, [this] { CopyPicture(); }));
    AddAction(edit, QStringLiteral("find"), tr("&Find"), {QKeySequence::Find}, [this] { m_library->FocusSearch(); });
    edit->addSeparator();
    m_needs_picture.append(AddAction(edit, QStringLiteral("remove"), tr("&Remove from library…"),
                                     {QKeySequence(tr("Ctrl+Del"))}, [this] { RemoveSelected(); }));
}

void MainWindow::MakeViewMenu() {
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    const auto zoom = [&](const char* name, const QString& text, const QList<QKeySequence>& keys,
                          void (PictureView::*call)()) {
        m_needs_picture.append(
            AddAction(view, QLatin1String(name), text, keys, [this, call] { (m_picture->*call)(); }));
    };
    zoom("zoom_in", tr("Zoom &in"), {QKeySequence(tr("Ctrl++")), QKeySequence(tr("Ctrl+="))}, &PictureView::ZoomIn);
    zoom("zoom_out", tr("Zoom &out"), {QKeySequence(tr("Ctrl+-"))}, &PictureView::ZoomOut);
    zoom("fit", tr("&Fit"), {QKeySequence(tr("Ctrl+0"))}, &PictureView::Fit);
    zoom("actual_pixels", tr("&Actual pixels"), {QKeySequence(tr("Ctrl+1"))}, &PictureView::ShowActualPixels);
    view->addSeparator();
    AddToggle(view, QStringLiteral("aspect"), tr("Pixel as&pect of the screen"), tr("Ctrl+P"), true,
              [this](bool on) { m_picture->SetPixelAspect(on); });
    MakeGrounds(view->addMenu(tr("&Background")));
    AddToggle(view, QStringLiteral("key"), tr("&Key alone"), tr("Ctrl+K"), false,
              [this](bool on) { m_picture->SetKeyAlone(on); });
    AddToggle(view, QStringLiteral("field_frames"), tr("&Tab fields"), tr("Ctrl+D"), false,
              [this](bool on) { m_picture->SetFields(on); });
    AddToggle(view, QStringLiteral("safe_areas"), tr("&Safe areas"), tr("Ctrl+L"), false,
              [this](bool on) { m_picture->SetSafeAreas(on); });
    view->addSeparator();
    QMenu* const go_to = view->addMenu(tr("&Go to"));
    m_panels = view->addMenu(tr("Pa&nels"));
    MakePanels(go_to, m_panels);
    AddAction(view, QStringLiteral("reload"), tr("&Reload library"), {QKeySequence::Refresh}, [this] {
        m_names = {};
        m_library->Reload();
    });
}

/// By the keyboard one comes to a panel by its number, since the tabs of panels take no focus.
void MainWindow::MakePanels(QMenu* go_to, QMenu* shown) {
    int number = 0;
    const auto add = [&](const QString& text, const std::function<void()>& call) {
        ++number;
        AddAction(go_to, QStringLiteral("go_to_%1").arg(number), QStringLiteral("&%1 %2").arg(number).arg(text),
                  {QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + number))}, call);
    };
    add(tr("Library"), [this] { m_library->FocusList(); });
    add(tr("Picture"), [this] { m_picture->setFocus(Qt::ShortcutFocusReason); });
    for (QDockWidget* const dock : m_docks->Docks()) {
        shown->addAction(dock->toggleViewAction());
        add(dock->windowTitle(), [dock] {
            dock->show();
            dock->raise();
            dock->widget()->setFocus(Qt::ShortcutFocusReason);
        });
    }
}

void MainWindow::MakeGrounds(QMenu* menu) {
    auto* const group = new QActionGroup(this);
    const auto add = [&](const char* name, const QString& text, const QKeySequence& keys,
                         const std::function<void()>& call) {
        QAction* const action = AddAction(menu, QLatin1String(name), text, {keys}, call);
        action->setCheckable(true);
        group->addAction(action);
        return action;
    };
    const auto colour = [this](const QColor& chosen) { m_picture->SetGround(PictureView::Ground::kColour, chosen); };
    add("checkerboard", tr("&Checkerboard"), tr("Ctrl+Shift+C"), [this] {
        m_picture->SetGround(PictureView::Ground::kCheckerboard);
    })->setChecked(true);
    add("black", tr("&Black"), tr("Ctrl+Shift+B"), [colour] { colour(Qt::black); });
    add("white", tr("&White"), tr("Ctrl+Shift+W"), [colour] { colour(Qt::white); });
    add("colour", tr("C&hoose…"), {}, [this, colour] {
        const QColor before = m_settings.value(QStringLiteral("view/colour"), QColor(0, 128, 0)).value<QColor>();
        const QColor chosen = QColorDialog::getColor(before, this, tr("Background"));
        if (!chosen.isValid()) return;
        m_settings.setValue(QStringLiteral("view/colour"), chosen);
        colour(chosen);
    });
}

void MainWindow::MakeHelpMenu() {
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    AddAction(help, QStringLiteral("about"), tr("&About ZelTrans"), {}, [this] {
        QMessageBox::about(this, tr("About ZelTrans"),
                           tr("ZelTrans %1\n\nImports Zelmara! messages and fonts.\n\nLibrary: %2")
                               .arg(QApplication::applicationVersion(), QFile::decodeName(m_places.library.c_str())));
    });
}

void MainWindow::EnableActions() {
    const bool picture = m_current.has_value();
    const bool messages = m_library->Count() != 0;
    const bool busy = IsBusy();
    for (QAction* const action : std::as_const(m_needs_picture)) action->setEnabled(picture);
    for (QAction* const action : std::as_const(m_needs_messages)) action->setEnabled(messages && !busy);
    for (QAction* const action : std::as_const(m_needs_task)) action->setEnabled(busy);
    for (QAction* const action : std::as_const(m_needs_module)) action->setEnabled(!busy);
}

void MainWindow::ShowRecentDisks() {
    m_recent->clear();
    const QStringList disks = RecentDisks();
    for (const QString& disk : disks) {
        QString text = QDir(disk).dirName() + QStringLiteral("  –  ") + disk;
        const QString words =
            m_recent->fontMetrics().elidedText(text.replace(u'&', QStringLiteral("&&")), Qt::ElideMiddle, 420);
        QAction* const action = m_recent->addAction(words, this, [this, disk] {
            m_notice->Clear();
            Open({disk});
        });
        action->setToolTip(disk);
    }
    if (disks.isEmpty()) m_recent->addAction(tr("None yet"))->setEnabled(false);
}

QStringList MainWindow::RecentDisks() const {
    return m_settings.value(QStringLiteral("recent/disks")).toStringList();
}

void MainWindow::Remember(const QString& place) {
    QStringList disks = RecentDisks();
    disks.removeAll(place);
    disks.prepend(place);
    m_settings.setValue(QStringLiteral("recent/disks"), disks.mid(0, kRecentDisks));
}

}  // namespace zel::desktop
