// Starts the desktop program with a library and ends when the first page is on the screen, with the thumbnails that are
// visible: desktop_start LIBRARY
#include <QApplication>
#include <QListView>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>
#include <cstdlib>

#include "base/process.h"
#include "host/settings/sqlite_settings_store.h"
#include "programs/desktop/models/library_model.h"
#include "programs/desktop/windows/main_window.h"

using namespace zel;

namespace {

/// Whether every visible row has its thumbnail.
bool IsPageShown(const QListView& list) {
    const QRect area = list.viewport()->rect();
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        const QModelIndex item = list.model()->index(row, 0);
        if (!list.visualRect(item).intersects(area)) break;
        if (item.data(desktop::LibraryModel::kThumbnail).value<QImage>().isNull()) return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    base::PrepareProcess();
    const QApplication application(argc, argv);
    if (argc != 2) return 2;
    const QTemporaryDir settings;
    settings::SqliteSettingsStore store(settings.path().toStdString());
    seam::SetSettingsStore(&store);
    desktop::MainWindow window({argv[1], settings.path() + QStringLiteral("/desktop.ini")});
    window.show();
    const auto* const list = window.findChild<QListView*>(QStringLiteral("library"));
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (window.windowHandle()->isExposed() && IsPageShown(*list)) QCoreApplication::exit(0);
    });
    timer.start(1);
    const int exit_code = QApplication::exec();
    // The window's own objects still ask it.
    std::_Exit(exit_code);
}
