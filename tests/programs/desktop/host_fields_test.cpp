// Tab fields: changed in the picture, filled from a table; two messages compared.
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <fstream>

#include <gmock/gmock.h>

#include "base/regular_file.h"
#include "base/text.h"
#include "files/message_reader.h"
#include "fill/fill_fields.h"
#include "programs/desktop/host_window_fixture.h"
#include "programs/desktop/models/picture_image.h"

namespace zel::screen_test {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// The main window with a message that has tab fields, from a disk that a test may write to.
class HostFields : public HostWindow {
  protected:
    HostFields() {
        std::filesystem::copy(Disk().toStdString(), MyDisk().toStdString(), std::filesystem::copy_options::recursive);
        Import(MyDisk());
        Select(kForm);
        EXPECT_TRUE(Find<QAction>("edit_field").isEnabled());
    }

    /// Of the message in the library's list.
    static constexpr int kForm = 12;
    QString MyDisk() const { return In("NEWS"); }
    QListView& List() { return Find<QListView>("library"); }
    void Select(int row) { List().setCurrentIndex(LibraryList().index(row, 0)); }
    static constexpr int kTown = 2;
    QString Source() const { return MyDisk() + QStringLiteral("/MESSAGES/.0013"); }
    std::string RowText(int row) {
        return Find<QTableView>("rows").model()->index(row, 3).data().toString().toStdString();
    }
    static files::Bytes Bytes(const QString& file) { return base::ReadFileBytes(file.toStdString(), 1 << 20); }
    /// Types a text into the open field and confirms it.
    void Enter(const QString& text) {
        TypeText(*window, text);
        Key(*window, Qt::Key_Return);
    }
    void Enter(const char* text) { Enter(QString::fromLatin1(text)); }
    void Save(const QString& file) {
        EnterFile(file);
        Trigger("save_message");
        EXPECT_THAT(Result(), HasSubstr("saved"));
    }
    /// Presses buttons of the boxes that open next, one in each.
    static void AnswerNext(std::vector<QMessageBox::StandardButton> buttons) {
        InNextWindow([buttons] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return AnswerNext(buttons);
            if (buttons.size() > 1) AnswerNext({buttons.begin() + 1, buttons.end()});
            box->button(buttons.front())->click();
        });
    }
    static void AnswerNext(QMessageBox::StandardButton button) { AnswerNext(std::vector{button}); }
};

/// The form of the disk with these values, filled without the program.
files::Bytes FilledBytes(const std::string& disk, std::vector<fill::FieldValue> values) {
    constexpr std::size_t kMost = 1 << 20;
    files::MessageFile message = *files::ReadMessage(base::ReadFileBytes(disk + "/MESSAGES/.0013", kMost)).file;
    fill::FontSet fonts;
    for (std::size_t slot = 0; slot < 2; ++slot) {
        const int number = message.header.font_numbers[slot];
        fonts[slot] =
            fill::MeasureFont(base::ReadFileBytes(disk + "/MACHINE/" + base::NumberedName(number), kMost), number);
    }
    return files::WriteMessage(
        fill::FillFields(fill::MakeForm(std::move(message), fonts), values, fill::Overflow::kError).message);
}

TEST_F(HostFields, SavesWhatFillWritesAndUndoesToTheSameBytes) {
    const QImage before = Picture().Shown();
    Find<QTableView>("fields").selectRow(kTown);
    Key(*window, Qt::Key_F2);
    Enter("Halden");
    EXPECT_FALSE(Find("field_editor").isVisible());
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_THAT(RowText(2), HasSubstr("Halden"));
    Trigger("copy_text");
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("Halden"));
    EXPECT_NE(Picture().Shown(), before);
    Save(In("filled"));
    EXPECT_EQ(Bytes(In("filled")), FilledBytes(MyDisk().toStdString(), {{kTown, "Halden"}}));
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_THAT(Find<QAction>("undo").text().toStdString(), HasSubstr("TOWN"));
    window->activateWindow();
    Key(*window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_EQ(Picture().Shown(), before);
    Save(In("undone"));
    EXPECT_EQ(Bytes(In("undone")), Bytes(Source()));
    Trigger("redo");
    EXPECT_THAT(RowText(2), HasSubstr("Halden"));
    Trigger("undo");
}

