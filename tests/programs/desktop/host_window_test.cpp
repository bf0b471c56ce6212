// The main window: imports, the library, the picture, exports.
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <csignal>
#include <fstream>

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "programs/desktop/host_window_fixture.h"

namespace zel::screen_test {

namespace {

using testing::HasSubstr;

TEST_F(HostWindow, ImportsADroppedDisk) {
    EXPECT_TRUE(Find("start_page").isVisible());
    Drop({QUrl::fromLocalFile(Disk())});
    EXPECT_TRUE(window->IsBusy());
    EXPECT_TRUE(Find("stop").isVisible());
    Finish();
    EXPECT_FALSE(Find("start_page").isVisible());
    EXPECT_EQ(LibraryList().rowCount(), s_count);
    EXPECT_EQ(Recorded().front().key, (library::RecordingKey{"NEWS", 1}));
    EXPECT_EQ(Picture().Shown().size(), QSize(720, 486));
    EXPECT_EQ(Find<QTableView>("rows").model()->index(1, 3).data(), "Margit Alden");
    EXPECT_EQ(Notice(), "");
    const QModelIndex first = LibraryList().index(0, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !first.data(Qt::UserRole).value<QImage>().isNull(); }, kTimeout_ms));
}

TEST_F(HostWindow, OpensDroppedFontsFoldersAndFiles) {
    const auto at = [](const char* path) { return QUrl::fromLocalFile(Disk() + QLatin1String(path)); };
    Drop({at("/MACHINE/.0012"), at("/MESSAGES/.0003"), QUrl(QStringLiteral("ftp://host/DISK"))});
    Finish();
    EXPECT_EQ(Recorded().front().key, (library::RecordingKey{"NEWS", 3}));
    EXPECT_THAT(Notice(), HasSubstr("Fetch over FTP"));
    auto& glyphs = Find<desktop::PictureView>("glyphs");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&glyphs));
    EXPECT_EQ(glyphs.Zoom(), 1.0);
    Key(glyphs, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(glyphs.Zoom(), 1.0);
    Key(glyphs, Qt::Key_0, Qt::ControlModifier);
    EXPECT_TRUE(glyphs.IsFitted());
    Drop({at("/MESSAGES")});
    Finish();
    EXPECT_EQ(LibraryList().rowCount(), s_count);
}

TEST_F(HostWindow, RecordsTwoDisksOfOneNameSeparately) {
    const QString other = In("other") + QStringLiteral("/NEWS");
    std::filesystem::create_directories(other.toStdString());
    std::filesystem::copy(Disk().toStdString() + "/MESSAGES/.0002", other.toStdString() + "/.0001");
    std::filesystem::copy(Disk().toStdString() + "/MESSAGES/.0002", other.toStdString() + "/PROMO");
    window->Open({Disk(), other});
    Finish();
    EXPECT_EQ(library::Library(LibraryFile(), library::Access::kRead).Disks(),
              (std::vector<std::string>{"NEWS", "NEWS (2)", "NEWS (2) PROMO"}));
    Start();
    Import(other);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(Recorded().size()), s_count + 2);
}

/// Operates the module's batch dialog as soon as it is open.
void EnterRange(const char* first, const char* last) {
    const QPointer<QWidget> batch = QApplication::activeModalWidget();
    if (!batch || batch->objectName() != QStringLiteral("dialog_%1").arg(kBatchDialog))
        return InNextWindow([=] { EnterRange(first, last); });
    EXPECT_TRUE(QTest::qWaitForWindowActive(batch));
    for (const auto& [control, id] :
         {std::pair(BatchControl::kStartIdEdit, first), std::pair(BatchControl::kEndIdEdit, last)}) {
        Click(*batch->findChild<QWidget*>(QString::number(control)));
        Key(*batch, Qt::Key_A, Qt::ControlModifier);
        TypeText(*batch, QLatin1String(id));
    }
    Click(*batch->findChild<QWidget*>(QString::number(IDOK)));
    if (batch) batch->close();
}

