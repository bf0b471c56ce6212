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

/// A desktop without a screen, driven by a script: it answers what it is asked as it was told beforehand, and records
/// it. Nothing ever waits: a dialog that its handler leaves open is closed as by its title bar.
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
        int answer = 0;    // IDOK or IDCANCEL
        std::string path;  // in the module's form; empty when cancelled
    };
    struct Modal {
        UINT template_id = 0;
        INT_PTR result = 0;
        bool left_open = false;  // its handler, if any, had returned without ending it
    };

    HeadlessDesktop();
    ~HeadlessDesktop() override;

    /// Answers of boxes: the queue's next, else what the function gives (0 for no answer), else OK, the Yes/No/Cancel
    /// answer set here (IDNO at first; Cancel counts as No where there is no such button), Cancel of Retry/Cancel,
    /// Ignore.
    void QueueBoxAnswer(int answer) { m_boxAnswers.push_back(answer); }
    void AnswerBoxes(std::function<int(const Box&)> answer) { m_boxAnswer = std::move(answer); }
    void SetYesNoAnswer(int answer) { m_yesNoAnswer = answer; }

    /// Answers of file dialogs: the queue's next, else what the function gives, else Cancel. A path may have either
    /// form; nothing cancels the dialog.
    void QueueFile(std::optional<std::string> path) { m_files.push_back(std::move(path)); }
    void AnswerFileDialogs(std::function<std::optional<std::string>(const FileDialog&)> answer) {
        m_fileAnswer = std::move(answer);
    }

    /// Sets who drives the dialogs made from a template; commonly with a DialogDriver. Without a handler they are
    /// closed at once.
    void HandleDialog(UINT templateId, std::function<void(CDialog&)> handler);

    void SetKeyDown(int virtualKey, bool down);
    /// Takes over the question whether a key is down; null gives it back.
    void AnswerKeys(std::function<bool(int virtualKey)> answer) { m_keyAnswer = std::move(answer); }

    /// Called for each box and file dialog once its answer is known, before the asker gets it.
    void ObserveBoxes(std::function<void(const Box&)> observer) { m_boxObserver = std::move(observer); }
    void ObserveFileDialogs(std::function<void(const FileDialog&)> observer) { m_fileObserver = std::move(observer); }

    /// What was asked so far, in order.
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
