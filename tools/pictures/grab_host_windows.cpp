// Writes pictures of the program's windows, with an imported disk, as PNG files: grab_host_windows DIRECTORY light|dark
// DISK. QT_SCALE_FACTOR sets the scale.
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <iostream>

#include "pictures/grab.h"
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
    /// Saves the window that an action opens beside the main window.
    void SaveWindow(const char* action, const char* window) {
        Press({action});
        if (auto* const opened = m_window->findChild<QWidget*>(QLatin1String(window))) {
            Save(*opened, QLatin1String(action));
            opened->close();
        }
    }
    void SaveImport();
    void SaveViews();
    void SaveServer();
    void SaveImportDialog();
    void SaveMenus();
    void SaveGlyphSheet();
    void SaveFields();

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
    m_window->resize(800, 600);
    Save(*m_window, QStringLiteral("empty_small"));
    m_window->resize(1280, 800);
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
    Press({"group_disks"});
    Save(*m_window, QStringLiteral("main_grouped"));
    Press({"group_disks"});
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
    SaveWindow("full_screen", "full_screen");
    Press({"key", "fit", "field_frames", "safe_areas", "white"});
    m_window->resize(760, 520);
    Save(*m_window, QStringLiteral("main_small"));
    m_window->resize(1280, 800);
}

void Grabber::SaveImportDialog() {
    QTimer::singleShot(300, [&] {
        QWidget& dialog = *QApplication::activeModalWidget();
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

/// A tab field that is changed, a table and a comparison.
void Grabber::SaveFields() {
    auto& list = *m_window->findChild<QListView*>(QStringLiteral("library"));
    list.setCurrentIndex(list.model()->index(12, 0));
    Press({"edit_field"});
    auto& text = *m_window->findChild<QLineEdit*>(QStringLiteral("field_text"));
    text.setText(QStringLiteral("A name that is far too long"));
    QTest::keyClick(&text, Qt::Key_Return);
    Save(*m_window, QStringLiteral("field"));
    text.setText(QStringLiteral("Bea Lund"));
    QTest::keyClick(&text, Qt::Key_Return);
    const QString table = m_home.filePath(QStringLiteral("names.csv"));
    QFile file(table);
    if (file.open(QIODevice::WriteOnly))
        file.write(
            "NAME,TOWN,Shoes\nKit Osei,Halden,4\nJo Marsh,A town with a far too long name,3\nAda,Port Ellery,1\n");
    file.close();
    QTimer::singleShot(300, [&] {
        auto& dialog = *QApplication::activeModalWidget();
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(table);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    Press({"fill_table"});
    if (auto* const fill = m_window->findChild<QWidget*>(QStringLiteral("fill_window"))) {
        Save(*fill, QStringLiteral("fill_table"));
        QTest::keyClick(fill, Qt::Key_F8);
        Save(*fill, QStringLiteral("fill_table_fault"));
        fill->close();
    }
    SaveWindow("compare", "compare_window");
    Press({"undo"});
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
    SaveFields();
    for (const char* const action : {"guide", "keys"}) SaveWindow(action, "help_window");
    SaveWindow("show_warnings", "warnings_window");
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
