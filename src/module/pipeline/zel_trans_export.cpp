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

// The host's use of the font set, and the window, end with the call, also when an exception ends it.
class FontSetEnd {
  public:
    explicit FontSetEnd(CZelTransDlg& dialog) noexcept : m_dialog(dialog) {}
    ~FontSetEnd() {
        delete m_dialog.m_pFont;
        m_dialog.m_pFont = nullptr;
        m_dialog.DestroyWindow();
    }
    FontSetEnd(const FontSetEnd&) = delete;
    FontSetEnd& operator=(const FontSetEnd&) = delete;

  private:
    CZelTransDlg& m_dialog;
};

/// Does what the host has asked for. Memory that runs out leaves as the framework's exception, wherever it runs out.
template <typename Work>
void Do(Work&& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

}  // namespace

bool CZelTransExport::ZelTranslation(CWnd* host) {
    Do([&] {
        const pipeline::ResourceSwitch resources(pipeline::ResourceSwitch::After::kKeep);
        CZelTransDlg dialog(nullptr);
        const FontSetEnd end(dialog);
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
    Do([&] {
        const pipeline::ResourceSwitch resources(pipeline::ResourceSwitch::After::kKeep);
        CZelTransDlg dialog(message_path, font_dir);
        const FontSetEnd end(dialog);
        dialog.m_pHostWnd = host;
        dialog.MapBitStreamFont();
        dialog.MapTypeFace();
        dialog.Read();
    });
    return true;
}

bool CZelTransExport::ZelBatchExport(CWnd* host, CString& export_path, CWnd* export_window) {
    Do([&] {
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
    Do([&] {
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
