#pragma once

#include <QDialog>

class QSettings;

namespace zel::desktop {

/// Asks for the options that the host sets for an import, and stores them in the settings.
class ImportOptionsDialog : public QDialog {
    Q_OBJECT

  public:
    /// @param settings  not owned.
    ImportOptionsDialog(QSettings& settings, QWidget* parent);
};

}  // namespace zel::desktop
