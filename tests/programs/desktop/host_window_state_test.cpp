// What the main window shows and keeps: selections, results, the place in the library, readable colours.
#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDrag>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QTableView>
#include <cmath>
#include <fstream>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "pictures/grab.h"
#include "programs/desktop/host_window_fixture.h"
#include "programs/desktop/widgets/readable_colours.h"
#include "programs/desktop/widgets/status_line.h"

namespace zel::screen_test {

namespace {

using testing::HasSubstr;

class HostWindowState : public HostWindow {
  protected:
    QListView& List() { return Find<QListView>("library"); }
    int CurrentRow() { return List().currentIndex().row(); }
    void Select(int row) { List().setCurrentIndex(LibraryList().index(row, 0)); }
    void SelectRows(int first, int last) {
        Select(first);
        List().selectionModel()->select({LibraryList().index(first, 0), LibraryList().index(last, 0)},
                                        QItemSelectionModel::ClearAndSelect);
    }
    std::string Result() { return Find<QLabel>("task").text().toStdString(); }
    void Search(const QString& words) {
        Find<QLineEdit>("search").setText(words);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return words.isEmpty() ? LibraryList().rowCount() == s_count : LibraryList().rowCount() < s_count; },
            kTimeout_ms));
    }
};

/// Types a name into the file dialog that opens next, and accepts it.
void EnterFile(const QString& file) {
    InNextWindow([file] {
        auto& dialog = static_cast<QFileDialog&>(*QApplication::activeModalWidget());
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(file);
        Key(dialog, Qt::Key_Return);
        if (dialog.isVisible()) dialog.close();
    });
}

TEST_F(HostWindowState, OutlinesOnlyASelectedRow) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    auto& rows = Find<QTableView>("rows");
    Find<QListView>("library").setFocus();
    for (int i = 0; i < 20 && !rows.hasFocus(); ++i) Key(*window, Qt::Key_Tab);
    ASSERT_TRUE(rows.hasFocus());
    EXPECT_TRUE(Picture().Marked().isEmpty());
    Key(*window, Qt::Key_Down);
    EXPECT_EQ(rows.selectionModel()->selectedRows().value(0).row(), 0);
    EXPECT_FALSE(Picture().Marked().isEmpty());
    Key(*window, Qt::Key_Escape);
    EXPECT_TRUE(Picture().Marked().isEmpty());
}

TEST_F(HostWindowState, KeepsBackgroundMessageAndPlaceOverARestart) {
    Import(Disk());
    window->resize(900, 600);
    Select(9);
    List().scrollTo(LibraryList().index(6, 0), QAbstractItemView::PositionAtTop);
    const auto top = [&] { return List().indexAt(QPoint(40, 20)); };
    const int first = top().row();
    ASSERT_GT(first, 0);
    Trigger("white");
    window->close();
    Start();
    EXPECT_EQ(CurrentRow(), 9);
    EXPECT_TRUE(QTest::qWaitFor([&] { return top().row() == first; }, kTimeout_ms)) << top().row() << " " << first;
    EXPECT_TRUE(Find<QAction>("white").isChecked());
    QWidget& view = *Picture().viewport();
    EXPECT_EQ(view.grab().toImage().pixelColor(view.rect().center()), QColor(Qt::white));
}

TEST_F(HostWindowState, ClearedSearchKeepsTheChosenMessage) {
    Import(Disk());
    Select(7);
    for (const char* words : {"harbour", "no message has this text"}) {
        Search(QLatin1String(words));
        EXPECT_NE(CurrentRow(), 7);
        Search({});
        EXPECT_EQ(CurrentRow(), 7) << words;
        EXPECT_TRUE(List().viewport()->rect().intersects(List().visualRect(List().currentIndex())));
    }
    Search(QStringLiteral("harbour"));
    const QVariant chosen = LibraryList().index(0, 0).data();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(LibraryList().index(0, 0)).center());
    Search({});
    EXPECT_EQ(List().currentIndex().data(), chosen);
}

