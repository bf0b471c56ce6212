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

enum class HowCallEnded { kReturned, kException };

/// What the host sets in the dialog of an import, and what it registers.
struct HostOptions {
    VideoStandard standard = VideoStandard::kNtsc;  ///< the host's own.
    bool tt_convert = false;
    bool baseline_align = true;
    std::optional<std::string>
        maps;  ///< this system's path of the name lists' directory; without it no directory is registered.
    ExportService* exports = nullptr;  ///< not owned; without it the host has no message to export.
    bool export_flag = false;          ///< of the export window: an export begins at the host's window.
};

/// A host could not be made as it was asked for.
class HostError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A host for the module: it has the windows that the module's messages go to and the registered callback, takes copies
/// of what dies with an import, and gives the font data back. One at a time, on the user-interface thread; what was
/// registered before it (main window, callback) comes back when it ends.
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

    /// Who answers the dialog of the FTP copy; not owned, null for nobody.
    void SetFtpService(FtpService* service) noexcept { m_ftp = service; }

    /// To be called when a call into the module has returned, or has been left by an exception: gives back what fonts
    /// are still held.
    void EndCall(HowCallEnded how);

    /// The last import that came to its end; nothing when none did. It is given once.
    std::optional<document::MessageRecord> TakeMessage() { return std::exchange(m_done, std::nullopt); }
    /// m_iStatus of the last dialog, taken when its window went.
    std::optional<int> Status() const noexcept { return m_status; }
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
    void SetUpDialog(CZelTransDlg& dialog);
    void BeginMessage(CZelFont& fonts);
    document::MessageRecord& Message();
    void FinishImport();
    void WindowChanged(CWnd& window, framework::WindowChange change) override;

    static ReferenceHost* s_current;  ///< the callback carries no context of its own.

    HostOptions m_options;
    std::unique_ptr<MessageWindow<CWnd>> m_main_window, m_host_window;
    std::unique_ptr<MessageWindow<CZelExportWnd>> m_export_window;
    std::vector<HostObserver*> m_observers;
    FtpService* m_ftp = nullptr;
    BYTE m_nuvo_state = 0;
    OrderChecker m_order;
    GlyphBitmaps m_glyphs;
    FontKeeper m_fonts;
    std::optional<document::MessageRecord> m_message;  ///< of the import under way.
    std::optional<document::MessageRecord> m_done;
    CZelTransDlg* m_dialog = nullptr;  ///< while its window lives.
    std::optional<int> m_status;
    ReferenceHost* m_previous;
    CWnd* m_previous_main;
    OnCharCallback m_previous_callback;
};

}  // namespace zel::host