TEST_F(HostWindow, RecordsAndExportsByTheModulesDialogs) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    // No box about missing name lists opens, since the program has its own.
    InNextWindow([&] {
        QWidget& dialog = *QApplication::activeModalWidget();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        for (const int box : {ImportControl::kFontDirBox, ImportControl::kMessageDirBox}) {
            if (!dialog.findChild<QComboBox*>(QString::number(box))->currentText().isEmpty()) continue;
            ADD_FAILURE() << "the dialog shows the directories of the message's disk";
            dialog.close();
            return;
        }
        Click(*dialog.findChild<QWidget*>(QString::number(ImportControl::kMessageIdEdit)));
        Key(dialog, Qt::Key_A, Qt::ControlModifier);
        TypeText(dialog, QStringLiteral("3"));
        Click(*dialog.findChild<QWidget*>(QString::number(ImportControl::kReadButton)));
        EXPECT_TRUE(QTest::qWaitFor([&] { return window->windowTitle() == "NEWS 0003 – ZelTrans"; }, kTimeout_ms))
            << "while the dialog is still open";
        InNextWindow([] { EnterRange("1", "4"); });
        Click(*dialog.findChild<QWidget*>(QString::number(ImportControl::kBatchButton)));
        dialog.close();
    });
    Trigger("import");
    std::vector<int> numbers;
    for (const library::LibraryEntry& entry : Recorded()) numbers.push_back(entry.key.number);
    EXPECT_THAT(numbers, testing::ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(LibraryList().rowCount(), 4);

    InNextWindow([&] {
        QWidget& dialog = *QApplication::activeModalWidget();
        dialog.findChild<QLineEdit*>(QStringLiteral("directory"))->setText(In("out"));
        InNextWindow([&] { EnterRange("2", "40"); });
        Key(dialog, Qt::Key_Return);
    });
    Trigger("batch_export");
    EXPECT_EQ(Notice(), "");
    EXPECT_THAT(Result(), HasSubstr("3 messages exported"));
}

struct BadPath {
    const char* name;
    /// In the temporary directory.
    const char* path;
    const char* notice;
};

TEST_F(HostWindow, ReportsBadPathsAndRemainsUsable) {
    std::filesystem::create_directories(In("empty").toStdString());
    std::ofstream(In("letter.txt").toStdString()) << "Dear reader";
    std::ofstream(In(".0012").toStdString()) << "xx";
    ASSERT_EQ(mkfifo(In(".0013").toStdString().c_str(), 0600), 0);
    for (const BadPath& bad : {BadPath{"a text", "letter.txt", "neither a message nor a font"},
                               {"a file cut short", ".0012", "neither a message nor a font"},
                               {"a pipe", ".0013", "neither a message nor a font"},
                               {"a folder without messages", "empty", "contains no messages"},
                               {"nothing", "none", "there is no such file"}}) {
        Import(In(bad.path));
        EXPECT_THAT(Notice(), HasSubstr(bad.notice)) << bad.name;
        EXPECT_TRUE(Find("notice").isVisible()) << bad.name;
    }
    EnterFile(In(".0013"));
    Trigger("make_font");
    EXPECT_THAT(Notice(), HasSubstr("not a regular file"));
    std::filesystem::copy(Disk().toStdString() + "/MESSAGES/.0001", In("empty").toStdString());
    Import(In("empty"));
    EXPECT_EQ(LibraryList().rowCount(), 1);
    std::filesystem::remove_all(In("empty").toStdString());
    Trigger("show_in_folder");
    EXPECT_THAT(Notice(), HasSubstr("does not exist any more"));
}

TEST_F(HostWindow, ReportsALibraryThatIsLockedOrOnAFullDisk) {
    const QString message = Disk() + QStringLiteral("/MESSAGES/.0002");
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    sqlite3* other = nullptr;
    sqlite3_open(LibraryFile().c_str(), &other);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    Import(message);
    EXPECT_THAT(Notice(), HasSubstr("locked"));
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);

    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{4096, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    Import(message);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_THAT(Notice(), HasSubstr("Recorded messages are kept"));
    EXPECT_EQ(Recorded().size(), 1U);

    Import(message);
    EXPECT_EQ(LibraryList().rowCount(), 2);
}

