#include "programs/desktop/windows/main_menus.h"

#include <QActionGroup>
#include <QApplication>
#include <QColorDialog>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenuBar>
#include <QSettings>
#include <algorithm>

#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/windows/box.h"
#include "programs/desktop/windows/compare_commands.h"
#include "programs/desktop/windows/detail_docks.h"
#include "programs/desktop/windows/export_commands.h"
#include "programs/desktop/windows/fetch_commands.h"
#include "programs/desktop/windows/field_commands.h"
#include "programs/desktop/windows/font_commands.h"
#include "programs/desktop/windows/help_window.h"
#include "programs/desktop/windows/import_commands.h"
#include "programs/desktop/windows/library_commands.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/picture_commands.h"
#include "programs/desktop/windows/recent_disks.h"

namespace zel::desktop {

namespace {

// Names of settings.
const QString kBackgroundSetting = QStringLiteral("view/background");
const QString kSafeSetting = QStringLiteral("view/safe_action");
const QString kColourSetting = QStringLiteral("view/colour");
const QString kOrderSetting = QStringLiteral("view/order");

}  // namespace

MainMenus::MainMenus(const Workspace& workspace, const Targets& targets) : m_workspace(workspace), m_to(targets) {
    MakeFileMenu();
    MakeEditMenu();
    MakeViewMenu();
    MakeHelpMenu();
    AddContextMenus();
}

QAction* MainMenus::Add(QMenu* menu, const char* name, const QString& text, const QList<QKeySequence>& keys,
                        const std::function<void()>& call) {
    QAction* const action = menu->addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, call);
    return action;
}

/// An action whose state is kept in the settings.
void MainMenus::AddToggle(QMenu* menu, const char* name, const QString& text, const QKeySequence& keys, bool on,
                          const std::function<void(bool)>& call) {
    QAction* const action = menu->addAction(text);
    const QString setting = QStringLiteral("view/") + QLatin1String(name);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    action->setCheckable(true);
    connect(action, &QAction::toggled, this, [this, setting, call](bool checked) {
        m_workspace.settings.setValue(setting, checked);
        call(checked);
    });
    action->setChecked(m_workspace.settings.value(setting, on).toBool());
    call(action->isChecked());
}

void MainMenus::MakeFileMenu() {
    QMenu* const file = m_workspace.window.menuBar()->addMenu(tr("&File"));
    const auto add = [&](const char* name, const QString& text, const QKeySequence& keys,
                         const std::function<void()>& call) { return Add(file, name, text, {keys}, call); };
    m_needs_idle.append(add("new_library", tr("&New library…"), QKeySequence::New, [this] { m_to.libraries.New(); }));
    m_needs_idle.append(
        add("open_library", tr("Open &library…"), tr("Ctrl+Shift+L"), [this] { m_to.libraries.Open(); }));
    m_recent_libraries = file->addMenu(tr("Recent li&braries"));
    m_recent_libraries->setToolTipsVisible(true);
    m_needs_idle.append(m_recent_libraries->menuAction());
    connect(m_recent_libraries, &QMenu::aboutToShow, this, &MainMenus::FillRecentLibraries);
    file->addSeparator();
    m_needs_idle.append(add("import", tr("&Import…"), tr("Ctrl+I"), [this] { m_to.imports.ImportByModule(); }));
    add("import_file", tr("Import &file…"), QKeySequence::Open, [this] { m_to.imports.ImportFiles(); });
    add("import_folder", tr("Import &disk or folder…"), tr("Ctrl+Shift+O"), [this] { m_to.imports.ImportFolder(); });
    m_recent_menu = file->addMenu(tr("&Recent disks"));
    m_recent_menu->setToolTipsVisible(true);
    connect(m_recent_menu, &QMenu::aboutToShow, this, &MainMenus::FillRecentMenu);
    m_needs_idle.append(add("fetch", tr("Fetch over F&TP…"), tr("Ctrl+T"), [this] { m_to.fetches.Fetch(); }));
    add("import_options", tr("Import &options…"), {}, [this] { m_to.imports.ChangeOptions(); });
    file->addSeparator();
    m_needs_picture.append(add("save_picture", tr("&Save picture as…"), QKeySequence::Save,
                               [this] { m_to.pictures.Save(PictureForm::kStraight); }));
    m_needs_picture.append(add("save_premultiplied", tr("Sa&ve multiplied by alpha as…"), {},
                               [this] { m_to.pictures.Save(PictureForm::kPremultiplied); }));
    m_needs_picture.append(
        add("save_key", tr("Save &key as…"), tr("Ctrl+Shift+S"), [this] { m_to.pictures.Save(PictureForm::kKey); }));
    m_needs_fields.append(
        add("save_message", tr("Save &as message file…"), tr("Ctrl+M"), [this] { m_to.fields.Save(); }));
    m_needs_fields.append(
        add("save_record", tr("Save and re&cord…"), tr("Ctrl+Shift+R"), [this] { m_to.fields.SaveAndRecord(); }));
    m_needs_messages.append(add("export", tr("&Export…"), tr("Ctrl+E"), [this] { m_to.exports.Export(); }));
    m_needs_messages.append(
        add("batch_export", tr("Batc&h export…"), tr("Ctrl+Shift+E"), [this] { m_to.exports.BatchExport(); }));
    file->addSeparator();
    add("make_font", tr("&Make font…"), tr("Ctrl+G"), [this] { m_to.fonts.MakeFont(); });
    file->addSeparator();
    m_needs_task.append(add("stop_task", tr("Sto&p current task"), tr("Ctrl+."), [this] { Q_EMIT stopRequested(); }));
    add("quit", tr("&Quit"), tr("Ctrl+Q"), [this] { m_workspace.window.close(); });
}

