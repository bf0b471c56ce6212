#pragma once

#include <QStringList>
#include <QWidget>

class QAction;

namespace zel::desktop {

/// Shown while the library is empty: a large button for each way to import messages.
class StartPage : public QWidget {
    Q_OBJECT

  public:
    struct Choice {
        QAction* action;
        /// One line.
        QString description;
    };

    explicit StartPage(QWidget* parent = nullptr);

    /// Adds the buttons; called once. They trigger the actions and are enabled with them.
    void AddChoices(const QList<Choice>& choices);
};

}  // namespace zel::desktop
