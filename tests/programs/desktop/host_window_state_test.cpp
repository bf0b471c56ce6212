// What the main window shows and keeps: selections, results, the place in the library, readable colours.
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDrag>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QTableView>
#include <algorithm>
#include <cmath>
#include <fstream>

#include <gmock/gmock.h>
#include <unistd.h>

#include "files/font_writer.h"
#include "pictures/grab.h"
#include "programs/desktop/host_window_fixture.h"
#include "programs/desktop/widgets/readable_colours.h"
#include "programs/desktop/widgets/status_line.h"
#include "samples/write_file.h"

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
    static std::string Content(const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll().toStdString();
    }
    void Search(const QString& words) {
        Find<QLineEdit>("search").setText(words);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return words.isEmpty() ? LibraryList().rowCount() == s_count : LibraryList().rowCount() < s_count; },
            kTimeout_ms));
    }
};

TEST_F(HostWindowState, OutlinesAndCopiesASelectedRow) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    const auto copied = [] { return QApplication::clipboard()->text().toStdString(); };
    Trigger("copy_text");
    EXPECT_THAT(copied(), HasSubstr("Margit Alden"));
    auto& rows = Find<QTableView>("rows");
    Find<QListView>("library").setFocus();
    for (int i = 0; i < 20 && !rows.hasFocus(); ++i) Key(*window, Qt::Key_Tab);
    ASSERT_TRUE(rows.hasFocus());
    EXPECT_TRUE(Picture().Marked().isEmpty());
    Key(*window, Qt::Key_Down);
    EXPECT_EQ(rows.selectionModel()->selectedRows().value(0).row(), 0);
    EXPECT_FALSE(Picture().Marked().isEmpty());
    Key(*window, Qt::Key_Down);
    Key(*window, Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(copied(), testing::MatchesRegex("1\t.*\tMargit Alden"));
    Key(*window, Qt::Key_Escape);
    EXPECT_TRUE(Picture().Marked().isEmpty());
}

TEST_F(HostWindowState, KeepsBackgroundMessageAndPlaceOverARestart) {
    OpenRecordedLibrary();
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
}

TEST_F(HostWindowState, ShrinksToAWidthOf800WithTheCurrentThumbnailInSight) {
    const auto shrink = [&](const char* what) {
        // The layouts follow a change of their contents.
        QApplication::processEvents();
        window->resize(800, 500);
        QApplication::processEvents();
        EXPECT_LE(window->width(), 800) << what;
    };
    shrink("start page");
    OpenRecordedLibrary();
    window->resize(1280, 800);
    Select(12);
    const auto is_visible = [&] {
        return List().viewport()->rect().contains(List().visualRect(List().currentIndex()).center());
    };
    EXPECT_TRUE(QTest::qWaitFor(is_visible, kTimeout_ms));
    shrink("messages");
    const auto is_small = [&] { return List().viewport()->width() < 250 && List().viewport()->height() < 500; };
    EXPECT_TRUE(QTest::qWaitFor(is_small, kTimeout_ms));
    constexpr int kSoon_ms = 3000;
    EXPECT_TRUE(QTest::qWaitFor(is_visible, kSoon_ms)) << List().viewport()->width();
    Find<desktop::NoticeBar>("notice").Warn(QStringLiteral("a_very_long_name_").repeated(20));
    static_cast<desktop::StatusLine*>(window->statusBar())->ShowResult(QStringLiteral("long text ").repeated(50));
    shrink("long texts");
}

