// Grabs the host's windows into PNG files, with a disk imported: grab_host_windows DIRECTORY light|dark DISK.
// QT_SCALE_FACTOR sets the scale.
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <iostream>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/script/dialog_driver.h"
#include "platform/script/memory_settings_store.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/program_icon.h"
#include "programs/desktop/windows/main_window.h"
#include "programs/desktop/windows/remote_chooser.h"

using namespace zel;

namespace {

QPalette Dark() {
    QPalette dark(QColor(45, 45, 48), QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::AlternateBase, QColor(38, 38, 40));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
    dark.setColor(QPalette::ToolTipText, Qt::white);
    return dark;
}

class Grabber {
  public:
    Grabber(QString directory, const QString& disk) : m_directory(std::move(directory)), m_disk(disk) {}

    void Run();

  private:
    void Save(QWidget& window, const QString& name) {
        QTest::qWait(200);
        const QString file = m_directory + u'/' + name + QStringLiteral(".png");
        if (!window.grab().save(file)) std::cerr << "can't write " << file.toStdString() << '\n';
    }
    void Press(const char* action) { m_window->findChild<QAction*>(QLatin1String(action))->trigger(); }
    /// The dialog that comes next, modal.
    void SaveNext(const QString& name) {
        QTimer::singleShot(300, [this, name] {
            QWidget* const dialog = QApplication::activeModalWidget();
            if (dialog == nullptr) return;
            Save(*dialog, name);
            dialog->close();
        });
    }
    void SaveDialog(const char* action, const QString& name) {
        SaveNext(name);
        Press(action);
    }
    void SaveServer();
    void SaveMenus();

    const QString m_directory, m_disk;
    desktop::MainWindow* m_window = nullptr;
};

void Grabber::SaveServer() {
    ftp::RemoteView view;
    view.directory = "/disks/NEWS/MESSAGES";
    for (const char* const name : {".0001", ".0002", ".0012", "PROMO"}) view.listing.entries.emplace_back().name = name;
    view.listing.entries.emplace_back().name = "OLD";
    view.listing.entries.back().kind = ftp::EntryKind::kDirectory;
    SaveNext(QStringLiteral("server"));
    desktop::ChooseRemote(view, m_window);
}

void Grabber::SaveMenus() {
    for (QAction* const head : m_window->findChild<QMenuBar*>()->actions()) {
        QMenu& menu = *head->menu();
        menu.popup(m_window->pos());
        Save(menu, QStringLiteral("menu_") + QString(head->text()).remove(u'&').toLower());
        menu.close();
    }
}

void Grabber::Run() {
    const QTemporaryDir home;
    desktop::MainWindow window(
        {home.filePath(QStringLiteral("library.zellib")).toStdString(), home.filePath(QStringLiteral("desktop.ini"))});
    m_window = &window;
    window.show();
    Save(window, QStringLiteral("empty"));
    window.Open({home.path() + QStringLiteral("/no disk here"), m_disk});
    QTest::qWait(20);
    window.grab().save(m_directory + QStringLiteral("/importing.png"));
    if (!QTest::qWaitFor([&] { return !window.IsBusy(); }, 60000)) std::cerr << "the import doesn't end\n";
    QTest::qWait(500);
    auto& list = *window.findChild<QListView*>(QStringLiteral("library"));
    Save(window, QStringLiteral("notice"));
    window.findChild<desktop::NoticeBar*>()->Clear();
    list.setCurrentIndex(list.model()->index(5, 0));
    list.setFocus();
    QTest::qWait(500);
    Save(window, QStringLiteral("main"));
    list.setCurrentIndex(list.model()->index(12, 0));
    for (const char* const action : {"field_frames", "safe_areas"}) Press(action);
    auto& picture = *window.findChild<QWidget*>(QStringLiteral("picture"));
    picture.setFocus();
    for (const char* const dock : {"fields_dock", "facts_dock"})
        window.findChild<QWidget*>(QLatin1String(dock))->raise();
    for (int i = 0; i < 4; ++i) QTest::keyClick(&picture, Qt::Key_Right);
    Save(window, QStringLiteral("main_frames"));
    for (const char* const action : {"key", "actual_pixels"}) Press(action);
    Save(window, QStringLiteral("main_key"));
    for (const char* const action : {"key", "fit", "field_frames", "safe_areas", "white"}) Press(action);
    window.resize(760, 520);
    Save(window, QStringLiteral("main_small"));
    window.resize(1280, 800);
    SaveDialog("export", QStringLiteral("export"));
    SaveDialog("batch_export", QStringLiteral("batch_export"));
    SaveDialog("fetch", QStringLiteral("fetch"));
    SaveDialog("import_options", QStringLiteral("import_options"));
    SaveDialog("import_file", QStringLiteral("import_file"));
    SaveDialog("about", QStringLiteral("about"));
    SaveDialog("remove", QStringLiteral("remove"));
    SaveServer();
    QTimer::singleShot(300, [&] {
        QWidget& dialog = *QApplication::activeModalWidget();
        for (const auto& [box, folder] :
             {std::pair(ImportControl::kMessageDirBox, "MESSAGES"), std::pair(ImportControl::kFontDirBox, "MACHINE")}) {
            auto& combo = *dialog.findChild<QComboBox*>(QString::number(box));
            combo.setFocus();
            QTest::keyClicks(combo.lineEdit(), m_disk + u'/' + QLatin1String(folder));
        }
        Save(dialog, QStringLiteral("import_dialog"));
        dialog.close();
    });
    Press("import");
    SaveMenus();
    window.Open({m_disk + QStringLiteral("/MACHINE/.0012")});
    if (QWidget* const sheet = window.findChild<QWidget*>(QStringLiteral("glyph_sheet"))) {
        Save(*sheet, QStringLiteral("glyph_sheet"));
        sheet->close();
    }
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (argc != 4) return 2;
    QApplication::setWindowIcon(desktop::ProgramIcon());
    if (std::string_view(argv[2]) == "dark") QApplication::setPalette(Dark());
    script::MemorySettingsStore settings;
    seam::SetSettingsStore(&settings);
    Grabber(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[3])).Run();
    seam::SetSettingsStore(nullptr);
    return 0;
}
