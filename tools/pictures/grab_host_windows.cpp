// Writes pictures of the program's windows, with an imported disk, as PNG files: grab_host_windows DIRECTORY light|dark
// DISK. QT_SCALE_FACTOR sets the scale.
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <iostream>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "pictures/grab.h"
#include "platform/script/dialog_driver.h"
#include "platform/script/memory_settings_store.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/program_icon.h"
#include "programs/desktop/widgets/readable_colours.h"
#include "programs/desktop/windows/main_window.h"
#include "programs/desktop/windows/remote_chooser.h"

using namespace zel;

namespace {

class Grabber {
  public:
    Grabber(QString directory, const QString& disk) : m_directory(std::move(directory)), m_disk(disk) {}

    void Run();

  private:
    void Save(QWidget& window, const QString& name) {
        QTest::qWait(200);
        pictures::Grab(window, m_directory, name);
    }
    void Press(std::initializer_list<const char*> actions) {
        for (const char* const action : actions) m_window->findChild<QAction*>(QLatin1String(action))->trigger();
    }
    /// Saves the next modal dialog and closes it.
    void SaveNext(const QString& name) {
        QTimer::singleShot(300, [this, name] {
            QWidget* const dialog = QApplication::activeModalWidget();
            if (dialog == nullptr) return;
            Save(*dialog, name);
            dialog->close();
        });
    }
    /// Saves the dialog that an action opens, under the action's name.
    void SaveDialog(const char* action) {
        SaveNext(QLatin1String(action));
        Press({action});
    }
    void SaveImport();
    void SaveViews();
    void SaveServer();
    void SaveImportDialog();
    void SaveMenus();
    void SaveGlyphSheet();

    const QString m_directory, m_disk;
    const QTemporaryDir m_home;
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

void Grabber::SaveImport() {
    Save(*m_window, QStringLiteral("empty"));
    m_window->Open({m_home.path() + QStringLiteral("/no disk here"), m_disk});
    QTest::qWait(20);
    pictures::Grab(*m_window, m_directory, QStringLiteral("importing"));
    if (!QTest::qWaitFor([&] { return !m_window->IsBusy(); }, 60000)) std::cerr << "the import does not end\n";
    QTest::qWait(500);
    Save(*m_window, QStringLiteral("notice"));
    m_window->findChild<desktop::NoticeBar*>()->Clear();
}

void Grabber::SaveViews() {
    auto& list = *m_window->findChild<QListView*>(QStringLiteral("library"));
    list.setCurrentIndex(list.model()->index(5, 0));
    list.setFocus();
    QTest::qWait(500);
    Save(*m_window, QStringLiteral("main"));
    list.setCurrentIndex(list.model()->index(12, 0));
    Press({"field_frames", "safe_areas"});
    auto& picture = *m_window->findChild<QWidget*>(QStringLiteral("picture"));
    picture.setFocus();
    for (const char* const dock : {"fields_dock", "facts_dock"})
        m_window->findChild<QWidget*>(QLatin1String(dock))->raise();
    for (int i = 0; i < 4; ++i) QTest::keyClick(&picture, Qt::Key_Right);
    Save(*m_window, QStringLiteral("main_frames"));
    Press({"key", "actual_pixels"});
    Save(*m_window, QStringLiteral("main_key"));
    Press({"key", "fit", "field_frames", "safe_areas", "white"});
    m_window->resize(760, 520);
    Save(*m_window, QStringLiteral("main_small"));
    m_window->resize(1280, 800);
}

void Grabber::SaveImportDialog() {
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
    Press({"import"});
}

void Grabber::SaveGlyphSheet() {
    m_window->Open({m_disk + QStringLiteral("/MACHINE/.0012")});
    if (QWidget* const sheet = m_window->findChild<QWidget*>(QStringLiteral("glyph_sheet"))) {
        Save(*sheet, QStringLiteral("glyph_sheet"));
        sheet->close();
    }
}

void Grabber::Run() {
    desktop::MainWindow window({m_home.filePath(QStringLiteral("library.zellib")).toStdString(),
                                m_home.filePath(QStringLiteral("desktop.ini"))});
    m_window = &window;
    window.show();
    SaveImport();
    SaveViews();
    for (const char* const action : {"export", "batch_export", "fetch", "import_options", "import_file", "about"})
        SaveDialog(action);
    SaveServer();
    SaveImportDialog();
    SaveMenus();
    SaveGlyphSheet();
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 4) return 2;
    pictures::UsePalette(argv[2]);
    desktop::UseReadableColours();
    QApplication::setWindowIcon(desktop::ProgramIcon());
    script::MemorySettingsStore settings;
    seam::SetSettingsStore(&settings);
    Grabber(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[3])).Run();
    seam::SetSettingsStore(nullptr);
    return 0;
}
