#pragma once

#include <QStatusBar>

class QLabel;
class QProgressBar;
class QPushButton;

namespace zel::desktop {

class ElidedLabel;

/// The status bar: what the pointer is at, the current task with its progress and a button to stop it, the number of
/// messages, and the zoom.
class StatusLine : public QStatusBar {
    Q_OBJECT

  public:
    explicit StatusLine(QWidget* parent = nullptr);

    void ShowPointed(const QString& text);
    void ShowCount(const QString& text);
    void ShowZoom(const QString& text);

    /// Shows a running task.
    /// @param total  0 if unknown.
    void ShowTask(const QString& name, int done, int total);
    /// Shows the result of the task that has ended.
    void EndTask(const QString& result);
    /// Shows the result of an action, in place of that of an earlier one. While a task is running, does nothing.
    void ShowResult(const QString& result);
    /// Shows beside the result how many imported messages have warnings, until the next result; 0 shows nothing.
    void ShowWarnings(std::size_t messages);

  Q_SIGNALS:
    void stopRequested();
    /// The user wants to see the warnings.
    void warningsRequested();
    /// A task has started or ended.
    void taskChanged();

  private:
    ElidedLabel* m_pointed;
    QLabel* m_zoom;
    ElidedLabel* m_task;
    QPushButton* m_warnings;
    QLabel* m_count;
    QProgressBar* m_progress;
    QPushButton* m_stop;
};

}  // namespace zel::desktop