TEST_F(HostFields, ChangesNothingForATextThatIsNotPossible) {
    const QImage before = Picture().Shown();
    auto& fields = Find<QTableView>("fields");
    fields.window()->activateWindow();
    Q_EMIT fields.activated(fields.model()->index(kTown, 0));
    struct Case {
        QString text;
        const char* fault;
    };
    for (const Case& row : {Case{QStringLiteral("A town with a name that is far too long"), "room"},
                            {QStringLiteral("Snow \u2603"), "\u2603"}}) {
        Enter(row.text);
        EXPECT_TRUE(Find("field_fault").isVisible()) << row.fault;
        EXPECT_THAT(Find<QLabel>("field_fault").text().toStdString(), HasSubstr(row.fault));
        EXPECT_FALSE(Find<QAction>("undo").isEnabled());
        EXPECT_EQ(Picture().Shown(), before);
        Key(*window, Qt::Key_A, Qt::ControlModifier);
    }
    Key(*window, Qt::Key_Escape);
    EXPECT_FALSE(Find("field_editor").isVisible());
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(HostFields, OpensADoubleClickedFieldAndGoesOnByTab) {
    Q_EMIT Picture().fieldActivated(0);
    Key(*window, Qt::Key_Escape);
    const library::RecordedField field =
        library::Library(LibraryFile(), library::Access::kRead).Find({"NEWS", 13})->fields[kTown];
    const QRectF shown = Picture().ShownPlace(QRect(field.left, field.top, field.right - field.left, 20));
    QTest::mouseDClick(Picture().viewport(), Qt::LeftButton, {}, shown.center().toPoint());
    auto& text = Find<QLineEdit>("field_text");
    ASSERT_TRUE(text.isVisible());
    EXPECT_EQ(text.accessibleName(), "Text of the field TOWN");
    TypeText(*window, QStringLiteral("Halden"));
    Key(*window, Qt::Key_Tab);
    EXPECT_EQ(text.accessibleName(), "Text of the field f3");
    Key(*window, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(text.text(), "Halden");
    Key(*window, Qt::Key_Escape);
    EXPECT_TRUE(window->isWindowModified());
    Trigger("undo");
}

TEST_F(HostFields, AsksBeforeChangesAreLost) {
    Trigger("edit_field");
    Enter("Bea Lund");
    AnswerNext(QMessageBox::Cancel);
    Select(kForm + 2);
    EXPECT_EQ(List().currentIndex().row(), kForm);
    EXPECT_TRUE(window->isWindowModified());
    AnswerNext(QMessageBox::Cancel);
    EXPECT_FALSE(window->close());
    AnswerNext(QMessageBox::Discard);
    Select(kForm + 2);
    EXPECT_EQ(List().currentIndex().row(), kForm + 2);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_FALSE(Find<QAction>("undo").isEnabled());
}

TEST_F(HostFields, ReplacesTheSourceOnlyWhenAskedTwiceAndImportsItAgain) {
    const files::Bytes before = Bytes(Source());
    Find<QTableView>("fields").selectRow(kTown);
    Trigger("edit_field");
    Enter("Halden");
    for (const auto last : {QMessageBox::Cancel, QMessageBox::Yes}) {
        EXPECT_EQ(Bytes(Source()), before);
        InNextWindow([&] {
            auto& dialog = static_cast<QFileDialog&>(*QApplication::activeModalWidget());
            dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(Source());
            AnswerNext({QMessageBox::Yes, last});
            Key(dialog, Qt::Key_Return);
        });
        Trigger("save_message");
    }
    Finish();
    EXPECT_EQ(Bytes(Source()), FilledBytes(Disk().toStdString(), {{kTown, "Halden"}}));
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_THAT(library::Library(LibraryFile(), library::Access::kRead).Find({"NEWS", 13})->text, HasSubstr("Halden"));
}

TEST_F(HostFields, RecordsASavedMessageOfTheDisk) {
    Find<QTableView>("fields").selectRow(kTown);
    Trigger("edit_field");
    Enter("Halden");
    EnterFile(MyDisk() + QStringLiteral("/MESSAGES/.0099"));
    Trigger("save_record");
    Finish();
    library::Library library(LibraryFile(), library::Access::kRead);
    EXPECT_THAT(library.Find({"NEWS", 99})->text, HasSubstr("Halden"));
    EXPECT_THAT(library.Find({"NEWS", 99})->warnings, IsEmpty());
    EXPECT_THAT(library.Find({"NEWS", 13})->text, testing::Not(HasSubstr("Halden")));
}

TEST_F(HostFields, RefusesAMessageWhoseFileHasChanged) {
    for (const char* const what : {"has changed", "No such file"}) {
        std::ofstream(Source().toStdString(), std::ios::app) << 'x';
        if (what == std::string("No such file")) std::filesystem::remove(Source().toStdString());
        Trigger("edit_field");
        EXPECT_FALSE(Find("field_editor").isVisible());
        EXPECT_THAT(Notice(), testing::AllOf(HasSubstr(".0013"), HasSubstr(what)));
    }
}

class HostFillTable : public HostFields {
  protected:
    /// Opens the window with a table.
    QWidget& Open(const char* table) {
        const QString file = In(*table == '{' ? "names.json" : "names.csv");
        std::ofstream(file.toStdString()) << table;
        EnterFile(file);
        Trigger("fill_table");
        QWidget& opened = Find("fill_window");
        EXPECT_TRUE(QTest::qWaitForWindowActive(&opened));
        return opened;
    }
    QAbstractItemModel& Table() { return *Find<QTableView>("fill_table").model(); }
    std::string LabelText(const char* name) { return Find<QLabel>(name).text().toStdString(); }
    void WriteAll() {
        Find<QPushButton>("fill_write").click();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !Find<QLabel>("fill_result").text().isEmpty(); }, kTimeout_ms));
    }
};

