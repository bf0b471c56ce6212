#pragma once

#include <QDialog>
#include <memory>

#include "programs/desktop/work/fetch_task.h"

namespace Ui {
class FetchDialog;
}
class QSettings;

namespace zel::desktop {

/// Asks what is fetched over FTP. What was typed last stands there again, but for the password.
class FetchDialog : public QDialog {
    Q_OBJECT

  public:
    /// @param settings  not owned.
    FetchDialog(QSettings& settings, QWidget* parent);
    ~FetchDialog() override;

    FetchOrder Order() const;
    bool ImportsAfterwards() const;

    /// Stays open, and says why, when it can't be tried.
    void accept() override;

  private:
    QSettings& m_settings;
    std::unique_ptr<Ui::FetchDialog> m_ui;
};

}  // namespace zel::desktop