TEST_F(HostWindowState, ClearedSearchKeepsTheChosenMessage) {
    OpenRecordedLibrary();
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

TEST_F(HostWindowState, RemovesAndRestoresSeveralMessages) {
    OpenRecordedLibrary();
    const auto recorded = [&] { return library::Library(LibraryFile(), library::Access::kRead).Find({"NEWS", 4}); };
    const auto before = recorded();
    ASSERT_TRUE(before);
    SelectRows(2, 5);
    EXPECT_EQ(Find<QLabel>("count").text(), QStringLiteral("4 selected, %1 messages").arg(s_count));
    List().setFocus();
    Key(*window, Qt::Key_Delete);
    EXPECT_EQ(LibraryList().rowCount(), s_count - 4);
    EXPECT_FALSE(recorded());
    EXPECT_THAT(Result(), HasSubstr("4 messages removed"));
    EXPECT_EQ(CurrentRow(), 2) << "the next message takes their place";
    Key(*window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(LibraryList().rowCount(), s_count);
    EXPECT_THAT(Result(), HasSubstr("4 messages restored"));
    ASSERT_TRUE(recorded());
    EXPECT_EQ(recorded()->picture, before->picture);
    EXPECT_EQ(recorded()->document, before->document);
    EXPECT_FALSE(Find<QAction>("undo").isEnabled());
    Drop({QUrl::fromLocalFile(In("nothing"))});
    EXPECT_EQ(Result(), "") << "the result of an earlier action";
}

TEST_F(HostWindowState, SavesAndDragsSeveralPictures) {
    OpenRecordedLibrary();
    SelectRows(0, 2);
    std::filesystem::create_directories(In("pictures").toStdString());
    EnterFile(In("pictures"));
    Trigger("save_picture");
    EXPECT_THAT(Result(), HasSubstr("3 pictures saved"));
    library::Library library(LibraryFile(), library::Access::kRead);
    EXPECT_EQ(Content(In("pictures/NEWS 0002.png")), library.Picture({"NEWS", 2}));
    QMetaObject::invokeMethod(&List(), "dragged");
    const auto* const drag = Picture().findChild<QDrag*>();
    ASSERT_NE(drag, nullptr);
    ASSERT_EQ(drag->mimeData()->urls().size(), 3);
    EXPECT_EQ(Content(drag->mimeData()->urls().value(2).toLocalFile()), library.Picture({"NEWS", 3}));
}

struct SavedForm {
    const char* action;
    /// Of a pixel that is half transparent.
    QRgb pixel;
};

TEST_F(HostWindowState, SavesThePictureInEachFormAndDragsIt) {
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    const std::string recorded = library::Library(LibraryFile(), library::Access::kRead).Picture({"NEWS", 1});
    for (const SavedForm& form : {SavedForm{"save_picture", qRgba(20, 44, 87, 224)},
                                  {"save_premultiplied", qRgba(18, 39, 76, 224)},
                                  {"save_key", qRgb(224, 224, 224)}}) {
        const QString file = In("new/folder/") + QLatin1String(form.action) + QStringLiteral(".png");
        EnterFile(file);
        Trigger(form.action);
        EXPECT_EQ(QImage(file).pixel(120, 400), form.pixel) << form.action << Notice();
        EXPECT_EQ(Result(), file.toStdString() + " saved");
    }
    QWidget& view = *Picture().viewport();
    QTest::mousePress(&view, Qt::LeftButton, {}, view.rect().center());
    QMouseEvent move(QEvent::MouseMove, view.rect().center() + QPoint(40, 0), view.mapToGlobal(QPoint()), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &move);
    // The offscreen platform ends a drag at once; the event loop deletes it afterwards.
    const auto* const drag = Picture().findChild<QDrag*>();
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->mimeData()->data(QStringLiteral("image/png")).toStdString(), recorded);
    const QString file = drag->mimeData()->urls().value(0).toLocalFile();
    EXPECT_EQ(QFileInfo(file).fileName(), "NEWS 0001.png");
    EXPECT_EQ(Content(file), recorded);
}

TEST_F(HostWindowState, SortsFiltersAndFollowsOtherPrograms) {
    OpenRecordedLibrary();
    // Another program adds a disk.
    {
        library::Library other(LibraryFile(), library::Access::kWrite);
        library::Recording recording = *other.Find({"NEWS", 3});
        recording.disk = "SPORT";
        recording.text = "Tomorrow evening\nsecond line";
        recording.warnings = {"font 0099 is missing"};
        other.Record({&recording, 1});
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return LibraryList().rowCount() == s_count + 1; }, kTimeout_ms));
    const auto title = [&](int row) { return LibraryList().index(row, 0).data().toString().toStdString(); };
    Trigger("by_number");
    EXPECT_EQ(title(2), "NEWS 0003");
    EXPECT_EQ(title(3), "SPORT 0003");
    EXPECT_EQ(title(4), "NEWS 0004");
    Trigger("by_title");
    EXPECT_EQ(LibraryList().index(LibraryList().rowCount() - 1, 0).data(Qt::UserRole + 1), "") << "without a title";
    int row = 0;
    while (title(row) != "SPORT 0003") ++row;
    EXPECT_EQ(title(row - 1), "NEWS 0006") << "Tomorrow";
    Trigger("by_disk");
    EXPECT_EQ(title(static_cast<int>(s_count)), "SPORT 0003");

    Trigger("group_disks");
    ASSERT_EQ(LibraryList().rowCount(), s_count + 3) << "two headings";
    EXPECT_EQ(title(0), "NEWS");
    EXPECT_EQ(title(static_cast<int>(s_count) + 1), "SPORT");
    List().setFocus();
    Key(*window, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Find<QLabel>("count").text(), QStringLiteral("%1 selected, %1 messages").arg(s_count + 1));
    Key(*window, Qt::Key_Home);
    EXPECT_EQ(CurrentRow(), 1) << "a heading can't be current";
    Trigger("group_disks");

    const auto with_warnings =
        std::ranges::count_if(Recorded(), [](const library::LibraryEntry& entry) { return entry.warnings != 0; });
    Trigger("only_warnings");
    EXPECT_EQ(LibraryList().rowCount(), with_warnings);
    EXPECT_EQ(Find<QLabel>("count").text(), QStringLiteral("%1 found").arg(with_warnings));
    Trigger("only_warnings");
    auto& disks = Find<QComboBox>("disk_filter");
    ASSERT_EQ(disks.count(), 3) << "all, and two disks";
    disks.setCurrentIndex(2);
    EXPECT_EQ(LibraryList().rowCount(), 1);
    library::Library(LibraryFile(), library::Access::kWrite).Remove({"SPORT", 3});
    EXPECT_TRUE(QTest::qWaitFor([&] { return LibraryList().rowCount() == s_count; }, kTimeout_ms))
        << "the chosen disk is gone";
    EXPECT_FALSE(disks.isVisible());
}

