#include "programs/desktop/widgets/notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

#include "programs/desktop/common/line_breaks.h"

namespace zel::desktop {

namespace {

constexpr qsizetype kMaxNotices = 4;

/// Allows line breaks in paths and long names, which may be longer than the window is wide.
QString Breakable(QString text) {
    return WithBreaks(text.replace(QLatin1Char('/'), QStringLiteral("/\u200B")));
}

}  // namespace

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), m_icon(new QLabel(this)), m_text(new QLabel(this)) {
    setObjectName(QStringLiteral("notice"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* const close = new QToolButton(this);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAutoRaise(true);
    close->setToolTip(tr("Close this notice"));
    close->setAccessibleName(tr("Close this notice"));
    connect(close, &QToolButton::clicked, this, &NoticeBar::Clear);
    auto* const row = new QHBoxLayout(this);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    row->addWidget(m_text);
    row->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::Warn(const QString& text, const QString& advice) {
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side, side));
    const QString notice = advice.isEmpty() ? text : text + u'\n' + advice;
    m_notices.removeAll(notice);
    m_notices.append(notice);
    if (m_notices.size() > kMaxNotices) {
        m_notices.removeFirst();
        ++m_removed;
    }
    const QString before = m_removed == 0 ? QString() : tr("… and %1 earlier:").arg(m_removed) + u'\n';
    m_text->setText(Breakable(before + m_notices.join(u'\n')));
    m_text->setAccessibleName(Text());
    show();
}

void NoticeBar::Clear() {
    m_notices.clear();
    m_removed = 0;
    m_text->clear();
    hide();
}

QString NoticeBar::Text() const {
    return WithoutBreaks(m_text->text());
}

}  // namespace zel::desktop
