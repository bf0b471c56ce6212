#include "platform/framework/cdialog.h"

#include "platform/framework/controls.h"
#include "platform/framework/cwinapp.h"
#include "platform/seam/desktop.h"

using namespace zel;

namespace {

// Base units of "MS Sans Serif" at 8 points: 6 pixels wide, 13 high.
constexpr int PixelsX(int units) {
    return (units * 6 + 2) / 4;
}
constexpr int PixelsY(int units) {
    return (units * 13 + 4) / 8;
}

const framework::DialogTemplate* FindTemplate(UINT id) {
    const HINSTANCE module = AfxGetModuleState()->m_hCurrentResourceHandle;
    if (module == nullptr) return nullptr;
    for (const framework::DialogTemplate& candidate : module->dialogs) {
        if (candidate.id == id) return &candidate;
    }
    return nullptr;
}

/// Destroys a window at the end of a block.
class WindowGuard {
  public:
    explicit WindowGuard(CWnd& window) : m_window(window) {}
    ~WindowGuard() { m_window.DestroyWindow(); }

    WindowGuard(const WindowGuard&) = delete;
    WindowGuard& operator=(const WindowGuard&) = delete;

  private:
    CWnd& m_window;
};

}  // namespace

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, &CDialog::OnOK)
ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

CDialog::CDialog(UINT templateId, CWnd*) : m_templateId(templateId) {}

CDialog::~CDialog() {
    if (m_hWnd != nullptr) CWnd::DestroyWindow();
}

BOOL CDialog::Create(UINT templateId, CWnd*) {
    m_templateId = templateId;
    return MakeWindow();
}

bool CDialog::MakeWindow() {
    const framework::DialogTemplate* const source = FindTemplate(m_templateId);
    if (source == nullptr || m_hWnd != nullptr) return false;
    const RECT place = {0, 0, PixelsX(source->cx), PixelsY(source->cy)};
    if (!CWnd::Create(nullptr, source->caption, 0, place, nullptr, 0)) return false;
    m_template = source;
    m_defaultId = 0;
    m_result = -1;
    m_hasEnded = false;
    const HWND first = MakeControls();
    const bool focusIsOpen = SendMessage(WM_INITDIALOG, static_cast<WPARAM>(framework::ToParam(first)), 0) != 0;
    if (focusIsOpen && first != nullptr && IsWindow(first)) first->SetFocus();
    if (m_hWnd != nullptr && !m_hasEnded && (source->style & WS_VISIBLE) != 0) m_hWnd->SetShown(true);
    return m_hWnd != nullptr;
}

/// @return the first control that can have the focus, null for none.
HWND CDialog::MakeControls() {
    HWND first = nullptr;
    for (const framework::ControlTemplate& control : m_template->controls) {
        const HWND made = HWND__::Make(m_hWnd, framework::MakeControl(control));
        made->rect = {PixelsX(control.x), PixelsY(control.y), PixelsX(control.x + control.cx),
                      PixelsY(control.y + control.cy)};
        if (control.kind == framework::ControlKind::default_button) m_defaultId = static_cast<UINT>(control.id);
        if (first == nullptr && (control.flags & framework::ctl::tab_stop) != 0 && made->shown && made->enabled)
            first = made;
    }
    return first;
}

INT_PTR CDialog::DoModal() {
    if (!MakeWindow()) return -1;
    const WindowGuard guard(*this);
    if (!m_hasEnded) {
        ShowWindow(SW_SHOW);
        seam::GetDesktop().RunModal(*this);
    }
    return m_result;
}

void CDialog::EndDialog(int result) {
    m_result = result;
    m_hasEnded = true;
    if (m_hWnd == nullptr) return;
    m_hWnd->SetShown(false);
    m_hWnd->Changed(framework::WindowChange::ended);
}

CWnd* CDialog::GetControl(std::size_t index) const {
    if (m_hWnd == nullptr || index >= m_hWnd->children.size()) return nullptr;
    return FromHandle(m_hWnd->children[index].get());
}

LRESULT CDialog::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            return OnInitDialog();
        case WM_CLOSE:
            return SendMessage(WM_COMMAND, IDCANCEL, 0);
        case WM_NEXTDLGCTL:
            if (CWnd* const control = lParam != 0 ? FromHandle(framework::FromParam<HWND__>(wParam)) : nullptr)
                control->SetFocus();
            return 0;
        case DM_SETDEFID:
            m_defaultId = static_cast<UINT>(wParam);
            if (m_hWnd != nullptr) m_hWnd->Changed(framework::WindowChange::default_button);
            return TRUE;
        case DM_GETDEFID:
            return m_defaultId != 0 ? static_cast<LRESULT>(MAKEWPARAM(m_defaultId, DC_HASDEFID)) : 0;
        default:
            return CWnd::DefWindowProc(message, wParam, lParam);
    }
}

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}
