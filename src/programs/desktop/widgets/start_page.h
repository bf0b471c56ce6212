#pragma once

#include <QStringList>
#include <QWidget>

class QAction;

namespace zel::desktop {

/// What stands in the middle while there is no message: the ways to get some, a large button each.
class StartPage : public QWidget {
    Q_OBJECT

  public:
    /// An action, and one sentence on what it is for.
    struct Way {
        QAction* action;
        QString purpose;
    };

    explicit StartPage(QWidget* parent = nullptr);

    /// Once. The buttons do what the actions do, and are enabled as they are.
    void Offer(const QList<Way>& ways);
};

}  // namespace zel::desktop
