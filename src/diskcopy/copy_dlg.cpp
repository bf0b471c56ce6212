#include "diskcopy/copy_dlg.h"

#include <string>
#include <utility>

#include "diskcopy/copy_dialog.h"
#include "platform/framework/cwinapp.h"

using namespace zel;

namespace {

/// Makes this library's templates the current ones during its lifetime. The caller's templates must be current again
/// when its function is called.
class OwnResources {
  public:
    OwnResources()
        : m_before(std::exchange(AfxGetModuleState()->m_hCurrentResourceHandle, diskcopy::CopyDialog::Resources())) {}
    ~OwnResources() { AfxGetModuleState()->m_hCurrentResourceHandle = m_before; }
    OwnResources(const OwnResources&) = delete;
    OwnResources& operator=(const OwnResources&) = delete;

  private:
    HINSTANCE m_before;
};

}  // namespace

CCopyDlg::CCopyDlg(CWnd*) {}

CCopyDlg::~CCopyDlg() = default;

int CCopyDlg::OpenDialog(void (*open_log)(char*)) {
    std::string log;
    int result = -1;
    {
        const OwnResources resources;
        diskcopy::CopyDialog dialog;
        result = static_cast<int>(dialog.DoModal());
        log = dialog.LogPath();
    }
    if (open_log != nullptr && !log.empty()) open_log(log.data());
    return result;
}
