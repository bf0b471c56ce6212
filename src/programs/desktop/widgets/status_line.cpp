#include "programs/desktop/widgets/status_line.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "programs/desktop/widgets/elided_label.h"

namespace zel::desktop {

StatusLine::StatusLine(QWidget* parent)
    : QStatusBar(parent),
      m_pointed(new QLabel),
      m_zoom(new QLabel),
      m_task(new ElidedLabel),
      m_count(new QLabel),
      m_progress(new QProgressBar),
      m_stop(new QPushButton(tr("Stop"))) {
    m_pointed->setObjectName(QStringLiteral("pointed"));
    m_pointed->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (QLabel* const label : {m_pointed, static_cast<QLabel*>(m_task), m_count, m_zoom}) {
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(8, 0, 8, 0);
    }
    m_count->setObjectName(QStringLiteral("count"));
    m_task->setObjectName(QStringLiteral("task"));
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setMaximumWidth(200);
    m_stop->setObjectName(QStringLiteral("stop"));
    addWidget(m_pointed, 1);
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_task), static_cast<QWidget*>(m_progress), static_cast<QWidget*>(m_stop),
          static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_zoom)})
        addPermanentWidget(widget);
    m_progress->hide();
    m_stop->hide();
    connect(m_stop, &QPushButton::clicked, this, &StatusLine::stopRequested);
}

void StatusLine::ShowPointed(const QString& text) {
    m_pointed->setText(text);
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
    if (m_progress->isHidden()) m_task->SetLine(result);
}

}  // namespace zel::desktop