constexpr const char* kThreeRecords =
    "file;town;shoes\nhalden;Halden;1\nlong;A name that is far too long for it;2\nport;Port Ellery;3\n";

TEST_F(HostFillTable, WritesTheRecordsWithoutFaults) {
    QWidget& opened = Open(kThreeRecords);
    EXPECT_THAT(LabelText("fill_summary"), HasSubstr("3 records, 1 with faults"));
    EXPECT_THAT(LabelText("fill_columns"), HasSubstr("shoes matches no tab field"));
    const QImage first = Find<desktop::PictureView>("fill_picture").Shown();
    Key(opened, Qt::Key_F8);
    EXPECT_THAT(LabelText("fill_faults"), testing::AllOf(HasSubstr("Record 2"), HasSubstr("TOWN: ")));
    EXPECT_NE(Find<desktop::PictureView>("fill_picture").Shown(), first);
    Find<QComboBox>("fill_names").setCurrentIndex(1);
    Find<QCheckBox>("fill_messages").setChecked(true);
    Find<QLineEdit>("fill_folder").setText(In("out"));
    WriteAll();
    EXPECT_THAT(LabelText("fill_result"),
                testing::AllOf(HasSubstr("2 records written, 4 files"), HasSubstr("1 record not")));
    EXPECT_EQ(Bytes(In("out/halden")), FilledBytes(MyDisk().toStdString(), {{kTown, "Halden"}}));
    EXPECT_EQ(desktop::ImageOfPng(std::string(reinterpret_cast<const char*>(Bytes(In("out/halden.png")).data()),
                                              Bytes(In("out/halden.png")).size()))
                  .convertToFormat(first.format()),
              first);
    EXPECT_FALSE(QFileInfo::exists(In("out/long")));
    // Written again, with another value.
    Table().setData(Table().index(0, 2), QStringLiteral("Marsh End"));
    AnswerNext(QMessageBox::Cancel);
    Find<QPushButton>("fill_write").click();
    EXPECT_EQ(Bytes(In("out/halden")), FilledBytes(MyDisk().toStdString(), {{kTown, "Halden"}}));
    AnswerNext(QMessageBox::Yes);
    WriteAll();
    EXPECT_EQ(Bytes(In("out/halden")), FilledBytes(MyDisk().toStdString(), {{kTown, "Marsh End"}}));
    opened.close();
}

