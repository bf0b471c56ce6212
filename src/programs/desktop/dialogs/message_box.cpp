#include "programs/desktop/dialogs/message_box.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <initializer_list>
#include <utility>

#include "programs/desktop/common/line_breaks.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

// Bits 8 to 11 of the style: index of the default button.
constexpr UINT kDefaultShift = 8;
constexpr UINT kDefaultMask = 0xF;

struct BoxButton {
    QMessageBox::StandardButton button;
    int id;
};

std::initializer_list<BoxButton> ButtonsOf(UINT style) {
    static constexpr BoxButton ok{QMessageBox::Ok, IDOK}, cancel{QMessageBox::Cancel, IDCANCEL};
    static constexpr BoxButton yes{QMessageBox::Yes, IDYES}, no{QMessageBox::No, IDNO};
    static constexpr BoxButton abort{QMessageBox::Abort, IDABORT}, retry{QMessageBox::Retry, IDRETRY},
        ignore{QMessageBox::Ignore, IDIGNORE};
    static constexpr std::initializer_list<BoxButton> ok_only = {ok}, ok_cancel = {ok, cancel},
                                                      abort_retry_ignore = {abort, retry, ignore},
                                                      yes_no_cancel = {yes, no, cancel}, yes_no = {yes, no},
                                                      retry_cancel = {retry, cancel};
    switch (style & MB_TYPEMASK) {
        case MB_OKCANCEL:
            return ok_cancel;
        case MB_ABORTRETRYIGNORE:
            return abort_retry_ignore;
        case MB_YESNOCANCEL:
            return yes_no_cancel;
        case MB_YESNO:
            return yes_no;
        case MB_RETRYCANCEL:
            return retry_cancel;
        default:
            return ok_only;
    }
}

QMessageBox::Icon IconOf(UINT style) {
    switch (style & MB_ICONMASK) {
        case MB_ICONHAND:
            return QMessageBox::Critical;
        case MB_ICONQUESTION:
            return QMessageBox::Question;
        case MB_ICONEXCLAMATION:
            return QMessageBox::Warning;
        case MB_ICONASTERISK:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

/// A box that may require an answer.
class Box : public QMessageBox {
  public:
    Box(QWidget* parent, bool must_answer) : QMessageBox(parent), m_must_answer(must_answer) {
        setObjectName(QStringLiteral("message_box"));
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (m_must_answer && event->key() == Qt::Key_Escape) return;
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (m_must_answer) {
            event->ignore();
        } else {
            QMessageBox::closeEvent(event);
        }
    }

  private:
    bool m_must_answer;
};

}  // namespace

int RunMessageBox(QWidget* parent, const std::string& text, const std::string& caption, UINT style) {
    const std::initializer_list<BoxButton> buttons = ButtonsOf(style);
    const UINT type = style & MB_TYPEMASK;
    Box box(parent, type == MB_YESNO || type == MB_ABORTRETRYIGNORE);
    box.setWindowTitle(ScreenText(caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(WithBreaks(ScreenText(text).remove(u'\r')));
    box.setIcon(IconOf(style));
    UINT position = 0;
    for (const BoxButton& row : buttons) {
        QPushButton* const button = box.addButton(row.button);
        if (position++ == ((style >> kDefaultShift) & kDefaultMask)) box.setDefaultButton(button);
        if (row.id == IDCANCEL || buttons.size() == 1) box.setEscapeButton(button);
    }
    const int pressed = box.exec();
    for (const BoxButton& row : buttons) {
        if (row.button == pressed) return row.id;
    }
    // No button was pressed: the program ends.
    return IDCANCEL;
}

}  // namespace zel::desktop
