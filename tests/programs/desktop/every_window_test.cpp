// A walk through every window: texts from files are never taken as markup, and controls have names for screen readers.
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QBuffer>
#include <QFileDialog>
#include <QHelpEvent>
#include <QMenu>
#include <QSettings>
#include <QTabBar>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <fstream>

#include <gmock/gmock.h>

#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/dialogs/drawn_controls.h"
#include "programs/desktop/host_window_fixture.h"
#include "programs/desktop/widgets/field_editor.h"
#include "programs/desktop/windows/compare_window.h"
#include "programs/desktop/windows/fill_window.h"
#include "programs/desktop/windows/glyph_sheet_window.h"
#include "programs/desktop/windows/remote_chooser.h"
#include "programs/desktop/windows/warnings_window.h"

namespace zel::screen_test {

namespace {

/// Without a slash, so that it can be part of a file's name.
const QString kHostile = QStringLiteral("<img src='no.png'>");

/// A walk through the windows that are open.
class Walk {
  public:
    Walk() {
        for (QWidget* const widget : QApplication::allWidgets()) Visit(*widget);
    }

    /// Where a text would be taken as markup; controls that take the focus and have no name.
    std::vector<std::string> faults;
    /// Number of texts that contain the hostile one, as it is or escaped.
    int seen = 0;

  private:
    void Visit(const QWidget& widget) {
        const std::string name =
            std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
        if (IsUnnamed(widget)) faults.push_back(name + ": no name");
        CheckMarkup(widget.toolTip(), name + " tool tip");
        CheckMarkup(widget.whatsThis(), name + " help");
        CheckMarkup(widget.statusTip(), name + " status tip");
        if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
            if (label->textFormat() == Qt::PlainText) {
                CountPlain(label->text());
            } else {
                CheckMarkup(label->text(), name);
            }
        }
        if (const auto* const view = qobject_cast<const QAbstractItemView*>(&widget)) VisitItems(*view, name);
        for (const QAction* const action : widget.actions()) {
            CheckMarkup(action->toolTip(), name + " action " + action->objectName().toStdString());
            CountPlain(action->text());
        }
    }
    /// Of our windows: Qt names the controls of its own.
    static bool IsUnnamed(const QWidget& widget) {
        const auto* const tabs = qobject_cast<const QTabBar*>(&widget);
        if (!widget.window()->isVisible() || qobject_cast<const QFileDialog*>(widget.window()) != nullptr ||
            widget.focusProxy() != nullptr || widget.objectName().startsWith(QLatin1String("qt_")) ||
            (tabs != nullptr && tabs->count() == 0) || (widget.focusPolicy() & Qt::TabFocus) == 0 || widget.isWindow())
            return false;
        const QAccessibleInterface* const accessible =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
        return accessible == nullptr || accessible->text(QAccessible::Name).trimmed().isEmpty();
    }
    void VisitItems(const QAbstractItemView& view, const std::string& name) {
        const QAbstractItemModel* const model = view.model();
        for (int row = 0; model != nullptr && row < model->rowCount(); ++row) {
            for (int column = 0; column < model->columnCount(); ++column) {
                const QModelIndex item = model->index(row, column);
                CountPlain(item.data().toString());
                for (const int role : {Qt::ToolTipRole, Qt::WhatsThisRole, Qt::StatusTipRole})
                    CheckMarkup(item.data(role).toString(), name + " item");
            }
        }
    }
    void CountPlain(const QString& text) {
        if (text.contains(kHostile)) ++seen;
    }
    /// A text that Qt may take as markup.
    void CheckMarkup(const QString& text, const std::string& where) {
        if (text.contains(QLatin1String("<img"))) faults.push_back(where + ": " + text.toStdString());
        if (text.contains(kHostile.toHtmlEscaped())) ++seen;
    }
};

/// Expects that the open windows show the hostile text somewhere, and nowhere as markup, and that controls have names.
void ExpectFaultless(const char* window) {
    const Walk walk;
    EXPECT_THAT(walk.faults, testing::IsEmpty()) << window;
    EXPECT_GT(walk.seen, 0) << window;
}

/// A recording with the hostile text in each of its texts.
library::Recording HostileRecording() {
    const std::string text = kHostile.toStdString();
    const auto string = [&](const char* key) { return '"' + std::string(key) + "\": \"" + text + '"'; };
    library::Recording recording;
    recording.disk = text;
    recording.number = 12;
    recording.recorded_at = recording.options = recording.text = text;
    recording.fonts = recording.warnings = {text};
    recording.fields = {{text, 0, 0, 100, 40}};
    recording.sources = {{"/" + text + "/.0012", std::nullopt, 10, std::string(64, '0')},
                         {"/" + text + "/.0001", 1, 10, {}}};
    recording.width = 720;
    recording.height = 486;
    QImage picture(720, 486, QImage::Format_RGBA8888);
    picture.fill(Qt::white);
    QByteArray png;
    QBuffer buffer(&png);
    picture.save(&buffer, "png");
    recording.picture = png.toStdString();
    recording.document = "{\"rows\": [{\"y\": 0, \"top\": 0, \"depth\": 40, " + string("text") +
                         "}], \"characters\": [{\"row\": 0, \"x\": 0, \"step\": 700, \"code\": 65, " + string("text") +
                         ", \"font\": {\"number\": 1, " + string("name") + "}}], \"fonts\": [{\"slot\": 0, " +
                         string("name") + ", " + string("file") +
                         "}], \"tab_fields\": [{\"frame\": {\"right\": 90, \"bottom\": 40}, " + string("name") + "}]}";
    return recording;
}

class EveryWindow : public HostWindow {
  protected:
    EveryWindow() {
        const std::vector<library::Recording> recordings{HostileRecording()};
        library::Library(LibraryFile(), library::Access::kWrite).Record(recordings);
        Start();
    }
    /// Calls an action and looks at the dialog that it opens.
    void ExpectFaultlessDialog(const char* action) {
        InNextWindow([&] {
            QWidget* const dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr) << action;
            ExpectFaultless(action);
            dialog->close();
        });
        Trigger(action);
    }
};

