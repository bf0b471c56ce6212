#pragma once

#include <QFrame>

class QLabel;

namespace desktop {

/// A line above the picture that says what went wrong, or what was done, until it is closed. Nothing waits for it.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// @param advice  what can be done about it; may be empty.
    void Warn(const QString& text, const QString& advice = {});
    QString Text() const;

  private:
    QLabel* m_icon;
    QLabel* m_text;
};

}  // namespace desktop
