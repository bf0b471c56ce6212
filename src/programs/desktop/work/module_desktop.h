#pragma once

#include "programs/desktop/dialogs/qt_desktop.h"

namespace zel::desktop {

/// The screen of this program, which knows whether the module's batch dialog is open.
class ModuleDesktop : public QtDesktop {
  public:
    using QtDesktop::QtDesktop;

    void RunModal(CDialog& dialog) override;
    bool IsBatchOpen() const noexcept { return m_batches != 0; }

  private:
    int m_batches = 0;
};

}  // namespace zel::desktop
