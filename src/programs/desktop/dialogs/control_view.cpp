#include "programs/desktop/dialogs/control_view.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <utility>

#include "programs/desktop/dialogs/dialog_units.h"
#include "programs/desktop/dialogs/dialog_view.h"
#include "programs/desktop/dialogs/drawn_controls.h"
#include "programs/desktop/dialogs/list_views.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace ctl = framework::ctl;

namespace {

/// Height of a text field: the text, the frame on both sides, and a pixel between frame and text.
double FieldHeight(const QWidget& widget) {
    const int frame = widget.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &widget);
    return widget.fontMetrics().height() + 2.0 * (frame + 1);
}

class GroupView : public ControlView {
  public:
    GroupView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control)
        : ControlView(dialog, source, control, new GroupFrame(&dialog)) {
        Widget().lower();
    }
    QSizeF Needed() const override {
        const QFontMetricsF font(Widget().font());
        const double title = TextWidth(ScreenText(Source().text != nullptr ? Source().text : ""), font);
        return {title + 4 * font.averageCharWidth(), 0};
    }

  protected:
    void ShowText(const QString& text) override { static_cast<GroupFrame&>(Widget()).SetTitle(text); }
};

class LabelView : public ControlView {
  public:
    LabelView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control)
        : ControlView(dialog, source, control, new LineLabel(&dialog)) {
        const bool centred = (source.flags & ctl::centred) != 0;
        Label().setAlignment(Qt::AlignVCenter | (centred ? Qt::AlignHCenter : Qt::AlignLeft));
        if ((source.flags & ctl::static_edge) != 0) Label().setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    }
    QSizeF Needed() const override {
        const QFontMetricsF font(Widget().font());
        const double frame = 2.0 * Label().frameWidth();
        return {TextWidth(ScreenText(Source().text != nullptr ? Source().text : ""), font) + frame + 1,
                font.height() + frame};
    }

  protected:
    void ShowText(const QString& text) override {
        Label().SetLine(text);
        // A run that reports progress does not return to the event loop.
        Label().repaint();
    }

  private:
    LineLabel& Label() const { return static_cast<LineLabel&>(Widget()); }
};

/// A field that keeps its selection when it loses the focus.
class KeptSelectionEdit : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

  protected:
    void focusOutEvent(QFocusEvent* event) override {
        const auto first = static_cast<int>(selectionStart());
        const auto length = static_cast<int>(selectionLength());
        const bool backwards = cursorPosition() == first;
        QLineEdit::focusOutEvent(event);
        if (length > 0 && !hasSelectedText())
            setSelection(backwards ? first + length : first, backwards ? -length : length);
    }
};

QLineEdit* MakeEdit(const framework::ControlTemplate& source, QWidget* parent) {
    if ((source.flags & ctl::no_hide_selection) != 0) return new KeptSelectionEdit(parent);
    return new QLineEdit(parent);
}

class EditView : public ControlView {
  public:
    EditView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control)
        : ControlView(dialog, source, control, MakeEdit(source, &dialog)) {
        if ((source.flags & ctl::password) != 0) Edit().setEchoMode(QLineEdit::Password);
        QObject::connect(&Edit(), &QLineEdit::textEdited, [this](const QString& text) { Typed(text); });
    }
    QSizeF Needed() const override { return {0, FieldHeight(Widget())}; }

  protected:
    void ShowText(const QString& text) override {
        if (Edit().text() == text) return;
        Edit().setText(text);
        Edit().home(false);
    }
    void ShowSelection() override {
        DWORD start = 0, end = 0;
        Control().SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        const std::string bytes = Bytes();
        const int first = ScreenPosition(bytes, start);
        Edit().setSelection(first, ScreenPosition(bytes, end) - first);
    }

  private:
    QLineEdit& Edit() const { return static_cast<QLineEdit&>(Widget()); }

    void Typed(const QString& text) {
        const auto limit = static_cast<std::size_t>(Control().SendMessage(EM_GETLIMITTEXT));
        const QString cut = CutToBytes(text, limit);
        if (cut != text) Edit().setText(cut);
        Act([&](CWnd& control) { control.SetWindowText(ModuleText(cut).c_str()); });
    }
};

class ButtonView : public ControlView {
  public:
    ButtonView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control, QAbstractButton* button)
        : ControlView(dialog, source, control, button) {
        QObject::connect(button, &QAbstractButton::clicked, [this, &dialog] {
            Act([](CWnd& pressed) { pressed.SendMessage(BM_CLICK); });
            // The widget has changed its state, the control may not have.
            dialog.MirrorChecks();
        });
    }

  protected:
    QAbstractButton& Button() const { return static_cast<QAbstractButton&>(Widget()); }
    QString SourceText() const { return ScreenText(Source().text != nullptr ? Source().text : ""); }
    void ShowText(const QString& text) override { Button().setText(text); }
};