TEST_F(HostWindow, RecordsArrivedMessagesWhenClosedDuringAnImport) {
    window->Open({Disk()});
    EXPECT_TRUE(QTest::qWaitFor([&] { return LibraryList().rowCount() > 0; }, kTimeout_ms));
    window->close();
    const auto recorded = static_cast<std::ptrdiff_t>(Recorded().size());
    EXPECT_GT(recorded, 0);
    Start();
    EXPECT_EQ(LibraryList().rowCount(), recorded);
    Import(Disk());
    EXPECT_EQ(LibraryList().rowCount(), s_count);
    EXPECT_THAT(Result(), HasSubstr(std::to_string(recorded) + " unchanged"));
}

TEST_F(HostWindow, WorksByKeyboardAlone) {
    OpenRecordedLibrary();
    Key(*window, Qt::Key_F, Qt::ControlModifier);
    TypeText(*window, QStringLiteral("harbour mast"));
    Key(*window, Qt::Key_Down);
    EXPECT_EQ(LibraryList().rowCount(), 1);
    EXPECT_EQ(window->windowTitle(), "NEWS 0001 – ZelTrans");
    Key(*window, Qt::Key_C, Qt::ControlModifier);
    const QMimeData& copied = *QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied.data(QStringLiteral("image/png")).toStdString(),
              library::Library(LibraryFile(), library::Access::kRead).Picture({"NEWS", 1}));
    const QImage image = qvariant_cast<QImage>(copied.imageData());
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(image.pixel(120, 400)), 224);

    const double fitted = Picture().Zoom();
    Key(*window, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(Picture().Zoom(), fitted);
    Key(*window, Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(Picture().Zoom(), 1.0);
    Key(*window, Qt::Key_0, Qt::ControlModifier);
    EXPECT_TRUE(Picture().IsFitted());
    Key(*window, Qt::Key_5, Qt::AltModifier);
    EXPECT_TRUE(Find("fonts").hasFocus());
    Key(*window, Qt::Key_2, Qt::AltModifier);
    Key(*window, Qt::Key_Right);
    Key(*window, Qt::Key_Right);
    EXPECT_THAT(Find<QLabel>("pointed").text().toStdString(), HasSubstr("“M”   code 77   font 0001 Lantern Bold 38"));
}

TEST_F(HostWindow, ShowsThePictureInEachMode) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    QWidget& view = *Picture().viewport();
    const auto centre = [&] { return view.grab().toImage().pixelColor(view.rect().center()); };
    Trigger("black");
    EXPECT_EQ(centre(), QColor(Qt::black));
    Trigger("white");
    EXPECT_EQ(centre(), QColor(Qt::white));
    Trigger("key");
    EXPECT_EQ(centre(), QColor(Qt::black));
    EXPECT_EQ(Picture().Shown().pixelColor(120, 400), QColor(224, 224, 224));
    Trigger("key");

    Trigger("actual_pixels");
    Trigger("aspect");
    Picture().Fit();
    QTest::mouseMove(&view, view.rect().center());
    EXPECT_EQ(Find<QLabel>("pointed").text(), "NEWS 0001   NTSC, 486 lines   3 rows   3 fonts   0 tab fields");
    const QPoint in_band(view.width() / 2, view.height() / 2 + qRound((410 - 243) * Picture().Zoom()));
    QTest::mouseMove(&view, in_band);
    EXPECT_THAT(Find<QLabel>("pointed").text().toStdString(), HasSubstr("font 0002 Lantern 28"));
}

TEST_F(HostWindow, ImportsWithTheStoredOptions) {
    InNextWindow([] {
        auto& dialog = static_cast<QDialog&>(*QApplication::activeModalWidget());
        auto& standard = *dialog.findChild<QComboBox*>(QStringLiteral("lines"));
        EXPECT_EQ(standard.currentText(), "NTSC, 486 lines");
        standard.setCurrentIndex(1);
        dialog.findChild<QAbstractButton*>(QStringLiteral("baseline"))->setChecked(false);
        Key(dialog, Qt::Key_Return);
    });
    Trigger("import_options");
    Start();
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    const auto recording = library::Library(LibraryFile(), library::Access::kRead).Find({"NEWS", 1});
    ASSERT_TRUE(recording);
    EXPECT_THAT(recording->options, testing::StartsWith("lines=576 no-baseline-align bitstream_fontlist.txt="));
}

