#pragma once

#include <QDialog>
#include <memory>

#include "programs/desktop/work/fetch_task.h"

namespace Ui {
class FetchDialog;
}
class QSettings;

namespace zel::desktop {

/// Asks for the server and the messages to fetch. Keeps the fields, except the password, in the settings.
class FetchDialog : public QDialog {
    Q_OBJECT

  public:
    /// @param settings  not owned.
    FetchDialog(QSettings& settings, QWidget* parent);
    ~FetchDialog() override;

    FetchSettings Settings() const;
    bool ImportsAfterwards() const;

    /// Stays open and shows the error if a field is invalid.
    void accept() override;

  private:
    QSettings& m_settings;
    std::unique_ptr<Ui::FetchDialog> m_ui;
};

}  // namespace zel::desktop
