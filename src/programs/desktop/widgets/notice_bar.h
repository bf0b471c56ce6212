#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

namespace zel::desktop {

/// A line above the picture that says what went wrong, or what was done, until it is closed. Nothing waits for it.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Stands below what was told before, the oldest of which goes when there is too much.
    /// @param advice  what can be done about it; may be empty.
    void Warn(const QString& text, const QString& advice = {});
    /// Empties and hides it.
    void Clear();
    QString Text() const;

  private:
    QStringList m_told;
    int m_left_out = 0;
    QLabel* m_icon;
    QLabel* m_text;
};

}  // namespace zel::desktop