void MainMenus::MakeEditMenu() {
    QMenu* const edit = m_workspace.window.menuBar()->addMenu(tr("&Edit"));
    m_needs_picture.append(
        Add(edit, "copy", tr("&Copy picture"), {QKeySequence::Copy}, [this] { m_to.pictures.Copy(); }));
    m_needs_picture.append(Add(edit, "copy_text", tr("Copy &text"), {QKeySequence(tr("Ctrl+Shift+X"))},
                               [this] { m_to.pictures.CopyText(); }));
    Add(edit, "find", tr("&Find"), {QKeySequence::Find}, [this] { m_workspace.library.FocusSearch(); });
    edit->addSeparator();
    m_needs_fields.append(
        Add(edit, "edit_field", tr("Change tab fiel&d"), {QKeySequence(Qt::Key_F2)}, [this] { EditField(); }));
    m_needs_fields.append(Add(edit, "fill_table", tr("Fill from ta&ble…"), {QKeySequence(tr("Ctrl+Shift+T"))},
                              [this] { m_to.fields.FillFromTable(); }));
    edit->addSeparator();
    m_needs_picture.append(Add(edit, "remove", tr("&Remove from library"), {QKeySequence(tr("Ctrl+Del"))},
                               [this] { m_to.pictures.RemoveSelected(); }));
    m_undo = Add(edit, "undo", {}, {QKeySequence::Undo}, [this] { Q_EMIT undoRequested(); });
    m_redo = Add(edit, "redo", {}, {QKeySequence(tr("Ctrl+Shift+Z")), QKeySequence(tr("Ctrl+Y"))},
                 [this] { m_to.fields.Redo(); });
    edit->addSeparator();
    m_needs_picture.append(
        Add(edit, "show_in_folder", tr("&Show in folder"), {}, [this] { m_to.pictures.ShowInFolder(); }));
}

/// Opens the selected tab field, that of the selected character, or the first one.
void MainMenus::EditField() {
    const int selected = m_to.docks.SelectedField();
    m_to.fields.Edit(selected >= 0 ? selected : std::max(m_to.picture.PointedField(), 0));
}