TEST_F(HostWindow, ExportsAllShownMessagesInTheCheckedFormats) {
    OpenRecordedLibrary();
    InNextWindow([&] {
        auto& dialog = static_cast<QDialog&>(*QApplication::activeModalWidget());
        auto& formats = *dialog.findChild<QListWidget*>();
        const QPushButton& start = *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        for (int row = 0; auto* const item = formats.item(row); ++row) item->setCheckState(Qt::Unchecked);
        EXPECT_FALSE(start.isEnabled());
        for (int row = 0; auto* const item = formats.item(row); ++row)
            item->setCheckState(item->text().startsWith(QLatin1String("json")) ? Qt::Checked : Qt::Unchecked);
        EXPECT_TRUE(start.isEnabled());
        dialog.findChild<QAbstractButton*>(QStringLiteral("shown"))->click();
        dialog.findChild<QLineEdit*>(QStringLiteral("directory"))->setText(In("out"));
        Key(dialog, Qt::Key_Return);
    });
    Trigger("export");
    Finish();
    EXPECT_EQ(Notice(), "");
    EXPECT_TRUE(QFileInfo::exists(In("out/manifest.json")));
    EXPECT_THAT(Result(), HasSubstr(std::to_string(s_count) + " messages exported"));
}

TEST_F(HostWindow, ExportOptionsAreThoseOfTheCheckedFormats) {
    OpenRecordedLibrary();
    InNextWindow([&] {
        auto& dialog = static_cast<QDialog&>(*QApplication::activeModalWidget());
        const auto option = [&](const char* name) { return dialog.findChild<QWidget*>(QLatin1String(name)); };
        auto& formats = *dialog.findChild<QListWidget*>();
        for (int row = 0; auto* const item = formats.item(row); ++row)
            item->setCheckState(item->text().startsWith(QLatin1String("tga")) ? Qt::Checked : Qt::Unchecked);
        EXPECT_TRUE(option("run-lengths")->isVisible() && !option("codec")->isVisible() && !option("fit")->isVisible());
        const QPushButton& start = *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        auto& frame = *dialog.findChild<QComboBox*>(QStringLiteral("frame"));
        frame.setEditText(QStringLiteral("1280"));
        EXPECT_FALSE(start.isEnabled());
        frame.setEditText(QStringLiteral("1280x720"));
        EXPECT_TRUE(start.isEnabled() && option("fit")->isVisible());
        dialog.findChild<QAbstractButton*>(QStringLiteral("run-lengths"))->click();
        dialog.findChild<QLineEdit*>(QStringLiteral("directory"))->setText(In("out"));
        Key(dialog, Qt::Key_Return);
    });
    Trigger("export");
    Finish();
    EXPECT_EQ(Notice(), "");
    QFile manifest(In("out/manifest.json"));
    EXPECT_TRUE(manifest.open(QIODevice::ReadOnly) && manifest.readAll().contains("\"1280x720 pillar\""));
    // Shown again, with the options of the last time.
    InNextWindow([&] {
        auto& dialog = static_cast<QDialog&>(*QApplication::activeModalWidget());
        EXPECT_EQ(dialog.findChild<QComboBox*>(QStringLiteral("frame"))->currentText(), QStringLiteral("1280x720"));
        EXPECT_TRUE(dialog.findChild<QAbstractButton*>(QStringLiteral("run-lengths"))->isChecked());
        dialog.reject();
    });
    Trigger("export");
}

TEST_F(HostWindow, FetchDialogStaysOpenUntilItsFieldsAreValid) {
    InNextWindow([&] {
        auto& dialog = static_cast<QDialog&>(*QApplication::activeModalWidget());
        dialog.findChild<QLineEdit*>(QStringLiteral("url"))->setText(QStringLiteral("http://host/"));
        Key(dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_THAT(dialog.findChild<QLabel*>(QStringLiteral("error"))->text().toStdString(), HasSubstr("Address"));
        dialog.close();
    });
    Trigger("fetch");
}

}  // namespace

}  // namespace zel::screen_test
