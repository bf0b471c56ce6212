#include "host/reference_host.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <typeinfo>

#include "host/ftp_service.h"
#include "host/native_path.h"
#include "module/contract/host_messages.h"
#include "module/contract/registration.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/framework/cwinapp.h"
#include "platform/system/files.h"

namespace zel::host {

/// A window that hands each of the module's messages to the host and leaves the rest to the framework.
template <class Window>
class ReferenceHost::MessageWindow : public Window {
  public:
    MessageWindow(ReferenceHost& host, Target target, const char* name) : m_host(host), m_target(target) {
        this->CreateHostWindow(name);
    }

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case kMsgFonts:
            case kMsgRowsDone:
            case kMsgTabs:
            case kMsgMessageDone:
            case kMsgRgba:
            case kMsgDialogReady:
            case kMsgImportDone:
            case kMsgRecord:
            case kMsgNuvoOut:
            case kMsgHasMessage:
            case kMsgExportFlagged:
            case kMsgExportPlain:
            case kMsgExportFinish:
            case kMsgFtp:
            case WM_PAINT:
                return m_host.OnMessage(m_target, message, wParam, lParam);
            default:
                return Window::WindowProc(message, wParam, lParam);
        }
    }

  private:
    ReferenceHost& m_host;
    Target m_target;
};

ReferenceHost* ReferenceHost::s_current = nullptr;

namespace {

/// What Register_GLV_OnChar copies whole: the directory of the name lists with its closing separator, or nothing.
using MapDirBuffer = std::array<char, MAX_PATH>;

MapDirBuffer MapDirectory(const std::optional<std::string>& maps) {
    MapDirBuffer buffer{};
    if (!maps) return buffer;
    std::string directory = system::ModulePath(AbsolutePath(*maps));
    if (directory.empty() || directory.back() != '\\') directory += '\\';
    if (directory.size() >= buffer.size()) {
        throw HostError(*maps +
                        ": the directory of the name lists is longer than the 258 characters that can be registered");
    }
    std::copy(directory.begin(), directory.end(), buffer.begin());
    return buffer;
}

document::FontRecord RecordFont(const tag_font_memory& slot) {
    document::FontRecord record;
    record.header = *slot.font_header;
    record.file_name.assign(slot.file_name, strnlen(slot.file_name, sizeof slot.file_name));
    if (slot.log_font != nullptr) record.log_font = *slot.log_font;
    return record;
}

void RecordFonts(const CZelFont& fonts, document::MessageRecord& message) {
    for (std::size_t slot = 0; slot < message.fonts.size(); ++slot) {
        if (fonts.m_Slots[slot].font_header != nullptr) message.fonts[slot] = RecordFont(fonts.m_Slots[slot]);
    }
    std::copy(std::begin(fonts.m_Palette) + 1, std::end(fonts.m_Palette), message.palette.begin());
}

void RecordRows(const CZelMessage& source, document::MessageRecord& message) {
    message.header = *source.m_pMsgHeader;
    message.lines = source.m_pMsgFlags->Lines();
    message.rows.resize(static_cast<std::size_t>(message.header.RowCount()));
    for (std::size_t index = 0; index < message.rows.size(); ++index) {
        const tag_msg_row& row = source.m_pRows[index];
        message.rows[index] = {row.Y(), row.Top(), row.Bottom(), row.Empty(), {}};
    }
    for (const document::CharacterRecord& character : message.characters) {
        const auto row = static_cast<std::size_t>(character.info.row_index);
        if (character.info.slot >= 0 && row < message.rows.size()) {
            message.rows[row].text += static_cast<char>(character.character);
        }
    }
}

/// The message file of a dialog's import, in the module's form.
std::string FileOf(const CZelTransDlg& dialog) {
    return std::string(dialog.m_sMessageDir.GetString()) + "\\" + dialog.m_sMessageID.GetString();
}

const char* PathIn(LPARAM string) {
    return reinterpret_cast<const CString*>(string)->GetString();
}

}  // namespace

ReferenceHost::ReferenceHost(const HostOptions& options)
    : m_options(options), m_previous(s_current), m_previous_main(AfxGetThread()->m_pMainWnd) {
    MapDirBuffer map_dir = MapDirectory(options.maps);
    m_main_window = std::make_unique<MessageWindow<CWnd>>(*this, Target::kMain, "Tavro");
    m_host_window = std::make_unique<MessageWindow<CWnd>>(*this, Target::kHost, "Message");
    m_export_window = std::make_unique<MessageWindow<CZelExportWnd>>(*this, Target::kExport, "Export");
    m_export_window->m_bExportFlag = options.export_flag ? TRUE : FALSE;
    AfxGetThread()->m_pMainWnd = m_main_window.get();
    s_current = this;
    m_previous_callback = Register_GLV_OnChar(&ReferenceHost::OnCharCall, map_dir.data());
}

ReferenceHost::~ReferenceHost() {
    MapDirBuffer no_directory{};
    Register_GLV_OnChar(m_previous_callback, no_directory.data());
    s_current = m_previous;
    AfxGetThread()->m_pMainWnd = m_previous_main;
}

CWnd* ReferenceHost::HostWindow() const noexcept {
    return m_host_window.get();
}

CWnd* ReferenceHost::ExportWindow() const noexcept {
    return m_export_window.get();
}