void MainMenus::MakeViewMenu() {
    QMenu* const view = m_workspace.window.menuBar()->addMenu(tr("&View"));
    PictureView& picture = m_to.picture;
    const auto zoom = [&](const char* name, const QString& text, const QList<QKeySequence>& keys,
                          void (PictureView::*call)()) {
        m_needs_picture.append(Add(view, name, text, keys, [&picture, call] { (picture.*call)(); }));
    };
    zoom("zoom_in", tr("Zoom &in"), {QKeySequence(tr("Ctrl++")), QKeySequence(tr("Ctrl+="))}, &PictureView::ZoomIn);
    zoom("zoom_out", tr("Zoom &out"), {QKeySequence(tr("Ctrl+-"))}, &PictureView::ZoomOut);
    zoom("fit", tr("&Fit"), {QKeySequence(tr("Ctrl+0"))}, &PictureView::Fit);
    zoom("actual_pixels", tr("&Actual pixels"), {QKeySequence(tr("Ctrl+1"))}, &PictureView::ShowActualPixels);
    view->addSeparator();
    const auto toggle = [&](const char* name, const QString& text, const QString& keys, bool on,
                            void (PictureView::*call)(bool)) {
        AddToggle(view, name, text, keys, on, [&picture, call](bool checked) { (picture.*call)(checked); });
    };
    toggle("aspect", tr("Pixel as&pect of the screen"), tr("Ctrl+P"), true, &PictureView::SetPixelAspect);
    AddBackgrounds(view->addMenu(tr("&Background")));
    toggle("key", tr("&Key only"), tr("Ctrl+K"), false, &PictureView::SetKeyOnly);
    toggle("field_frames", tr("&Tab fields"), tr("Ctrl+D"), false, &PictureView::SetFields);
    toggle("safe_areas", tr("&Safe areas"), tr("Ctrl+L"), false, &PictureView::SetSafeAreas);
    AddSafeSizes(view->addMenu(tr("Safe area si&zes")));
    view->addSeparator();
    m_needs_picture.append(Add(view, "full_screen", tr("F&ull screen"), {QKeySequence(Qt::Key_F11)},
                               [this] { Q_EMIT fullScreenRequested(); }));
    m_needs_picture.append(Add(view, "compare", tr("&Compare selected messages"), {QKeySequence(tr("Ctrl+Shift+D"))},
                               [this] { m_to.compares.CompareSelected(); }));
    m_needs_picture.append(
        Add(view, "compare_file", tr("Co&mpare with file…"), {}, [this] { m_to.compares.CompareWithFile(); }));
    QMenu* const go_to = view->addMenu(tr("&Go to"));
    m_panels = view->addMenu(tr("Pa&nels"));
    AddPanels(go_to, m_panels);
    AddListOptions(view->addMenu(tr("&Library")));
    m_warnings = Add(view, "show_warnings", tr("&Warnings of the last import…"), {QKeySequence(tr("Ctrl+Shift+M"))},
                     [this] { m_to.imports.ShowWarnings(); });
    Add(view, "reload", tr("&Reload library"), {QKeySequence::Refresh}, [this] { m_to.imports.ReloadLibrary(); });
}

/// The thumbnails and the picture offer what can be done with a message.
void MainMenus::AddContextMenus() {
    QList<QAction*> actions;
    // Object names; null for a separator.
    constexpr const char* kNames[] = {"copy",           "copy_text", nullptr,        "edit_field",
                                      "save_message",   nullptr,     "save_picture", "export",
                                      "show_in_folder", nullptr,     "remove"};
    for (const char* const name : kNames) {
        if (name != nullptr) {
            actions.append(m_workspace.window.findChild<QAction*>(QLatin1String(name)));
            continue;
        }
        actions.append(new QAction(this));
        actions.back()->setSeparator(true);
    }
    m_workspace.library.AddContextActions(actions);
    m_to.picture.addActions(actions);
    m_to.picture.setContextMenuPolicy(Qt::ActionsContextMenu);
}

/// Each panel has a number for the keyboard, since the tabs of panels take no focus.
void MainMenus::AddPanels(QMenu* go_to, QMenu* shown) {
    int number = 0;
    const auto add = [&](const QString& text, const std::function<void()>& call) {
        ++number;
        Add(go_to, qPrintable(QStringLiteral("go_to_%1").arg(number)), QStringLiteral("&%1 %2").arg(number).arg(text),
            {QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + number))}, call);
    };
    add(tr("Library"), [this] { m_workspace.library.FocusList(); });
    add(tr("Picture"), [this] { m_to.picture.setFocus(Qt::ShortcutFocusReason); });
    for (QDockWidget* const dock : m_to.docks.Docks()) {
        dock->toggleViewAction()->setText(QStringLiteral("&%1 %2").arg(number + 1).arg(dock->windowTitle()));
        shown->addAction(dock->toggleViewAction());
        add(dock->windowTitle(), [dock] {
            dock->show();
            dock->raise();
            dock->widget()->setFocus(Qt::ShortcutFocusReason);
        });
    }
}

