// Tab fields: changed in the picture, filled from a table; two messages compared.
#include <QAction>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <fstream>

#include <gmock/gmock.h>

#include "base/regular_file.h"
#include "files/message_reader.h"
#include "fill/fill_fields.h"
#include "programs/desktop/host_window_fixture.h"

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
};

TEST_F(HostFields, Look) {
    for (int row = 0; row < LibraryList().rowCount(); ++row) {
        Select(row);
        std::printf("%d %s:", row, Recorded()[static_cast<std::size_t>(row)].source.c_str());
        auto& fields = *Find<QTableView>("fields").model();
        for (int i = 0; i < fields.rowCount(); ++i)
            std::printf(" [%s]", fields.index(i, 0).data().toString().toUtf8().data());
        std::puts("");
    }
    Select(12);
    Trigger("edit_field");
    window->grab().save("/tmp/desk16/edit.png");
    TypeText(*window, "A very long text that does not fit into the field at all, never");
    Key(*window, Qt::Key_Return);
    window->grab().save("/tmp/desk16/fault.png");
    Key(*window, Qt::Key_A, Qt::ControlModifier);
    TypeText(*window, "Short");
    Key(*window, Qt::Key_Return);
    window->grab().save("/tmp/desk16/done.png");
    std::ofstream(In("names.csv").toStdString())
        << "file;town;NAME;Shoe size\none;Halden;Bea Lund;4\ntwo;A town whose name is far too long for its "
           "field;Kit;3\nthree;Port Ellery;Jo \xe2\x98\x83;1\n";
    EnterFile(In("names.csv"));
    Trigger("fill_table");
    QWidget& fill = Find("fill_window");
    QApplication::processEvents();
    fill.grab().save("/tmp/desk16/fill.png");
    Key(fill, Qt::Key_F8);
    QApplication::processEvents();
    fill.grab().save("/tmp/desk16/fill2.png");
}

}  // namespace

}  // namespace zel::screen_test
