#include "host/reference_host.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <typeinfo>
#include <variant>

#include "base/field_text.h"
#include "host/document/row_text.h"
#include "host/ftp_service.h"
#include "host/native_path.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/registration.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/framework/cwinapp.h"
#include "platform/system/files.h"

namespace zel::host {

/// A window that passes the module's messages to the host, and others to the framework.
template <class Window>
class ReferenceHost::MessageWindow : public Window {
  public:
    MessageWindow(ReferenceHost& host, Target target, const char* name) : m_host(host), m_target(target) {
        this->CreateHostWindow(name);
    }

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (const auto event = DecodeHostEvent(message, wParam, lParam)) {
            return m_host.OnEvent(m_target, *event, wParam);
        }
        return Window::WindowProc(message, wParam, lParam);
    }

  private:
    ReferenceHost& m_host;
    Target m_target;
};

ReferenceHost* ReferenceHost::s_current = nullptr;

namespace {

/// Argument of Register_GLV_OnChar, which copies all of it: the directory of the name lists with a final separator, or
/// zeros.
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
    record.file_name = base::FieldText(slot.file_name);
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
    message.standard = source.m_pMsgFlags->Standard();
    message.rows.resize(static_cast<std::size_t>(message.header.RowCount()));
    for (std::size_t index = 0; index < message.rows.size(); ++index) {
        const tag_msg_row& row = source.m_pRows[index];
        message.rows[index] = {row.Y(), row.Top(), row.Bottom(), row.Empty(), {}};
    }
}

/// Whether a file is in a directory, both in the module's form. A directory can be written in several ways.
bool IsIn(const std::string& directory, const std::string& file) {
    const std::string own = SplitModulePath(file).directory;
    if (own == directory || own + '\\' == directory) return true;
    std::error_code missing;
    return std::filesystem::equivalent(system::NativePath(own.c_str()), system::NativePath(directory.c_str()), missing);
}

/// Marks the fonts that the module's search found outside the font directory. m_sFontDir may be changed by that search,
/// so the directory is the text of the dialog's box.
void MarkFontsElsewhere(const CZelTransDlg& dialog, document::MessageRecord& message) {
    CString directory;
    dialog.GetDlgItemText(ImportControl::kFontDirBox, directory);
    for (std::optional<document::FontRecord>& font : message.fonts) {
        if (font) font->elsewhere = !IsIn(directory.GetString(), font->file_name);
    }
}