void MainMenus::AddToPanels(QAction* toggle) {
    toggle->setText(tr("&Toolbar"));
    m_panels->addSeparator();
    m_panels->addAction(toggle);
}

void MainMenus::AddSafeSizes(QMenu* menu) {
    auto* const group = new QActionGroup(this);
    const int stored = m_workspace.settings.value(kSafeSetting).toInt();
    // Parts in percent: action and title.
    for (const auto& [action_safe, title_safe] : {std::pair(93, 90), std::pair(90, 80)}) {
        const auto show = [this, action_safe = action_safe, title_safe = title_safe] {
            m_workspace.settings.setValue(kSafeSetting, action_safe);
            m_to.picture.SetSafeSizes(action_safe, title_safe);
        };
        QAction* const action =
            Add(menu, qPrintable(QStringLiteral("safe_%1").arg(action_safe)),
                tr("&%1 Action %2 %, title %3 %").arg(group->actions().size() + 1).arg(action_safe).arg(title_safe), {},
                show);
        action->setCheckable(true);
        group->addAction(action);
        if (stored == action_safe || group->actions().size() == 1) {
            action->setChecked(true);
            show();
        }
    }
}

void MainMenus::AddListOptions(QMenu* menu) {
    struct Order {
        const char* name;
        QString text;
        LibraryOrder order;
    };
    auto* const group = new QActionGroup(this);
    const QString stored = m_workspace.settings.value(kOrderSetting).toString();
    for (const Order& order : {Order{"by_disk", tr("Sort by &disk"), LibraryOrder::kDisk},
                               Order{"by_number", tr("Sort by &number"), LibraryOrder::kNumber},
                               Order{"by_title", tr("Sort by &title"), LibraryOrder::kTitle}}) {
        const QString name = QLatin1String(order.name);
        QAction* const action = Add(menu, order.name, order.text, {}, [this, name, to = order.order] {
            m_workspace.settings.setValue(kOrderSetting, name);
            m_workspace.library.SetOrder(to);
        });
        action->setCheckable(true);
        group->addAction(action);
        if (stored == name || order.order == LibraryOrder::kDisk) {
            action->setChecked(true);
            m_workspace.library.SetOrder(order.order);
        }
    }
    menu->addSeparator();
    AddToggle(menu, "group_disks", tr("&Group by disk"), {}, false,
              [this](bool on) { m_workspace.library.SetGrouped(on); });
    QAction* const only = Add(menu, "only_warnings", tr("Only with &warnings"), {}, [] {});
    only->setCheckable(true);
    connect(only, &QAction::toggled, &m_workspace.library, &LibraryPanel::SetOnlyWithWarnings);
    m_workspace.library.SetMenu(menu);
}

void MainMenus::AddBackgrounds(QMenu* menu) {
    auto* const group = new QActionGroup(this);
    const auto add = [&](const char* name, const QString& text, const QKeySequence& keys,
                         const std::function<void()>& call) {
        QAction* const action = Add(menu, name, text, {keys}, call);
        action->setCheckable(true);
        group->addAction(action);
        return action;
    };
    add("checkerboard", tr("&Checkerboard"), tr("Ctrl+Shift+C"),
        [this] { SetBackground(QStringLiteral("checkerboard")); });
    add("black", tr("&Black"), tr("Ctrl+Shift+B"), [this] { SetBackground(QStringLiteral("black")); });
    add("white", tr("&White"), tr("Ctrl+Shift+W"), [this] { SetBackground(QStringLiteral("white")); });
    add("colour", tr("C&hoose…"), {}, [this] {
        const QColor chosen = QColorDialog::getColor(BackgroundColour(), &m_workspace.window, tr("Background"));
        if (chosen.isValid()) m_workspace.settings.setValue(kColourSetting, chosen);
        SetBackground(chosen.isValid() ? QStringLiteral("colour")
                                       : m_workspace.settings.value(kBackgroundSetting).toString());
    });
    SetBackground(m_workspace.settings.value(kBackgroundSetting).toString());
}

QColor MainMenus::BackgroundColour() const {
    return m_workspace.settings.value(kColourSetting, QColor(0, 128, 0)).value<QColor>();
}

