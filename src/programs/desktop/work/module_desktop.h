#pragma once

#include <optional>

#include "programs/desktop/dialogs/qt_desktop.h"
#include "programs/desktop/work/message_files.h"

namespace zel::desktop {

/// The module's screen during the lifetime of the object. Knows whether the module's batch dialog is open, and fills in
/// the import dialog.
class ModuleDesktop : public QtDesktop {
  public:
    explicit ModuleDesktop(QWidget* main_window);
    ~ModuleDesktop() override;
    ModuleDesktop(const ModuleDesktop&) = delete;
    ModuleDesktop& operator=(const ModuleDesktop&) = delete;

    void RunModal(CDialog& dialog) override;
    /// The next import dialog opens with these directories.
    void SetDirectories(DiskDirectories directories) { m_directories = std::move(directories); }

    bool IsBatchOpen() const noexcept { return m_batches != 0; }

  private:
    seam::Desktop* m_previous;
    int m_batches = 0;
    std::optional<DiskDirectories> m_directories;
};

}  // namespace zel::desktop
