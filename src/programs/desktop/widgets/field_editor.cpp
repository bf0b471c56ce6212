#include "programs/desktop/widgets/field_editor.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace zel::desktop {

namespace {

/// In characters.
constexpr int kLeastWidth = 28;
/// A text that no field has room for is cut when it is typed or pasted.
constexpr int kLongestText = 1000;

}  // namespace

FieldEditor::FieldEditor(QWidget* parent)
    : QFrame(parent), m_name(new QLabel(this)), m_text(new QLineEdit(this)), m_fault(new QLabel(this)) {
    setObjectName(QStringLiteral("field_editor"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    // The picture around it has the colour of a field.
    setBackgroundRole(QPalette::Window);
    setCursor(Qt::ArrowCursor);
    m_name->setTextFormat(Qt::PlainText);
    m_name->setBuddy(m_text);
    m_text->setObjectName(QStringLiteral("field_text"));
    m_text->setAccessibleName(tr("Text of the tab field"));
    m_text->setMaxLength(kLongestText);
    m_text->setMinimumWidth(m_text->fontMetrics().averageCharWidth() * kLeastWidth);
    m_text->installEventFilter(this);
    m_fault->setObjectName(QStringLiteral("field_fault"));
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setWordWrap(true);
    auto* const column = new QVBoxLayout(this);
    constexpr int kMargin = 6, kSpacing = 4;
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kSpacing);
    for (QWidget* const part : std::initializer_list<QWidget*>{m_name, m_text, m_fault}) column->addWidget(part);
    connect(m_text, &QLineEdit::textEdited, this, [this] {
        ShowFault({});
        Q_EMIT edited();
    });
    hide();
}

void FieldEditor::Open(const QString& field, const QString& text) {
    m_before = text;
    m_name->setText(tr("%1 – Enter applies, Esc cancels").arg(field));
    m_text->setAccessibleName(tr("Text of the field %1").arg(field));
    m_text->setText(text);
    m_text->selectAll();
    ShowFault({});
    show();
    raise();
    m_text->setFocus(Qt::OtherFocusReason);
}

void FieldEditor::ShowFault(const QString& fault) {
    m_fault->setText(fault);
    m_fault->setVisible(!fault.isEmpty());
    m_text->setAccessibleDescription(fault);
    if (!fault.isEmpty()) {
        QAccessibleEvent alert(m_fault, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    layout()->activate();
    Q_EMIT resized();
}

QString FieldEditor::Text() const {
    return m_text->text();
}

bool FieldEditor::IsChanged() const {
    return isVisibleTo(parentWidget()) && m_text->text() != m_before;
}

/// Tab and Shift+Tab confirm the text and go to the next or previous field.
bool FieldEditor::HandleKey(int key) {
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT applied(0);
            return true;
        case Qt::Key_Tab:
            Q_EMIT applied(1);
            return true;
        case Qt::Key_Backtab:
            Q_EMIT applied(-1);
            return true;
        case Qt::Key_Escape:
            Q_EMIT cancelled();
            return true;
        default:
            return false;
    }
}

bool FieldEditor::eventFilter(QObject* object, QEvent* event) {
    if (object == m_text && event->type() == QEvent::KeyPress && HandleKey(static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QFrame::eventFilter(object, event);
}

}  // namespace zel::desktop