/// @param name  of the action; an unknown one is the checkerboard.
void MainMenus::SetBackground(const QString& name) {
    const QStringList names{QStringLiteral("checkerboard"), QStringLiteral("black"), QStringLiteral("white"),
                            QStringLiteral("colour")};
    const qsizetype index = std::max<qsizetype>(names.indexOf(name), 0);
    const QColor colours[] = {QColor(), Qt::black, Qt::white, BackgroundColour()};
    m_workspace.settings.setValue(kBackgroundSetting, names[index]);
    m_workspace.window.findChild<QAction*>(names[index])->setChecked(true);
    m_to.picture.SetBackground(index == 0 ? PictureView::Background::kCheckerboard : PictureView::Background::kColour,
                               colours[index]);
}

void MainMenus::MakeHelpMenu() {
    QMenu* const help = m_workspace.window.menuBar()->addMenu(tr("&Help"));
    Add(help, "guide", tr("&Guide"), {QKeySequence::HelpContents}, [this] { Help().ShowGuide(); });
    Add(help, "keys", tr("&Keys"), {QKeySequence(tr("Ctrl+F1"))},
        [this] { Help().ShowKeys(*m_workspace.window.menuBar()); });
    help->addSeparator();
    Add(help, "about", tr("&About ZelTrans"), {}, [this] {
        RunBox(&m_workspace.window, QMessageBox::Information, tr("About ZelTrans"),
               tr("ZelTrans %1\n\nImports Zelmara! messages and fonts.\n\nLibrary: %2")
                   .arg(QApplication::applicationVersion(), QFile::decodeName(m_workspace.places.library.c_str())));
    });
}

HelpWindow& MainMenus::Help() {
    if (!m_help) m_help = new HelpWindow(&m_workspace.window);
    return *m_help;
}

void MainMenus::FillRecentMenu() {
    m_recent_menu->clear();
    const QStringList disks = m_to.recent.List();
    int number = 0;
    for (const QString& disk : disks) {
        AddPath(m_recent_menu, ++number, disk, [this, disk] {
            m_workspace.BeginAction();
            m_to.imports.Open({disk});
        });
    }
    if (disks.isEmpty()) m_recent_menu->addAction(tr("None yet"))->setEnabled(false);
}

void MainMenus::FillRecentLibraries() {
    m_recent_libraries->clear();
    const QString present = QFile::decodeName(m_workspace.places.library.c_str());
    int number = 0;
    for (const QString& file : m_to.libraries.Recent()) {
        QAction* const action =
            AddPath(m_recent_libraries, ++number, file, [this, file] { m_to.libraries.OpenFile(file); });
        action->setCheckable(true);
        action->setChecked(file == present);
    }
}

/// An action with the name of a file or folder and its path.
/// @param number  from 1 to 10; its last digit is the key in the menu.
QAction* MainMenus::AddPath(QMenu* menu, int number, const QString& path, const std::function<void()>& call) {
    constexpr int kWidth = 420;
    QString text = QFileInfo(path).fileName() + QStringLiteral("  –  ") + path;
    text = menu->fontMetrics().elidedText(text.replace(u'&', QStringLiteral("&&")), Qt::ElideMiddle, kWidth);
    QAction* const action = menu->addAction(QStringLiteral("&%1  %2").arg(QString::number(number % 10), text));
    action->setToolTip(PlainToolTip(path));
    connect(action, &QAction::triggered, this, call);
    return action;
}

void MainMenus::Enable(const State& state) {
    const auto enable = [](const QList<QAction*>& actions, bool on) {
        for (QAction* const action : actions) action->setEnabled(on);
    };
    enable(m_needs_picture, state.has_picture);
    enable(m_needs_messages, state.has_messages && !state.busy);
    enable(m_needs_task, state.busy);
    enable(m_needs_fields, state.has_fields);
    m_undo->setEnabled(state.can_undo);
    m_redo->setEnabled(state.can_redo);
    const auto escaped = [](QString text) { return text.replace(u'&', QStringLiteral("&&")); };
    m_undo->setText(tr("&Undo %1").arg(escaped(state.undo_text)).trimmed());
    m_redo->setText(tr("R&edo %1").arg(escaped(state.redo_text)).trimmed());
    m_warnings->setEnabled(state.has_warnings);
    enable(m_needs_idle, !state.busy);
}

}  // namespace zel::desktop
