#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/document/message_record.h"
#include "host/export_service.h"
#include "host/font_keeper.h"
#include "host/glyph_bitmaps.h"
#include "host/host_event.h"
#include "host/host_observer.h"
#include "host/order_checker.h"
#include "module/contract/export_window.h"
#include "module/contract/records/char_inf.h"
#include "module/contract/records/video_standard.h"
#include "platform/framework/cwnd.h"

class CZelTransDlg;

namespace zel::host {

class FtpService;

enum class CallEnd { kReturned, kException };

/// The values that the host sets in the import dialog and registers.
struct HostOptions {
    /// The host's own.
    VideoStandard standard = VideoStandard::kNtsc;
    bool tt_convert = false;
    bool baseline_align = true;
    /// This system's path of the directory of the name lists; empty: no directory is registered.
    std::optional<std::string> maps{};
    /// Not owned; without it the host has no messages to export.
    ExportService* exports = nullptr;
    /// Flag of the export window: the first step of an export goes to the host's window.
    bool export_flag = false;
};

/// A host could not be created with its options.
class HostError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A host for the module. It has the windows and the callback that the module sends to, copies what is freed with an
/// import, and releases the font data. One at a time, on the user-interface thread. Its destructor restores the main
/// window and the callback that were registered before.
class ReferenceHost : private framework::WindowListener {
  public:
    /// @throws HostError when the directory of the name lists is longer than the 258 characters that can be registered.
    explicit ReferenceHost(const HostOptions& options);
    ~ReferenceHost() override;
    ReferenceHost(const ReferenceHost&) = delete;
    ReferenceHost& operator=(const ReferenceHost&) = delete;

    CWnd* HostWindow() const noexcept;
    CWnd* ExportWindow() const noexcept;

    /// Not owned; must outlive the host.
    void AddObserver(HostObserver* observer) { m_observers.push_back(observer); }

    /// Does the work of the FTP dialog; not owned. Null: the dialog has no effect.
    void SetFtpService(FtpService* service) noexcept { m_ftp = service; }

    /// Must be called after each call into the module, also after an exception. Releases fonts that are still held.
    void EndCall(CallEnd how);

    /// Moves out the last completed import; empty without one.
    std::optional<document::MessageRecord> TakeMessage() { return std::exchange(m_done, std::nullopt); }
    /// m_iStatus of the last dialog, read when its window was destroyed.
    std::optional<int> Status() const noexcept { return m_status; }
    /// One line for each violation of the contract's order.
    const std::vector<std::string>& Breaches() const noexcept { return m_order.Breaches(); }

  private:
    template <class Window>
    class MessageWindow;

    static void OnCharCall(CWnd* window, tag_CharInf* info, unsigned int character);

    LRESULT OnEvent(Target target, const HostEvent& event, WPARAM wParam);
    LRESULT Answer(const DialogReady& event);
    LRESULT Answer(const FontsReady& event);
    LRESULT Answer(const RowsDone& event);
    LRESULT Answer(const TabsReady& event);
    LRESULT Answer(const RgbaChosen& event);
    LRESULT Answer(const ImportDone& event);
    LRESULT Answer(const HasMessage& event);
    LRESULT Answer(const ExportFlagged& event);
    LRESULT Answer(const ExportPlain& event);
    LRESULT Answer(const ExportFinish& event);
    LRESULT Answer(const NuvoFetch& event);
    LRESULT Answer(const NuvoSet& event);
    LRESULT Answer(const FtpRequest& event);
    LRESULT Answer(const MessageDone& /*event*/) { return 0; }
    LRESULT Answer(const RecordMessage& /*event*/) { return 0; }
    LRESULT Answer(const Paint& /*event*/) { return 0; }
    void OnCharacter(const tag_CharInf& info, unsigned character);
    void RecordCharacter(const tag_CharInf& info, unsigned character, std::optional<int> font_slot);
    void SetUpDialog(CZelTransDlg& dialog);
    void BeginMessage(CZelFont& fonts);
    document::MessageRecord& Message();
    void FinishImport();
    void WindowChanged(CWnd& window, framework::WindowChange change) override;

    /// The host that the callback calls, which has no context of its own.
    static ReferenceHost* s_current;

    HostOptions m_options;
    std::unique_ptr<MessageWindow<CWnd>> m_main_window, m_host_window;
    std::unique_ptr<MessageWindow<CZelExportWnd>> m_export_window;
    std::vector<HostObserver*> m_observers;
    FtpService* m_ftp = nullptr;
    BYTE m_nuvo_state = 0;
    OrderChecker m_order;
    GlyphBitmaps m_glyphs;
    FontKeeper m_fonts;
    /// Of the import under way.
    std::optional<document::MessageRecord> m_message;
    /// Of the last completed import.
    std::optional<document::MessageRecord> m_done;
    /// While its window exists.
    CZelTransDlg* m_dialog = nullptr;
    std::optional<int> m_status;
    ReferenceHost* m_previous;
    CWnd* m_previous_main;
    OnCharCallback m_previous_callback;
};

}  // namespace zel::host