TEST_F(HostWindowState, ListsTheWarningsOfTheLastImport) {
    const auto& button = Find<QPushButton>("warnings_button");
    Import(Disk() + QStringLiteral("/MESSAGES/.0001"));
    EXPECT_FALSE(button.isVisible());
    EXPECT_FALSE(Find<QAction>("show_warnings").isEnabled());
    std::filesystem::create_directories(In("bare").toStdString());
    for (const char* const name : {".0002", ".0003"})
        std::filesystem::copy(Disk().toStdString() + "/MESSAGES/" + name, In("bare").toStdString());
    const files::StoredGlyph without_pixels{.width = 4, .height = 4, .length = 12 + 64};
    samples::WriteWholeFile(In("bare/.0004").toStdString(), files::WriteRgbaFile(717, without_pixels));
    Import(In("bare"));
    ASSERT_TRUE(button.isVisible());
    EXPECT_EQ(button.text(), "3 with warnings");
    Click(const_cast<QPushButton&>(button));
    const QAbstractItemModel& lines = *Find<QTableView>("warnings").model();
    const auto recording = library::Library(LibraryFile(), library::Access::kRead).Find({"bare", 3});
    ASSERT_TRUE(recording && !recording->warnings.empty());
    EXPECT_EQ(lines.index(lines.rowCount() - 1, 0).data(), "bare 0004");
    EXPECT_EQ(lines.index(lines.rowCount() - 1, 1).data(), "the picture is cut short by the file's end");
    const int last = lines.rowCount() - 2;  // of a message with a picture
    EXPECT_EQ(lines.index(last, 1).data().toString().toStdString(), recording->warnings.back());
    Find<QTableView>("warnings").setCurrentIndex(lines.index(last, 0));
    Key(Find("warnings"), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->windowTitle() == "bare 0003 – ZelTrans"; }, kTimeout_ms));
    Trigger("copy");
    EXPECT_FALSE(button.isVisible());
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
    OpenRecordedLibrary();
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
    OpenRecordedLibrary();
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

/// The ratio of the luminances, 1 to 21; of greys, in which the palettes are made.
double Contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& colour) { return std::pow(qGray(colour.rgb()) / 255.0, 2.2) + 0.05; };
    const double a = luminance(one), b = luminance(other);
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
