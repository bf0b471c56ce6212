#include "programs/desktop/dialogs/list_views.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QStyle>
#include <string>

#include "programs/desktop/dialogs/dialog_view.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

/// Height of a closed combo box in dialog units. The template's height includes the drop-down list.
constexpr double kClosedHeight = 13;

struct ListMessages {
    UINT count, length, entry;
};
constexpr ListMessages kCombo{CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT};
constexpr ListMessages kListBox{LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT};

QStringList Entries(CWnd& control, const ListMessages& messages) {
    QStringList entries;
    const auto count = static_cast<WPARAM>(control.SendMessage(messages.count));
    for (WPARAM index = 0; index < count; ++index) {
        std::string entry(static_cast<std::size_t>(control.SendMessage(messages.length, index)), '\0');
        control.SendMessage(messages.entry, index, reinterpret_cast<LPARAM>(entry.data()));
        entries.append(ScreenText(entry));
    }
    return entries;
}

class ComboView : public ControlView {
  public:
    ComboView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control)
        : ControlView(dialog, source, control, new QComboBox(&dialog)) {
        Box().setEditable(true);
        Box().setInsertPolicy(QComboBox::NoInsert);
        Box().setCompleter(nullptr);
        // Keep typed text as it is, also if it equals an entry.
        QObject::disconnect(Box().lineEdit(), &QLineEdit::editingFinished, &Box(), nullptr);
        QObject::disconnect(Box().lineEdit(), &QLineEdit::returnPressed, &Box(), nullptr);
        QObject::connect(&Box(), &QComboBox::activated, [this](int index) {
            Act([&](CWnd& box) { box.SendMessage(CB_SETCURSEL, static_cast<WPARAM>(index)); });
        });
        QObject::connect(Box().lineEdit(), &QLineEdit::textEdited, [this](const QString& text) {
            Act([&](CWnd& box) { box.SetWindowText(ModuleText(text).c_str()); });
        });
    }

    QSizeF Units() const override { return QSizeF(Source().cx, kClosedHeight); }
    QSizeF Needed() const override {
        const int frame = Box().style()->pixelMetric(QStyle::PM_ComboBoxFrameWidth, nullptr, &Box());
        return {0, Box().fontMetrics().height() + 2.0 * (frame + 1)};
    }

  protected:
    void ShowText(const QString& text) override {
        if (Box().lineEdit()->text() == text) return;
        Box().lineEdit()->setText(text);
        Box().lineEdit()->home(false);
    }
    void ShowList() override {
        const QSignalBlocker quiet(Box());
        const QString text = Box().lineEdit()->text();
        Box().clear();
        Box().addItems(Entries(Control(), kCombo));
        ShowSelection();
        Box().lineEdit()->setText(text);
    }
    void ShowSelection() override {
        const QSignalBlocker quiet(Box());
        const QString text = Box().lineEdit()->text();
        Box().setCurrentIndex(static_cast<int>(Control().SendMessage(CB_GETCURSEL)));
        if (Box().currentIndex() < 0) Box().lineEdit()->setText(text);
    }

  private:
    QComboBox& Box() const { return static_cast<QComboBox&>(Widget()); }
};

class ListView : public ControlView {
  public:
    ListView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control)
        : ControlView(dialog, source, control, new QListWidget(&dialog)) {
        QObject::connect(&List(), &QListWidget::currentRowChanged, [this](int row) {
            Act([&](CWnd& list) { list.SendMessage(LB_SETCURSEL, static_cast<WPARAM>(row)); });
        });
    }

  protected:
    void ShowList() override {
        const QSignalBlocker quiet(List());
        List().clear();
        List().addItems(Entries(Control(), kListBox));
        ShowSelection();
    }
    void ShowSelection() override {
        const QSignalBlocker quiet(List());
        List().setCurrentRow(static_cast<int>(Control().SendMessage(LB_GETCURSEL)));
    }

  private:
    QListWidget& List() const { return static_cast<QListWidget&>(Widget()); }
};

}  // namespace

std::unique_ptr<ControlView> MakeComboView(DialogView& dialog, const framework::ControlTemplate& source,
                                           CWnd& control) {
    return std::make_unique<ComboView>(dialog, source, control);
}

std::unique_ptr<ControlView> MakeListView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control) {
    return std::make_unique<ListView>(dialog, source, control);
}

}  // namespace zel::desktop