TEST_F(HostWindowState, ResultsOfEarlierActionsDisappear) {
    Import(Disk());
    EXPECT_THAT(Result(), HasSubstr("imported"));
    Select(4);
    Trigger("copy");
    EXPECT_EQ(Result(), "picture copied");
    Trigger("remove");
    EXPECT_THAT(Result(), HasSubstr("1 message removed"));
    EXPECT_EQ(CurrentRow(), 4) << "the next message takes its place";
    Drop({QUrl::fromLocalFile(In("nothing"))});
    EXPECT_EQ(Result(), "");
}

TEST_F(HostWindowState, RemovesAndRestoresSeveralMessages) {
    Import(Disk());
    const auto recorded = [&] { return library::Library(LibraryFile(), library::Access::kRead).Find({"NEWS", 4}); };
    const auto before = recorded();
    ASSERT_TRUE(before);
    SelectRows(2, 5);
    EXPECT_EQ(Find<QLabel>("count").text(), QStringLiteral("4 selected, %1 messages").arg(s_count));
    List().setFocus();
    Key(*window, Qt::Key_Delete);
    EXPECT_EQ(LibraryList().rowCount(), s_count - 4);
    EXPECT_FALSE(recorded());
    Key(*window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(LibraryList().rowCount(), s_count);
    EXPECT_THAT(Result(), HasSubstr("4 messages restored"));
    ASSERT_TRUE(recorded());
    EXPECT_EQ(recorded()->picture, before->picture);
    EXPECT_EQ(recorded()->document, before->document);
    EXPECT_FALSE(Find<QAction>("undo").isEnabled());
}

TEST_F(HostWindowState, SavesAndDragsSeveralPictures) {
    Import(Disk());
    SelectRows(0, 2);
    std::filesystem::create_directories(In("pictures").toStdString());
    EnterFile(In("pictures"));
    Trigger("save_picture");
    EXPECT_THAT(Result(), HasSubstr("3 pictures saved"));
    library::Library library(LibraryFile(), library::Access::kRead);
    const auto content = [](const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll().toStdString();
    };
    EXPECT_EQ(content(In("pictures/NEWS 0002.png")), library.Picture({"NEWS", 2}));
    QMetaObject::invokeMethod(&List(), "dragged");
    const auto* const drag = Picture().findChild<QDrag*>();
    ASSERT_NE(drag, nullptr);
    ASSERT_EQ(drag->mimeData()->urls().size(), 3);
    EXPECT_EQ(content(drag->mimeData()->urls().value(2).toLocalFile()), library.Picture({"NEWS", 3}));
}

TEST_F(HostWindowState, CopiesTextsOfMessagesAndRows) {
    Import(Disk());
    Select(0);
    Trigger("copy_text");
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("Margit Alden"));
    auto& rows = Find<QTableView>("rows");
    rows.setFocus();
    rows.selectRow(1);
    Key(*window, Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), testing::MatchesRegex("1\t.*\tMargit Alden"));
}

TEST_F(HostWindowState, ReportsAFolderThatIsGone) {
    std::filesystem::create_directories(In("gone").toStdString());
    std::filesystem::copy(Disk().toStdString() + "/MESSAGES/.0001", In("gone").toStdString());
    Import(In("gone"));
    std::filesystem::remove_all(In("gone").toStdString());
    Trigger("show_in_folder");
    EXPECT_THAT(Notice(), HasSubstr("does not exist any more"));
}

TEST_F(HostWindowState, SavesIntoANewFolder) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    const QString file = In("new/folder/picture.png");
    EnterFile(file);
    Trigger("save_picture");
    EXPECT_TRUE(QFileInfo::exists(file)) << Notice();
    EXPECT_EQ(Result(), file.toStdString() + " saved");
}

