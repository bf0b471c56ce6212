#include "programs/desktop/work/module_desktop.h"

#include <utility>

#include "host/run/dialog_script.h"
#include "module/contract/dialog_ids.h"
#include "platform/framework/cdialog.h"
#include "platform/script/dialog_driver.h"
#include "platform/system/files.h"

namespace zel::desktop {

namespace {

/// Counts a dialog as open during the lifetime of the object.
class OpenDialogs {
  public:
    OpenDialogs(int& count, int step) : m_count(count), m_step(step) { m_count += m_step; }
    ~OpenDialogs() { m_count -= m_step; }
    OpenDialogs(const OpenDialogs&) = delete;
    OpenDialogs& operator=(const OpenDialogs&) = delete;

  private:
    int& m_count;
    int m_step;
};

}  // namespace

ModuleDesktop::ModuleDesktop(QWidget* main_window) : QtDesktop(main_window), m_previous(seam::SetDesktop(this)) {}

ModuleDesktop::~ModuleDesktop() {
    seam::SetDesktop(m_previous);
}

void ModuleDesktop::RunModal(CDialog& dialog) {
    const OpenDialogs batch(m_batches, dialog.GetTemplateId() == kBatchDialog ? 1 : 0);
    if (dialog.GetTemplateId() == kImportDialog && m_directories) {
        const DiskDirectories directories = *std::exchange(m_directories, std::nullopt);
        script::DialogDriver user(dialog);
        run::EnterDirectories(user, system::ModulePath(directories.messages), system::ModulePath(directories.fonts));
    }
    QtDesktop::RunModal(dialog);
}

}  // namespace zel::desktop
