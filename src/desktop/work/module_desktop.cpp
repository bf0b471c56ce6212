#include "desktop/work/module_desktop.h"

#include "platform/framework/cdialog.h"
#include "tools/zel_trans_batch.h"

namespace desktop {

namespace {

class Counted {
  public:
    Counted(int& count, int step) : m_count(count), m_step(step) { m_count += m_step; }
    ~Counted() { m_count -= m_step; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

  private:
    int& m_count;
    int m_step;
};

}  // namespace

void ModuleDesktop::RunModal(CDialog& dialog) {
    const Counted batch(m_batches, dialog.GetTemplateId() == kBatchDialog ? 1 : 0);
    QtDesktop::RunModal(dialog);
}

}  // namespace desktop