TEST_F(HostWindowState, ReadsAReadOnlyLibrary) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    window.reset();
    std::filesystem::permissions(LibraryFile(), std::filesystem::perms{0444});
    std::filesystem::permissions(home.path().toStdString(), std::filesystem::perms{0555});
    const uid_t user = geteuid();
    ASSERT_TRUE(user != 0 || seteuid(65534) == 0);
    Start();
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(LibraryList().rowCount(), 1);
    EXPECT_FALSE(Picture().Shown().isNull());
    window.reset();
    ASSERT_EQ(seteuid(user), 0);
    std::filesystem::permissions(home.path().toStdString(), std::filesystem::perms{0700});
}

TEST_F(HostWindowState, CreatesAndOpensLibraries) {
    Import(Disk());
    Select(3);
    EnterFile(In("second"));
    Trigger("new_library");
    EXPECT_EQ(Notice(), "");
    EXPECT_TRUE(QFileInfo::exists(In("second.zellib")));
    EXPECT_EQ(LibraryList().rowCount(), 0);
    EXPECT_TRUE(Picture().Shown().isNull());
    EXPECT_TRUE(Find("start_page").isVisible());
    Import(Disk() + QStringLiteral("/MESSAGES/.0002"));
    EXPECT_EQ(LibraryList().rowCount(), 1);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(Recorded().size()), s_count) << "the first library is unchanged";

    EnterFile(In("second.zellib"));
    Trigger("new_library");
    EXPECT_THAT(Notice(), HasSubstr("exists"));
    std::ofstream(In("letter.zellib").toStdString()) << "Dear reader";
    EnterFile(In("letter.zellib"));
    Trigger("open_library");
    EXPECT_THAT(Notice(), HasSubstr("letter.zellib"));
    EXPECT_EQ(LibraryList().rowCount(), 1) << "the open library stays open";

    EnterFile(In("library.zellib"));
    Trigger("open_library");
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(LibraryList().rowCount(), s_count);
    const QSettings stored(In("desktop.ini"), QSettings::IniFormat);
    EXPECT_EQ(stored.value(QStringLiteral("recent/libraries")).toStringList(),
              (QStringList{In("library.zellib"), In("second.zellib")}));
}

TEST_F(HostWindowState, RefusesAPipe) {
    ASSERT_EQ(mkfifo(In(".0012").toStdString().c_str(), 0600), 0);
    Import(In(".0012"));
    EXPECT_THAT(Notice(), HasSubstr("neither a message nor a font"));
    EnterFile(In(".0012"));
    Trigger("make_font");
    EXPECT_THAT(Notice(), HasSubstr("not a regular file"));
}

TEST_F(HostWindowState, ExportDialogExplainsFormatsThatConflict) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    InNextWindow([&] {
        auto& dialog = static_cast<QDialog&>(*QApplication::activeModalWidget());
        auto& formats = *dialog.findChild<QListWidget*>();
        const QPushButton& start = *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        auto& conflict = *dialog.findChild<QLabel*>(QStringLiteral("conflict"));
        EXPECT_TRUE(start.isEnabled());
        EXPECT_FALSE(conflict.isVisible());
        formats.item(1)->setCheckState(Qt::Checked);
        EXPECT_FALSE(start.isEnabled());
        EXPECT_THAT(conflict.text().toStdString(), HasSubstr("same name"));
        formats.item(0)->setCheckState(Qt::Unchecked);
        EXPECT_TRUE(start.isEnabled());
        EXPECT_FALSE(conflict.isVisible());
        dialog.close();
    });
    Trigger("export");
}

TEST_F(HostWindowState, FitsAWidthOf800) {
    const auto narrow = [&](const char* what) {
        window->resize(800, 600);
        QTest::qWait(50);
        EXPECT_LE(window->width(), 800) << what;
    };
    narrow("start page");
    Import(Disk());
    narrow("messages");
    Find<desktop::NoticeBar>("notice").Warn(QStringLiteral("a_very_long_name_").repeated(20));
    static_cast<desktop::StatusLine*>(window->statusBar())->ShowResult(QStringLiteral("long text ").repeated(50));
    narrow("long texts");
}

