#include "programs/desktop/widgets/status_line.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>

#include "programs/desktop/widgets/elided_label.h"

namespace zel::desktop {

StatusLine::StatusLine(QWidget* parent)
    : QStatusBar(parent),
      m_pointed(new ElidedLabel),
      m_zoom(new QLabel),
      m_task(new ElidedLabel),
      m_warnings(new QPushButton),
      m_count(new QLabel),
      m_progress(new QProgressBar),
      m_stop(new QPushButton(tr("Stop"))) {
    m_pointed->setObjectName(QStringLiteral("pointed"));
    m_pointed->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (QLabel* const label : {static_cast<QLabel*>(m_pointed), static_cast<QLabel*>(m_task), m_count, m_zoom}) {
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(8, 0, 8, 0);
    }
    m_count->setObjectName(QStringLiteral("count"));
    m_task->setObjectName(QStringLiteral("task"));
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setMaximumWidth(200);
    m_stop->setObjectName(QStringLiteral("stop"));
    m_warnings->setObjectName(QStringLiteral("warnings_button"));
    m_warnings->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    m_warnings->setToolTip(tr("Show the warnings of the last import"));
    addWidget(m_pointed, 1);
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_task), static_cast<QWidget*>(m_warnings), static_cast<QWidget*>(m_progress),
          static_cast<QWidget*>(m_stop), static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_zoom)})
        addPermanentWidget(widget);
    m_progress->hide();
    m_stop->hide();
    ShowWarnings(0);
    connect(m_warnings, &QPushButton::clicked, this, &StatusLine::warningsRequested);
    connect(m_stop, &QPushButton::clicked, this, &StatusLine::stopRequested);
}

void StatusLine::ShowPointed(const QString& text) {
    m_pointed->SetLine(text);
}

void StatusLine::ShowCount(const QString& text) {
    m_count->setText(text);
}

void StatusLine::ShowZoom(const QString& text) {
    m_zoom->setText(text);
}

void StatusLine::ShowTask(const QString& name, int done, int total) {
    m_task->SetLine(name);
    m_progress->setRange(0, total);
    m_progress->setValue(done);
    if (m_progress->isVisible()) return;
    m_progress->show();
    m_stop->show();
    Q_EMIT taskChanged();
}

void StatusLine::EndTask(const QString& result) {
    m_progress->hide();
    m_stop->hide();
    ShowResult(result);
    Q_EMIT taskChanged();
}

void StatusLine::ShowResult(const QString& result) {
    // A running task keeps its name.
    if (!m_progress->isHidden()) return;
    m_task->SetLine(result);
    m_warnings->hide();
}

void StatusLine::ShowWarnings(std::size_t messages) {
    m_warnings->setText(tr("%1 with warnings").arg(messages));
    m_warnings->setVisible(messages != 0);
}

}  // namespace zel::desktop