void ReferenceHost::EndCall(HowCallEnded how) {
    if (how == HowCallEnded::kException) {
        m_order.OnException();
    } else {
        m_order.OnReturn();
    }
    m_glyphs.SetFonts(nullptr);
    m_fonts.Release();
    m_message.reset();
}

LRESULT ReferenceHost::OnMessage(Target target, UINT message, WPARAM wParam, LPARAM lParam) {
    m_order.OnMessage(target, message, wParam);
    const LRESULT answer = Answer(message, wParam, lParam);
    for (HostObserver* observer : m_observers) observer->OnSend({message, target, wParam, lParam, answer});
    if (message == WM_PAINT) FinishImport();
    return answer;
}

LRESULT ReferenceHost::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case kMsgDialogReady:
            SetUpDialog(*reinterpret_cast<CZelTransDlg*>(lParam));
            return 0;
        case kMsgFonts:
            BeginMessage(*reinterpret_cast<CZelFont*>(lParam));
            return 0;
        case kMsgRowsDone:
            RecordRows(*reinterpret_cast<const CZelMessage*>(lParam), Message());
            return 0;
        case kMsgTabs: {
            const auto* tabs = reinterpret_cast<const tag_tab_field*>(lParam);
            Message().tabs.assign(tabs, tabs + wParam);
            return 0;
        }
        case kMsgRgba:
            m_message.emplace();
            m_message->rgba = true;
            m_message->object = wParam != 0;
            m_message->file = FileOf(*reinterpret_cast<const CZelTransDlg*>(lParam));
            return 0;
        case kMsgImportDone: {
            const auto& dialog = *reinterpret_cast<const CZelTransDlg*>(lParam);
            Message().id = dialog.m_sMessageID.GetString();
            Message().file = FileOf(dialog);
            return 0;
        }
        case kMsgHasMessage:
            return m_options.exports != nullptr && m_options.exports->Has(static_cast<int>(wParam)) ? 1 : 0;
        case kMsgExportFlagged:
        case kMsgExportPlain:
            if (m_options.exports != nullptr) m_options.exports->Begin(static_cast<int>(wParam));
            return 0;
        case kMsgExportFinish:
            if (m_options.exports != nullptr) m_options.exports->Complete(static_cast<int>(wParam), PathIn(lParam));
            return 0;
        case kMsgNuvoOut:
            if (wParam == 1) {
                *reinterpret_cast<BYTE*>(lParam) = m_nuvo_state;
            } else {
                m_nuvo_state = static_cast<BYTE>(lParam & 0xFF);
            }
            return 0;
        case kMsgFtp:
            if (m_ftp != nullptr) m_ftp->Handle(*reinterpret_cast<CZelTransFTP*>(lParam));
            return 0;
        default:
            return 0;
    }
}

void ReferenceHost::SetUpDialog(CZelTransDlg& dialog) {
    m_dialog = &dialog;
    dialog.AddChangeListener(*this);
    dialog.m_iLines = m_options.lines;
    dialog.m_bTrueFont = m_options.tt_convert ? TRUE : FALSE;
    dialog.m_bBaselineAlign = m_options.baseline_align ? TRUE : FALSE;
    dialog.UpdateData(FALSE);
}

void ReferenceHost::BeginMessage(CZelFont& fonts) {
    m_fonts.Take(fonts);
    m_glyphs.SetFonts(&fonts);
    m_message.emplace();
    if (m_done) m_message->characters.reserve(m_done->characters.size());  // messages of a disk are alike
    RecordFonts(fonts, *m_message);
}

document::MessageRecord& ReferenceHost::Message() {
    return m_message ? *m_message : m_message.emplace();  // a message out of place may come before the one that begins
}

void ReferenceHost::OnCharCall(CWnd* /*window*/, tag_CharInf* info, unsigned int character) {
    if (s_current != nullptr && info != nullptr) s_current->OnCharacter(*info, character);
}

void ReferenceHost::OnCharacter(const tag_CharInf& info, unsigned character) {
    m_order.OnCharacter();
    const std::optional<int> slot = m_fonts.SlotOf(info.font_copy, info.slot);
    document::CharacterRecord& record = Message().characters.emplace_back();
    record.info = info;
    record.info.log_font = nullptr;
    record.info.font_copy = nullptr;
    if (info.log_font != nullptr) record.log_font = *info.log_font;
    record.character = character;
    record.font_slot = slot;
    for (HostObserver* observer : m_observers) observer->OnChar({info, character, slot, m_glyphs});
}

void ReferenceHost::FinishImport() {
    m_glyphs.SetFonts(nullptr);
    m_fonts.ReleaseWithSet();
    if (!m_message) return;
    m_message->glyph_failures = m_glyphs.TakeFailures();
    m_done = std::exchange(m_message, std::nullopt);
    for (HostObserver* observer : m_observers) observer->OnMessage(*m_done);
}

void ReferenceHost::WindowChanged(CWnd& window, framework::WindowChange change) {
    if (change != framework::WindowChange::destroyed || &window != m_dialog) return;
    // An exception can bring the window down from the destructor of a base class: the dialog's own members are gone
    // then.
    const std::type_info& type = typeid(window);
    if (type != typeid(CDialog) && type != typeid(CWnd)) m_status = m_dialog->m_iStatus;
    m_dialog = nullptr;
}

}  // namespace zel::host