TEST_F(EveryWindow, MainWindowAndItsTables) {
    const Walk walk;
    EXPECT_THAT(walk.faults, testing::IsEmpty());
    // Texts and tool tips of the row, the field, the font, ten details and the thumbnail.
    EXPECT_GE(walk.seen, 20);
}

TEST_F(EveryWindow, ToolTipOfThePicture) {
    QWidget& view = *Picture().viewport();
    const QPoint on_text(view.width() / 2, view.height() / 2 - qRound(230 * Picture().Zoom()));
    QTest::mouseMove(&view, on_text);
    QHelpEvent help(QEvent::ToolTip, on_text, view.mapToGlobal(on_text));
    QApplication::sendEvent(&view, &help);
    EXPECT_THAT(QToolTip::text().toStdString(), testing::HasSubstr("&lt;img src="));
    ExpectFaultless("tool tip");
    QToolTip::hideText();
}

TEST_F(EveryWindow, Dialogs) {
    for (const char* const action :
         {"export", "batch_export", "fetch", "import_options", "about", "import", "save_picture"})
        ExpectFaultlessDialog(action);
    ftp::RemoteView view;
    view.directory = kHostile.toStdString();
    view.listing.entries.emplace_back().name = kHostile.toStdString();
    InNextWindow([] {
        ExpectFaultless("server");
        QApplication::activeModalWidget()->close();
    });
    desktop::ChooseRemote(view, window.get());
}

