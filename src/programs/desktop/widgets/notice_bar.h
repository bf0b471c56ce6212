#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

namespace zel::desktop {

/// Shows error notices above the picture until it is closed. It does not block.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Adds a notice below the others. When there are too many, the oldest is removed.
    /// @param advice  what the user can do about it; may be empty.
    void Warn(const QString& text, const QString& advice = {});
    /// Removes all notices and hides the bar.
    void Clear();
    QString Text() const;

  private:
    QStringList m_notices;
    int m_removed = 0;
    QLabel* m_icon;
    QLabel* m_text;
};

}  // namespace zel::desktop
