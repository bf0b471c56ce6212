#pragma once

#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

#include "host/library/library.h"
#include "platform/script/memory_settings_store.h"
#include "programs/desktop/screen_desktop.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/windows/main_window.h"

namespace zel::screen_test {

inline constexpr int kTimeout_ms = 30000;

/// The main window with an empty library and empty settings, and the demonstration disk.
class HostWindow : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        s_count = std::distance(std::filesystem::directory_iterator(Disk().toStdString() + "/MESSAGES"), {});
    }

    HostWindow() {
        seam::SetSettingsStore(&settings);
        Start();
    }
    ~HostWindow() override {
        window.reset();
        seam::SetSettingsStore(nullptr);
    }

    void Start() {
        window.reset();
        window = std::make_unique<desktop::MainWindow>(desktop::Places{LibraryFile(), In("desktop.ini")});
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    /// Opens a copy of the library with all messages of the demonstration disk, as after an import.
    void OpenRecordedLibrary() {
        window.reset();
        std::filesystem::copy_file(ZELTRANS_RECORDED_DISK "/library.zellib", LibraryFile(),
                                   std::filesystem::copy_options::overwrite_existing);
        Start();
    }

    /// The demonstration disk. Tests must not write to it.
    static QString Disk() { return QStringLiteral(ZELTRANS_RECORDED_DISK "/NEWS"); }
    /// A path in the temporary directory of this test.
    QString In(const char* name) const { return home.filePath(QLatin1String(name)); }
    std::string LibraryFile() const { return In("library.zellib").toStdString(); }

    template <class Kind = QWidget>
    Kind& Find(const char* name) {
        return *window->findChild<Kind*>(QLatin1String(name));
    }
    QAbstractItemModel& LibraryList() { return *Find<QListView>("library").model(); }
    desktop::PictureView& Picture() { return Find<desktop::PictureView>("picture"); }
    std::string Notice() { return Find<desktop::NoticeBar>("notice").Text().toStdString(); }
    std::string Result() { return Find<QLabel>("task").text().toStdString(); }
    void Trigger(const char* action) { Find<QAction>(action).trigger(); }

    void Drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &drop);
    }

    /// Types a name into the file dialog that opens next, and accepts it.
    static void EnterFile(const QString& file) {
        InNextWindow([file] {
            auto& dialog = static_cast<QFileDialog&>(*QApplication::activeModalWidget());
            dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(file);
            Key(dialog, Qt::Key_Return);
            if (dialog.isVisible()) dialog.close();
        });
    }

    /// Waits until the current task has ended.
    void Finish() {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !window->IsBusy(); }, kTimeout_ms));
    }
    void Import(const QString& path) {
        window->Open({path});
        Finish();
    }
    std::vector<library::LibraryEntry> Recorded() {
        return library::Library(LibraryFile(), library::Access::kRead).List();
    }

    QTemporaryDir home;
    script::MemorySettingsStore settings;
    std::unique_ptr<desktop::MainWindow> window;
    /// Number of messages on the disk.
    inline static std::ptrdiff_t s_count = 0;
};

}  // namespace zel::screen_test
