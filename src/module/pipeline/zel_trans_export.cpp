#include "module/contract/zel_trans_export.h"

#include <new>

#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/pipeline/resource_switch.h"
#include "module/tools/zel_trans_batch.h"
#include "platform/framework/exceptions.h"

using namespace zel;

CZelTransExport& CZelTransExport::operator=(const CZelTransExport& /*other*/) {
    return *this;
}

namespace {

// Destroys the font set and the window at the end of the call, also after an exception.
class DialogCleanup {
  public:
    explicit DialogCleanup(CZelTransDlg& dialog) noexcept : m_dialog(dialog) {}
    ~DialogCleanup() {
        delete m_dialog.m_pFont;
        m_dialog.m_pFont = nullptr;
        m_dialog.DestroyWindow();
    }
    DialogCleanup(const DialogCleanup&) = delete;
    DialogCleanup& operator=(const DialogCleanup&) = delete;

  private:
    CZelTransDlg& m_dialog;
};

/// Runs a call of the host. std::bad_alloc leaves as the framework's exception.
template <typename Call>
void ConvertBadAlloc(Call&& call) {
    try {
        call();
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

}  // namespace

bool CZelTransExport::ZelTranslation(CWnd* host) {
    ConvertBadAlloc([&] {
        const pipeline::ResourceSwitch resources(pipeline::ResourceSwitch::After::kKeep);
        CZelTransDlg dialog(nullptr);
        const DialogCleanup cleanup(dialog);
        dialog.m_pHostWnd = host;
        dialog.MapBitStreamFont();
        dialog.MapTypeFace();
        dialog.DoModal();
    });
    return true;
}

bool CZelTransExport::ZelTranslation(void* /*ignored*/, CWnd* host) {
    return ZelTranslation(host);
}

bool CZelTransExport::ReadZelmaraMessage(CWnd* host, CString& message_path, CString& font_dir) {
    ConvertBadAlloc([&] {
        const pipeline::ResourceSwitch resources(pipeline::ResourceSwitch::After::kKeep);
        CZelTransDlg dialog(message_path, font_dir);
        const DialogCleanup cleanup(dialog);
        dialog.m_pHostWnd = host;
        dialog.MapBitStreamFont();
        dialog.MapTypeFace();
        dialog.Read();
    });
    return true;
}

bool CZelTransExport::ZelBatchExport(CWnd* host, CString& export_path, CWnd* export_window) {
    ConvertBadAlloc([&] {
        const pipeline::ResourceSwitch resources(pipeline::ResourceSwitch::After::kKeep);
        tools::CZelTransBatch batch(nullptr);
        CZelTransDlg dialog(nullptr);
        dialog.m_pHostWnd = host;
        dialog.m_pExportWnd = export_window;
        batch.m_pTransDlg = &dialog;
        batch.m_strExportPath = export_path;
        batch.m_bExport = 1;
        batch.DoModal();
    });
    return true;
}

bool CZelTransExport::MakeTavroFont(char* path, CZelFont* font) {
    if (font == nullptr) return false;
    ConvertBadAlloc([&] {
        const pipeline::ResourceSwitch resources(pipeline::ResourceSwitch::After::kRestore);
        CZelTransDlg dialog(nullptr);
        dialog.m_bImportSkip = 1;
        dialog.m_pHostWnd = nullptr;
        dialog.MapBitStreamFont();
        dialog.MapTypeFace();
        dialog.MakeTavroFont(path, font);
    });
    return font->m_Slots[0].font_header != nullptr;
}
