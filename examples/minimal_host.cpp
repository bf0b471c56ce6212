// The smallest complete host: minimal_host DISK/MESSAGES/.0001 imports one message and prints the text of each row.

#include <cstdio>
#include <vector>

#include "module/contract/zeltrans.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/exceptions.h"
#include "platform/system/files.h"

namespace {

/// Receives the module's messages, as main window and as the window of the import.
class HostWindow : public CWnd {
  public:
    HostWindow() { CreateHostWindow("Minimal host"); }
    ~HostWindow() override { ReleaseFonts(); }

    bool HasImported() const { return m_has_imported; }

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == zel::kMsgFonts) TakeFonts(*reinterpret_cast<CZelFont*>(lParam));
        if (message == zel::kMsgImportDone) m_has_imported = true;
        if (message == WM_PAINT) ReleaseFonts();
        return CWnd::WindowProc(message, wParam, lParam);
    }

  private:
    // The module destroys the font set at the end of the call. The copies of its slots belong to the host.
    void TakeFonts(const CZelFont& fonts) {
        for (const tag_font_memory& slot : fonts.m_Slots) {
            if (slot.font_copy != nullptr) m_copies.push_back(slot.font_copy);
        }
    }
    void ReleaseFonts() {
        CZelFont fonts;
        for (tag_font_memory* copy : m_copies) {
            fonts.ReleaseFontData(copy);
            delete copy;
        }
        m_copies.clear();
    }

    std::vector<tag_font_memory*> m_copies;
    bool m_has_imported = false;
};

// A host that draws also reads the position in `info` and, by GetMFRect and BuildMFData, the pixels.
void OnChar(CWnd* /*host*/, tag_CharInf* info, unsigned int character) {
    if (info->row_start != 0 && info->row_index != 0) std::putchar('\n');
    if (info->slot >= 0) std::putchar(static_cast<int>(character));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: minimal_host MESSAGE (an absolute path)\n");
        return 2;
    }
    HostWindow window;
    AfxGetThread()->m_pMainWnd = &window;
    char no_name_lists[MAX_PATH] = {};
    Register_GLV_OnChar(&OnChar, no_name_lists);

    CString message(zel::system::ModulePath(argv[1]).c_str());
    CString fonts;  // empty: the directory MACHINE beside the message's directory
    try {
        CZelTransExport().ReadZelmaraMessage(&window, message, fonts);
    } catch (CException* exception) {
        exception->Delete();
    }
    if (!window.HasImported()) {
        std::fprintf(stderr, "minimal_host: %s: not imported\n", argv[1]);
        return 1;
    }
    std::putchar('\n');
}
