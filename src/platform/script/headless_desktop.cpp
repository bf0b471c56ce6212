#include "platform/script/headless_desktop.h"

#include <utility>

#include "platform/framework/cfiledialog.h"
#include "platform/system/files.h"
#include "platform/system/text.h"

namespace zel::script {

namespace {

seam::Desktop* MakeDefaultDesktop() {
    return new HeadlessDesktop;
}
[[maybe_unused]] const bool g_desktop_is_set = seam::SetDefaultDesktop(&MakeDefaultDesktop);

/// Takes the next item of a queue; empty if there is none.
template <class T>
std::optional<T> TakeNext(std::deque<T>& queue) {
    if (queue.empty()) return std::nullopt;
    std::optional<T> next(std::move(queue.front()));
    queue.pop_front();
    return next;
}

}  // namespace

HeadlessDesktop::HeadlessDesktop() = default;
HeadlessDesktop::~HeadlessDesktop() = default;

void HeadlessDesktop::HandleDialog(UINT templateId, std::function<void(CDialog&)> handler) {
    m_handlers[templateId] = std::move(handler);
}

void HeadlessDesktop::SetKeyDown(int virtualKey, bool down) {
    if (down) {
        m_keysDown.insert(virtualKey);
    } else {
        m_keysDown.erase(virtualKey);
    }
}

int HeadlessDesktop::DecideBox(const Box& box) {
    if (const auto queued = TakeNext(m_boxAnswers)) return *queued;
    if (const int answer = m_boxAnswer ? m_boxAnswer(box) : 0) return answer;
    switch (box.style & MB_TYPEMASK) {
        case MB_YESNO:
            return m_yesNoAnswer == IDYES ? IDYES : IDNO;
        case MB_YESNOCANCEL:
            return m_yesNoAnswer;
        case MB_RETRYCANCEL:
            return IDCANCEL;
        case MB_ABORTRETRYIGNORE:
            return IDIGNORE;
        default:
            return IDOK;
    }
}

int HeadlessDesktop::ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) {
    Box box{owner, text, caption, style, 0};
    box.answer = DecideBox(box);
    m_boxes.push_back(box);
    if (m_boxObserver) m_boxObserver(box);
    return box.answer;
}

void HeadlessDesktop::RunModal(CDialog& dialog) {
    const auto found = m_handlers.find(dialog.GetTemplateId());
    if (found != m_handlers.end() && found->second) {
        const auto handler = found->second;  // a copy: the handler may set another one
        handler(dialog);
    }
    const bool leftOpen = !dialog.HasEnded();
    if (leftOpen) dialog.SendMessage(WM_CLOSE);
    if (!dialog.HasEnded()) dialog.EndDialog(IDCANCEL);
    m_modals.push_back({dialog.GetTemplateId(), dialog.GetResult(), leftOpen});
}

int HeadlessDesktop::RunFileDialog(CFileDialog& dialog, std::string& path) {
    FileDialog shown{system::OrEmpty(dialog.m_ofn.lpstrTitle),
                     system::OrEmpty(dialog.m_ofn.lpstrInitialDir),
                     system::OrEmpty(dialog.m_ofn.lpstrFile),
                     system::OrEmpty(dialog.m_ofn.lpstrFilter),
                     IDCANCEL,
                     std::string()};
    std::optional<std::string> answer;
    if (auto queued = TakeNext(m_files)) {
        answer = std::move(*queued);
    } else if (m_fileAnswer) {
        answer = m_fileAnswer(shown);
    }
    if (answer && !answer->empty()) {
        path = *answer;
        shown.answer = IDOK;
        shown.path = system::ModulePath(path);
    }
    m_fileDialogs.push_back(shown);
    if (m_fileObserver) m_fileObserver(shown);
    return shown.answer;
}

bool HeadlessDesktop::IsKeyDown(int virtualKey) {
    return m_keyAnswer ? m_keyAnswer(virtualKey) : m_keysDown.contains(virtualKey);
}

void HeadlessDesktop::SetWaitCursor(bool on) {
    m_waitCursor = on;
}

bool HeadlessDesktop::RunCommand(const std::string& commandLine) {
    m_commands.push_back(commandLine);
    return true;
}

}  // namespace zel::script