TEST_F(EveryWindow, NoticesRecentDisksAndPaths) {
    const QString folder = In("folder/") + kHostile;
    std::filesystem::create_directories(folder.toStdString());
    Import(folder);
    ExpectFaultless("notice");
    window.reset();
    {
        QSettings stored(In("desktop.ini"), QSettings::IniFormat);
        stored.setValue(QStringLiteral("recent/disks"), QStringList{folder});
    }
    window = std::make_unique<desktop::MainWindow>(
        desktop::Places{(folder + QStringLiteral("/library.zellib")).toStdString(), In("desktop.ini")});
    window->show();
    ExpectFaultlessDialog("about");
    for (QMenu* const menu : window->findChildren<QMenu*>()) {
        menu->popup(window->pos());
        EXPECT_THAT(Walk().faults, testing::IsEmpty()) << menu->title().toStdString();
        menu->close();
    }
}

TEST_F(EveryWindow, WindowsBesideTheMainWindow) {
    Trigger("guide");
    int seen = Walk().seen;
    const auto expect_more = [&](const char* shown) {
        const Walk walk;
        EXPECT_THAT(walk.faults, testing::IsEmpty()) << shown;
        EXPECT_GT(walk.seen, std::exchange(seen, walk.seen)) << shown;
    };
    desktop::FontSheet sheet;
    sheet.file = sheet.name = sheet.note = kHostile.toStdString();
    sheet.picture = picture::ClearPicture(16, 16);
    (new desktop::GlyphSheetWindow(sheet, window.get()))->show();
    expect_more("glyph sheet");
    const desktop::ComparedMessage compared{kHostile, HostileRecording()};
    desktop::ComparedMessage other = compared;
    other.recording.document = "{}";
    (new desktop::CompareWindow(compared, other, Picture(), window.get()))->show();
    expect_more("comparison");
    Find("compare_window").close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    seen = Walk().seen;
    desktop::RecordedForm form;
    form.form.fields.push_back({.name = kHostile.toStdString(), .address = kHostile.toStdString()});
    form.form.message.rows.emplace_back();
    form.file = In("form").toStdString();
    std::ofstream(In("table.csv").toStdString()) << kHostile.toStdString() << ",x\n"
                                                 << kHostile.toStdString() << ",y\n";
    QSettings stored(In("desktop.ini"), QSettings::IniFormat);
    (new desktop::FillWindow(form, {}, kHostile, In("table.csv"), stored, window.get()))->show();
    expect_more("table");
    Find("fill_window").close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    seen = Walk().seen;
    desktop::FieldEditor editor(window.get());
    editor.Open(kHostile, kHostile);
    editor.ShowFault(kHostile);
    expect_more("text of a tab field");
    desktop::WarningsWindow warnings(window.get());
    warnings.Show({{{kHostile.toStdString(), 12}, {kHostile.toStdString()}}});
    expect_more("warnings");
    desktop::LineLabel label(window.get());
    label.resize(20, 20);
    label.SetLine(kHostile);
    expect_more("label of the module's dialogs");
}

/// What a tool tip shows: Qt guesses whether its text is markup.
std::string ShownText(const QString& tool_tip) {
    return (Qt::mightBeRichText(tool_tip) ? QTextDocumentFragment::fromHtml(tool_tip).toPlainText() : tool_tip)
        .toStdString();
}

TEST(PlainToolTip, ShowsEveryTextAsItIs) {
    for (const char* text : {"", "A & B", "<b>bold</b>", "&lt;", "two  blanks", "two\nlines", "<p>", "\"quoted\""})
        EXPECT_EQ(ShownText(desktop::PlainToolTip(QLatin1String(text))), text);
    EXPECT_LE(ShownText(desktop::PlainToolTip(QString(1 << 20, u'x'))).size(), 2100U);
}

struct FileName {
    const char* text;
    const char* name;
};

TEST(FileNames, ContainNothingWithAMeaning) {
    for (const FileName& row : {FileName{"NEWS (2) 0012", "NEWS (2) 0012"},
                                {"<img src=\"/dev/zero\">", "-img src=--dev-zero--"},
                                {"a\tb\nc", "a-b-c"},
                                {" ../up ", "..-up"}})
        EXPECT_EQ(desktop::FileNameFrom(QLatin1String(row.text)).toStdString(), row.name);
}

}  // namespace

}  // namespace zel::screen_test