/// The message file of a dialog's import, in the module's form.
std::string FileOf(const CZelTransDlg& dialog) {
    return std::string(dialog.m_sMessageDir.GetString()) + "\\" + dialog.m_sMessageID.GetString();
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

void ReferenceHost::EndCall(CallEnd how) {
    if (how == CallEnd::kException) {
        m_order.OnException();
    } else {
        m_order.OnReturn();
    }
    m_glyphs.SetFonts(nullptr);
    m_fonts.Release();
    m_message.reset();
}

LRESULT ReferenceHost::OnEvent(Target target, const HostEvent& event, WPARAM wParam) {
    m_order.OnEvent(event, target);
    const LRESULT answer = std::visit([this](const auto& content) { return Answer(content); }, event);
    for (HostObserver* observer : m_observers) observer->OnSend({event, target, wParam, answer});
    if (std::holds_alternative<Paint>(event)) FinishImport();
    return answer;
}

LRESULT ReferenceHost::Answer(const DialogReady& event) {
    SetUpDialog(event.dialog);
    return 0;
}

LRESULT ReferenceHost::Answer(const FontsReady& event) {
    BeginMessage(event.fonts);
    return 0;
}

LRESULT ReferenceHost::Answer(const RowsDone& event) {
    RecordRows(event.message, Message());
    document::FillRowTexts(Message());
    return 0;
}

LRESULT ReferenceHost::Answer(const TabsReady& event) {
    Message().tabs.assign(event.tabs.begin(), event.tabs.end());
    return 0;
}

LRESULT ReferenceHost::Answer(const RgbaChosen& event) {
    m_message.emplace();
    m_message->rgba = true;
    m_message->standard = m_options.standard;
    m_message->object = event.as_object;
    m_message->file = FileOf(event.dialog);
    return 0;
}

LRESULT ReferenceHost::Answer(const ImportDone& event) {
    Message().id = event.dialog.m_sMessageID.GetString();
    Message().file = FileOf(event.dialog);
    MarkFontsElsewhere(event.dialog, Message());
    return 0;
}

LRESULT ReferenceHost::Answer(const HasMessage& event) {
    return m_options.exports != nullptr && m_options.exports->Has(event.number) ? 1 : 0;
}

LRESULT ReferenceHost::Answer(const ExportFlagged& event) {
    if (m_options.exports != nullptr) m_options.exports->Begin(event.number);
    return 0;
}

LRESULT ReferenceHost::Answer(const ExportPlain& event) {
    if (m_options.exports != nullptr) m_options.exports->Begin(event.number);
    return 0;
}

LRESULT ReferenceHost::Answer(const ExportFinish& event) {
    if (m_options.exports != nullptr) m_options.exports->Complete(event.number, event.path.GetString());
    return 0;
}

LRESULT ReferenceHost::Answer(const NuvoFetch& event) {
    event.state = m_nuvo_state;
    return 0;
}

LRESULT ReferenceHost::Answer(const NuvoSet& event) {
    m_nuvo_state = static_cast<BYTE>(event.state & 0xFF);
    return 0;
}

LRESULT ReferenceHost::Answer(const FtpRequest& event) {
    if (m_ftp != nullptr) m_ftp->Handle(event.dialog);
    return 0;
}

void ReferenceHost::SetUpDialog(CZelTransDlg& dialog) {
    m_dialog = &dialog;
    dialog.AddChangeListener(*this);
    dialog.m_iLines = ActiveLines(m_options.standard);
    dialog.m_bTrueFont = m_options.tt_convert ? TRUE : FALSE;
    dialog.m_bBaselineAlign = m_options.baseline_align ? TRUE : FALSE;
    dialog.UpdateData(FALSE);
}

void ReferenceHost::BeginMessage(CZelFont& fonts) {
    m_fonts.Take(fonts);
    m_glyphs.SetFonts(&fonts);
    m_message.emplace();
    if (m_done) m_message->characters.reserve(m_done->characters.size());  // messages of a disk are similar
    RecordFonts(fonts, *m_message);
}

document::MessageRecord& ReferenceHost::Message() {
    return m_message ? *m_message : m_message.emplace();  // out of order, before FontsReady
}

void ReferenceHost::OnCharCall(CWnd* /*window*/, tag_CharInf* info, unsigned int character) {
    if (s_current != nullptr && info != nullptr) s_current->OnCharacter(*info, character);
}

void ReferenceHost::OnCharacter(const tag_CharInf& info, unsigned character) {
    m_order.OnCharacter();
    const std::optional<int> slot = m_fonts.SlotOf(info.font_copy, info.slot);
    if (info.slot >= 0) RecordCharacter(info, character, slot);
    for (HostObserver* observer : m_observers) observer->OnChar({info, character, slot, m_glyphs});
}

void ReferenceHost::RecordCharacter(const tag_CharInf& info, unsigned character, std::optional<int> font_slot) {
    document::CharacterRecord& record = Message().characters.emplace_back();
    record.info = info;
    record.info.log_font = nullptr;
    record.info.font_copy = nullptr;
    if (info.log_font != nullptr) record.log_font = *info.log_font;
    record.character = character;
    record.font_slot = font_slot;
}

void ReferenceHost::FinishImport() {
    m_glyphs.SetFonts(nullptr);
    m_fonts.ReleaseAndClearSet();
    if (!m_message) return;
    m_message->glyph_failures = m_glyphs.TakeFailures();
    m_done = std::exchange(m_message, std::nullopt);
    for (HostObserver* observer : m_observers) observer->OnMessage(*m_done);
}

void ReferenceHost::WindowChanged(CWnd& window, framework::WindowChange change) {
    if (change != framework::WindowChange::destroyed || &window != m_dialog) return;
    // An exception can destroy the window from the destructor of a base class, after the dialog's own members.
    const std::type_info& type = typeid(window);
    if (type != typeid(CDialog) && type != typeid(CWnd)) m_status = m_dialog->m_iStatus;
    m_dialog = nullptr;
}

}  // namespace zel::host