TEST_F(HostFillTable, UndoesChangedValuesAndAsksBeforeTheyAreLost) {
    QWidget& opened = Open(kThreeRecords);
    Table().setData(Table().index(1, 2), QStringLiteral("Halden"));
    EXPECT_THAT(LabelText("fill_summary"), testing::Not(HasSubstr("faults")));
    Key(opened, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(LabelText("fill_summary"), HasSubstr("1 with faults"));
    Key(opened, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Table().index(1, 2).data(), "Halden");
    AnswerNext(QMessageBox::Cancel);
    opened.close();
    EXPECT_TRUE(opened.isVisible());
    AnswerNext(QMessageBox::Discard);
    opened.close();
    EXPECT_FALSE(opened.isVisible());
}

TEST_F(HostFillTable, NeverReplacesTheFormOrTheTable) {
    const files::Bytes form = Bytes(Source());
    QWidget& opened = Open("file,TOWN\n.0013,Halden\n");
    Find<QComboBox>("fill_names").setCurrentIndex(1);
    Find<QCheckBox>("fill_messages").setChecked(true);
    Find<QLineEdit>("fill_folder").setText(MyDisk() + QStringLiteral("/MESSAGES"));
    AnswerNext(QMessageBox::Ok);
    Find<QPushButton>("fill_write").click();
    EXPECT_EQ(Bytes(Source()), form);
    opened.close();
}

TEST_F(HostFillTable, NamesTheFaultsOfTables) {
    struct Case {
        const char* table;
        const char* fault;
    };
    for (const Case& row : {Case{"file,TOWN\nx,A\nX,B\n", "1 with faults"},
                            {"TOWN,town\nA,B\n", "the column TOWN fills the same tab field"},
                            {"{\"TOWN\": \"A\"}\n{\"NAME\": \"B\"}", "2 records"}}) {
        QWidget& opened = Open(row.table);
        Find<QComboBox>("fill_names").setCurrentIndex(std::string(row.table).starts_with("file") ? 1 : 0);
        EXPECT_THAT(LabelText("fill_summary") + LabelText("fill_columns"), HasSubstr(row.fault)) << row.table;
        opened.close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    std::ofstream(In("names.csv").toStdString()) << "TOWN\n\"never closed";
    EnterFile(In("names.csv"));
    Trigger("fill_table");
    EXPECT_THAT(Notice(), testing::AllOf(HasSubstr("names.csv"), HasSubstr("line")));
}

TEST_F(HostFields, ComparesAMessageWithItsChangesAndWithAFile) {
    Trigger("compare");
    EXPECT_THAT(Notice(), HasSubstr("One message is selected"));
    Find<QTableView>("fields").selectRow(kTown);
    Trigger("edit_field");
    Enter("Halden");
    Trigger("compare");
    QWidget& opened = Find("compare_window");
    auto& list = Find<QTableView>("compare_list");
    const auto line = [&] { return list.model()->index(0, 0).data().toString().toStdString(); };
    EXPECT_THAT(line(), HasSubstr("Halden"));
    list.selectRow(0);
    EXPECT_FALSE(Find<desktop::PictureView>("compare_b").Marked().isEmpty());
    const std::string before = line();
    Find<QPushButton>("compare_swap").click();
    EXPECT_NE(line(), before);
    Find<desktop::PictureView>("compare_b").ZoomIn();
    EXPECT_EQ(Find<desktop::PictureView>("compare_a").Zoom(), Find<desktop::PictureView>("compare_b").Zoom());
    opened.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Trigger("undo");
    EnterFile(Source());
    Trigger("compare_file");
    EXPECT_EQ(Find<QTableView>("compare_list").model()->rowCount(), 0);
    EXPECT_THAT(Find<QLabel>("compare_summary").text().toStdString(), HasSubstr("do not differ"));
    Find("compare_window").close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    List().selectionModel()->select(LibraryList().index(kForm + 1, 0), QItemSelectionModel::Select);
    Trigger("compare");
    EXPECT_GT(Find<QTableView>("compare_list").model()->rowCount(), 1);
}

}  // namespace

}  // namespace zel::screen_test
