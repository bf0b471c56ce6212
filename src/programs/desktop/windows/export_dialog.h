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

/// Asks for the messages to export, the formats and the destination. Keeps formats, options and destination in the
/// settings.
class ExportDialog : public QDialog {
    Q_OBJECT

  public:
    /// The messages that can be exported.
    struct Offer {
        std::vector<library::RecordingKey> selected;
        std::vector<library::RecordingKey> shown;
        std::vector<std::string> disks;
        /// Of the current message.
        std::string disk;
        /// The module's dialog asks for the numbers afterwards.
        bool asks_range = false;
    };

    /// @param settings  not owned.
    ExportDialog(Offer offer, QSettings& settings, QWidget* parent);
    ~ExportDialog() override;

    ExportSettings Settings() const;
    std::string Disk() const;
    /// The chosen messages: their keys, or a range of numbers on Disk().
    struct Choice {
        std::vector<library::RecordingKey> keys;
        bool is_range = false;
        int first = 0, last = 0;
    };
    Choice Chosen() const;

    void done(int result) override;

  private:
    void FillFormats();
    void ReadOptions();
    void KeepOptions();
    void Enable();
    QStringList Checked() const;

    const Offer m_offer;
    QSettings& m_settings;
    std::unique_ptr<Ui::ExportDialog> m_ui;
};

}  // namespace zel::desktop
