#include "programs/desktop/windows/help_window.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QMenu>
#include <QMenuBar>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace zel::desktop {

namespace {

struct GuideSection {
    const char* title;
    const char* text;
};

constexpr GuideSection kGuide[] = {
    {QT_TR_NOOP("Import"),
     QT_TR_NOOP("Drop a disk, a folder or message files on the window, or use Import disk or folder… in the menu File. "
                "A disk is a folder that contains MESSAGES and MACHINE. Every message is stored in the library with "
                "its picture, its texts and the fonts that it uses; the files of the disk are not changed. Importing a "
                "disk again adds what is new or different. Import… opens the module's own dialog for one message or a "
                "range. Fetch over FTP… copies messages and their fonts from a server first.")},
    {QT_TR_NOOP("Warnings"),
     QT_TR_NOOP("The status bar shows how many imported messages have warnings, such as a missing font. Click it for "
                "the list. In the library such a message has a warning sign; the panel Details lists its warnings.")},
    {QT_TR_NOOP("Find"),
     QT_TR_NOOP("Type words into the field above the library: they are looked for in texts, names of tab fields and "
                "files. The button beside it, or Library in the menu View, sorts the messages, groups them by disk and "
                "lists only those with warnings.")},
    {QT_TR_NOOP("Look"),
     QT_TR_NOOP("The wheel zooms. The middle button, or the left one while the space bar is down, moves the picture. "
                "F11 shows the picture alone on the screen; there the arrow keys go from message to message. A row or "
                "tab field that is selected beside the picture is outlined in it; a double click on a font shows its "
                "glyphs.")},
    {QT_TR_NOOP("Copy, save, export"),
     QT_TR_NOOP("Drag a picture, or several selected thumbnails, into another program, or copy it. Save picture as… "
                "writes a PNG file with straight alpha; other entries of the menu File multiply the colours by the "
                "alpha, or save the key alone. Export… writes many messages in many formats.")},
    {QT_TR_NOOP("Change tab fields"),
     QT_TR_NOOP(
         "Double-click a tab field in the picture, or press F2, and type: Enter applies the text, Tab goes on to "
         "the next field, Esc cancels. A text that is too long, or a character that the font does not have, "
         "changes nothing. Undo and Redo are in the menu Edit. Save as message file… writes the changed message; "
         "the disk and the library stay as they are until you replace the message's own file, which the "
         "program asks about, and then imports again. Save and record… imports the new file too. Export… exports what "
         "is recorded.")},
    {QT_TR_NOOP("Fill from a table"),
     QT_TR_NOOP("Fill from table… in the menu Edit fills the tab fields of the message with the records of a CSV file "
                "with a heading, or of a JSON file. The column's name is that of the field, or its number: f0, f1 … "
                "Each record is shown in the picture with its faults. Double-click a value to change it. Write all "
                "writes the records without faults as message files, as pictures, or both.")},
    {QT_TR_NOOP("Compare"),
     QT_TR_NOOP("Select two messages and use Compare selected messages in the menu View, or compare the current one "
                "with a message file. A message whose texts were changed is compared with its recording. The pictures "
                "are zoomed and moved together; a difference that is selected in the list is outlined.")},
    {QT_TR_NOOP("Remove"),
     QT_TR_NOOP("Delete removes the selected messages from the library, never from the disk. Undo removal in the menu "
                "Edit restores them.")},
};

struct KeyHint {
    const char* keys;
    const char* effect;
};

/// Keys that no menu shows.
constexpr KeyHint kOtherKeys[] = {
    {QT_TR_NOOP("Down, Enter in the search field"), QT_TR_NOOP("Go to the messages found")},
    {QT_TR_NOOP("Esc in the search field"), QT_TR_NOOP("Remove the search")},
    {QT_TR_NOOP("Delete in the library"), QT_TR_NOOP("Remove the selected messages")},
    {QT_TR_NOOP("Left, Right in the picture"), QT_TR_NOOP("Select the previous or next character")},
    {QT_TR_NOOP("Wheel in the picture"), QT_TR_NOOP("Zoom; with Shift, scroll")},
    {QT_TR_NOOP("Middle button, or space and left button"), QT_TR_NOOP("Move the picture")},
    {QT_TR_NOOP("Double click on the picture"), QT_TR_NOOP("Change between fit and actual pixels")},
    {QT_TR_NOOP("Double click on a tab field, Enter on its characters"), QT_TR_NOOP("Change its text")},
    {QT_TR_NOOP("Tab, Shift+Tab in a tab field"), QT_TR_NOOP("Apply and go to the next or previous one")},
    {QT_TR_NOOP("Enter in fields"), QT_TR_NOOP("Change the text of the tab field")},
    {QT_TR_NOOP("Ctrl+Page Up, Ctrl+Page Down, F8 in a table to fill"),
     QT_TR_NOOP("Go to the previous or next record, to the next fault")},
    {QT_TR_NOOP("Ctrl+Enter in a table to fill"), QT_TR_NOOP("Write all, or stop writing")},
    {QT_TR_NOOP("Ctrl+Shift+D in a comparison"), QT_TR_NOOP("Swap the two messages")},
    {QT_TR_NOOP("Arrow keys, Page Up, Page Down in full screen"), QT_TR_NOOP("Go to another message")},
    {QT_TR_NOOP("Esc in full screen"), QT_TR_NOOP("Leave full screen")},
    {QT_TR_NOOP("Enter in fonts and warnings"), QT_TR_NOOP("Show the glyphs, or the message")},
    {QT_TR_NOOP("Esc in rows and tab fields"), QT_TR_NOOP("Remove the mark in the picture")},
};

QString KeyRow(const QString& keys, const QString& effect) {
    return QStringLiteral(
               "<tr><td width=\"280\" style=\"padding:2px\"><b>%1</b></td>"
               "<td style=\"padding:2px\">%2</td></tr>")
        .arg(keys.toHtmlEscaped(), effect.toHtmlEscaped());
}

QString PlainName(QString text) {
    return text.remove(u'&').remove(u'…');
}

/// The rows of a menu and its submenus.
QString MenuRows(const QMenu& menu) {
    QString rows;
    for (const QAction* const action : menu.actions()) {
        if (action->menu() != nullptr) {
            rows += MenuRows(*action->menu());
        } else if (!action->shortcut().isEmpty()) {
            rows += KeyRow(QKeySequence::listToString(action->shortcuts(), QKeySequence::NativeText),
                           PlainName(action->text()));
        }
    }
    return rows;
}

QString KeyTable(const QString& title, const QString& rows) {
    return QStringLiteral("<h3>%1</h3><table>%2</table>").arg(title.toHtmlEscaped(), rows);
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), m_page(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("help_window"));
    m_page->setObjectName(QStringLiteral("help"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_page);
    column->addWidget(buttons);
    resize(620, 660);
}

void HelpWindow::ShowGuide() {
    QString html;
    for (const GuideSection& section : kGuide) {
        html += QStringLiteral("<h3>%1</h3><p>%2</p>")
                    .arg(tr(section.title).toHtmlEscaped(), tr(section.text).toHtmlEscaped());
    }
    ShowPage(tr("Guide"), html);
}

void HelpWindow::ShowKeys(const QMenuBar& menus) {
    QString html;
    for (const QAction* const head : menus.actions()) {
        if (head->menu() != nullptr) html += KeyTable(PlainName(head->text()), MenuRows(*head->menu()));
    }
    QString others;
    for (const KeyHint& row : kOtherKeys) others += KeyRow(tr(row.keys), tr(row.effect));
    ShowPage(tr("Keys"), html + KeyTable(tr("Elsewhere"), others));
}

void HelpWindow::ShowPage(const QString& title, const QString& html) {
    setWindowTitle(title);
    m_page->setAccessibleName(title);
    m_page->setHtml(html);
    m_page->setFocus();
    show();
    raise();
    activateWindow();
}

}  // namespace zel::desktop
