#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "programs/desktop/work/export_task.h"

namespace Ui {
class ExportDialog;
}
class QSettings;

namespace zel::desktop {

/// Asks what is exported, in which formats and where to; what was chosen last stands there again.
class ExportDialog : public QDialog {
    Q_OBJECT

  public:
    /// What can be exported.
    struct Offer {
        std::vector<library::RecordingKey> selected;
        std::vector<library::RecordingKey> shown;
        std::vector<std::string> disks;
        std::string disk;         ///< of the current message.
        bool asks_range = false;  ///< the module's own dialog asks for the numbers afterwards.
    };

    /// @param settings  not owned.
    ExportDialog(Offer offer, QSettings& settings, QWidget* parent);
    ~ExportDialog() override;

    ExportOrder Order() const;
    std::string Disk() const;
    /// The messages that are meant, but for a range, which is to be looked up.
    struct Choice {
        std::vector<library::RecordingKey> keys;
        bool is_range = false;
        int first = 0, last = 0;
    };
    Choice Chosen() const;

    void done(int result) override;

  private:
    void FillFormats();
    void Enable();
    QStringList Checked() const;

    const Offer m_offer;
    QSettings& m_settings;
    std::unique_ptr<Ui::ExportDialog> m_ui;
};

}  // namespace zel::desktop
