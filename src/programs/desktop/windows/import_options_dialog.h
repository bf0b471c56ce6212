#pragma once

#include <QDialog>

class QSettings;

namespace zel::desktop {

/// What the host sets for an import; kept when it is accepted.
class ImportOptionsDialog : public QDialog {
    Q_OBJECT

  public:
    /// @param settings  not owned.
    ImportOptionsDialog(QSettings& settings, QWidget* parent);
};

}  // namespace zel::desktop