class PushView : public ButtonView {
  public:
    PushView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control)
        : ButtonView(dialog, source, control,
                     source.kind == framework::ControlKind::multi_line_button ? new MultiLineButton(&dialog)
                                                                              : new QPushButton(&dialog)) {
        // A dialog may have no default button.
        static_cast<QPushButton&>(Widget()).setAutoDefault(false);
    }

    QSizeF Needed() const override {
        const QFontMetricsF font(Widget().font());
        const double frame = 2.0 * Widget().style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &Widget()) + 2;
        const double margin = Widget().style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, &Widget()) + frame;
        if (Source().kind != framework::ControlKind::multi_line_button)
            return {TextWidth(SourceText().trimmed(), font) + margin, font.height() + frame};
        constexpr int kLines = 2;
        return {WidthForLines(SourceText(), kLines, font) + margin, kLines * font.height() + frame};
    }
};

class CheckView : public ButtonView {
  public:
    using ButtonView::ButtonView;

    QSizeF Needed() const override {
        return {static_cast<double>(Button().sizeHint().width()), static_cast<double>(Button().fontMetrics().height())};
    }

  protected:
    void ShowCheck() override {
        const bool on = Control().SendMessage(BM_GETCHECK) != static_cast<LRESULT>(BST_UNCHECKED);
        QButtonGroup* const group = Button().group();
        // An exclusive group always has one checked button.
        if (group != nullptr) group->setExclusive(false);
        Button().setChecked(on);
        if (group != nullptr) group->setExclusive(true);
    }
};

QAbstractButton* MakeRadioButton(QWidget* parent) {
    auto* const button = new QRadioButton(parent);
    button->setAutoExclusive(false);
    return button;
}

}  // namespace

ControlView::ControlView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control, QWidget* widget)
    : m_dialog(dialog), m_source(source), m_handle(control.m_hWnd), m_widget(widget) {
    if (source.id != IDC_STATIC) widget->setObjectName(QString::number(source.id));
}

ControlView::~ControlView() {
    // The widget is deleted later and must not signal this view.
    m_widget->blockSignals(true);
}

std::string ControlView::Bytes() const {
    CString text;
    Control().GetWindowText(text);
    return text.GetString();
}

void ControlView::Act(const std::function<void(CWnd&)>& action) {
    m_dialog.Act(m_handle, [&] { action(Control()); });
}

void ControlView::Mirror(framework::WindowChange change) {
    switch (change) {
        case framework::WindowChange::text:
            ShowText(ScreenText(Bytes()));
            break;
        case framework::WindowChange::check:
            ShowCheck();
            break;
        case framework::WindowChange::list:
            ShowList();
            break;
        case framework::WindowChange::selection:
            ShowSelection();
            break;
        case framework::WindowChange::enabled:
            m_widget->setEnabled(Control().IsWindowEnabled() != FALSE);
            break;
        case framework::WindowChange::visible:
            m_widget->setVisible(Control().IsWindowVisible() != FALSE);
            break;
        case framework::WindowChange::focus:
            if (!m_widget->hasFocus()) m_widget->setFocus();
            break;
        case framework::WindowChange::rect:
        case framework::WindowChange::default_button:
        case framework::WindowChange::ended:
        case framework::WindowChange::destroyed:
            break;
    }
}

void ControlView::MirrorAll() {
    using enum framework::WindowChange;
    for (const framework::WindowChange change : {list, text, check, selection, enabled, visible}) Mirror(change);
}

std::unique_ptr<ControlView> MakeControlView(DialogView& dialog, const framework::ControlTemplate& source,
                                             CWnd& control) {
    switch (source.kind) {
        case framework::ControlKind::group_box:
            return std::make_unique<GroupView>(dialog, source, control);
        case framework::ControlKind::edit:
            return std::make_unique<EditView>(dialog, source, control);
        case framework::ControlKind::combo_box:
            return MakeComboView(dialog, source, control);
        case framework::ControlKind::list_box:
            return MakeListView(dialog, source, control);
        case framework::ControlKind::push_button:
        case framework::ControlKind::default_button:
        case framework::ControlKind::multi_line_button:
            return std::make_unique<PushView>(dialog, source, control);
        case framework::ControlKind::check_box:
            return std::make_unique<CheckView>(dialog, source, control, new QCheckBox(&dialog));
        case framework::ControlKind::radio_button:
            return std::make_unique<CheckView>(dialog, source, control, MakeRadioButton(&dialog));
        case framework::ControlKind::static_text:
            break;
    }
    return std::make_unique<LabelView>(dialog, source, control);
}

}  // namespace zel::desktop
