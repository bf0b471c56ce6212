#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/script/dialog_driver.h"
#include "platform/seam/desktop.h"

namespace zel::script {

/// A desktop without a screen, driven by a script: it answers boxes and dialogs as arranged before, and records them.
/// Nothing ever waits: a dialog that its handler leaves open is closed as by its title bar.
class ZEL_PLATFORM_API HeadlessDesktop : public seam::Desktop {
  public:
    struct Box {
        HWND owner = nullptr;
        std::string text;
        std::string caption;
        UINT style = 0;
        int answer = 0;
    };
    struct FileDialog {
        std::string title;
        std::string initial_dir;
        std::string initial_name;
        std::string filter;
        /// IDOK or IDCANCEL.
        int answer = 0;
        /// In the module's form; empty after IDCANCEL.
        std::string path;
    };
    struct Modal {
        UINT template_id = 0;
        INT_PTR result = 0;
        /// Its handler returned without ending it, or it has no handler.
        bool left_open = false;
    };

    HeadlessDesktop();
    ~HeadlessDesktop() override;

    /// Answer of a box: the next in the queue; else the result of the function, unless it is 0; else by the buttons:
    /// the answer set by SetYesNoAnswer (at first IDNO; IDCANCEL counts as IDNO in a box without that button), Cancel
    /// of Retry and Cancel, Ignore, OK.
    void QueueBoxAnswer(int answer) { m_boxAnswers.push_back(answer); }
    void AnswerBoxes(std::function<int(const Box&)> answer) { m_boxAnswer = std::move(answer); }
    void SetYesNoAnswer(int answer) { m_yesNoAnswer = answer; }

    /// Answer of a file dialog: the next in the queue, else the result of the function, else IDCANCEL. A path may be in
    /// the module's form or in this system's; std::nullopt is IDCANCEL.
    void QueueFile(std::optional<std::string> path) { m_files.push_back(std::move(path)); }
    void AnswerFileDialogs(std::function<std::optional<std::string>(const FileDialog&)> answer) {
        m_fileAnswer = std::move(answer);
    }

    /// Sets the function that operates the dialogs of a template, usually by a DialogDriver. Dialogs without one are
    /// closed at once.
    void HandleDialog(UINT templateId, std::function<void(CDialog&)> handler);

    void SetKeyDown(int virtualKey, bool down);
    /// Sets the function that decides whether a key is down; null for the keys of SetKeyDown.
    void AnswerKeys(std::function<bool(int virtualKey)> answer) { m_keyAnswer = std::move(answer); }

    /// Sets the functions that are called for each box and file dialog after its answer is chosen and before it is
    /// returned.
    void ObserveBoxes(std::function<void(const Box&)> observer) { m_boxObserver = std::move(observer); }
    void ObserveFileDialogs(std::function<void(const FileDialog&)> observer) { m_fileObserver = std::move(observer); }

    /// All boxes, file dialogs, dialogs and commands so far, each in order.
    const std::vector<Box>& Boxes() const noexcept { return m_boxes; }
    const std::vector<FileDialog>& FileDialogs() const noexcept { return m_fileDialogs; }
    const std::vector<Modal>& Modals() const noexcept { return m_modals; }
    const std::vector<std::string>& Commands() const noexcept { return m_commands; }
    bool HasWaitCursor() const noexcept { return m_waitCursor; }

    int ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) override;
    void RunModal(CDialog& dialog) override;
    int RunFileDialog(CFileDialog& dialog, std::string& path) override;
    bool IsKeyDown(int virtualKey) override;
    void SetWaitCursor(bool on) override;
    bool RunCommand(const std::string& commandLine) override;

  private:
    int DecideBox(const Box& box);

    std::deque<int> m_boxAnswers;
    std::function<int(const Box&)> m_boxAnswer;
    int m_yesNoAnswer = IDNO;
    std::deque<std::optional<std::string>> m_files;
    std::function<std::optional<std::string>(const FileDialog&)> m_fileAnswer;
    std::map<UINT, std::function<void(CDialog&)>> m_handlers;
    std::set<int> m_keysDown;
    std::function<bool(int)> m_keyAnswer;
    std::function<void(const Box&)> m_boxObserver;
    std::function<void(const FileDialog&)> m_fileObserver;
    std::vector<Box> m_boxes;
    std::vector<FileDialog> m_fileDialogs;
    std::vector<Modal> m_modals;
    std::vector<std::string> m_commands;
    bool m_waitCursor = false;
};

}  // namespace zel::script