TEST_F(HostWindowState, ZoomsAndMovesThePictureWithTheMouse) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    QWidget& view = *Picture().viewport();
    const QPointF centre = QRectF(view.rect()).center();
    const double fitted = Picture().Zoom();
    for (int i = 0; i < 8; ++i) {
        QWheelEvent wheel(centre, view.mapToGlobal(centre), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view, &wheel);
    }
    EXPECT_GT(Picture().Zoom(), 4 * fitted);
    const QScrollBar& bar = *Picture().horizontalScrollBar();
    const auto drag = [&](Qt::MouseButton button) {
        const int before = bar.value();
        QTest::mousePress(&view, button, {}, centre.toPoint());
        QMouseEvent move(QEvent::MouseMove, centre - QPointF(50, 0), view.mapToGlobal(centre - QPointF(50, 0)),
                         Qt::NoButton, button, Qt::NoModifier);
        QApplication::sendEvent(&view, &move);
        QTest::mouseRelease(&view, button, {}, centre.toPoint());
        return bar.value() - before;
    };
    EXPECT_EQ(drag(Qt::MiddleButton), 50);
    Picture().setFocus();
    QTest::keyPress(&Picture(), Qt::Key_Space);
    EXPECT_EQ(drag(Qt::LeftButton), 50);
    QTest::keyRelease(&Picture(), Qt::Key_Space);
    EXPECT_EQ(Picture().findChild<QDrag*>(), nullptr);
}

TEST_F(HostWindowState, GoesThroughTheMessagesInFullScreen) {
    Import(Disk());
    Select(0);
    Trigger("full_screen");
    auto& full = Find<desktop::PictureView>("full_screen");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&full));
    for (const auto& [key, row] :
         {std::pair(Qt::Key_Right, 1), {Qt::Key_Down, 2}, {Qt::Key_Left, 1}, {Qt::Key_Up, 0}, {Qt::Key_Left, 0}}) {
        Key(full, key);
        EXPECT_EQ(CurrentRow(), row);
        EXPECT_EQ(full.Shown(), Picture().Shown());
    }
    Key(full, Qt::Key_Escape);
    EXPECT_FALSE(full.isVisible());
}

TEST(MessageDetails, ShowTimesOfTheUsersZone) {
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "Asia/Tokyo");
    tzset();
    library::Recording recording;
    recording.recorded_at = "2026-11-22T23:51:32Z";
    const auto& properties = desktop::DetailsOf(recording).properties;
    EXPECT_THAT(properties, testing::Contains(
                                testing::Pair(QStringLiteral("Imported"), QStringLiteral("2026-11-23 08:51:32 JST"))));
    before.isEmpty() ? qunsetenv("TZ") : qputenv("TZ", before);
    tzset();
}

/// The ratio of the luminances, 1 to 21.
double Contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const double a = luminance(one) + 0.05, b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

TEST(ReadableColours, HintsInBothPalettesAndUncheckedBoxesInADarkOne) {
    const QPalette before = QApplication::palette();
    for (const char* const palette : {"light", "dark"}) {
        pictures::UsePalette(palette);
        desktop::UseReadableColours();
        const QPalette used = QApplication::palette();
        EXPECT_GE(Contrast(used.color(QPalette::PlaceholderText), used.color(QPalette::Base)), 4.5) << palette;
        if (std::string_view(palette) == "light") continue;
        QCheckBox box;
        box.resize(20, 20);
        const QImage image = box.grab().toImage();
        double most = 0;
        for (int x = 0; x < 12; ++x)
            most = std::max(most, Contrast(image.pixelColor(x, 10), used.color(QPalette::Window)));
        EXPECT_GE(most, 3.0);
    }
    QApplication::setPalette(before);
}

}  // namespace

}  // namespace zel::screen_test
