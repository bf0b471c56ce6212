#include "module/contract/zel_message.h"

#include <cstdlib>
#include <new>

#include "module/contract/records/video_standard.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/message/cfile_bytes.h"
#include "module/message/format/byte_source.h"
#include "module/message/format/default_palette.h"
#include "module/message/format/message_loader.h"
#include "module/state/module_state.h"
#include "platform/framework/cfile.h"
#include "platform/framework/exceptions.h"
#include "platform/framework/message_box.h"

using namespace zel;

CZelMessage::CZelMessage(const char* font_dir, const char* message_dir, const char* message_id, CZelTransDlg* owner)
    : m_sFontDir(font_dir), m_sMessageDir(message_dir), m_sMessageID(message_id), m_pOwner(owner) {}

CZelMessage::~CZelMessage() {
    delete m_pFileHeader;
    delete m_pMsgFlags;
    delete m_pMsgHeader;
    message::FreeRows()(m_pRows);
    delete m_pPalette;
    delete[] m_pTabs;
}

void CZelMessage::DefaultPalette() {
    message::FillDefaultPalette(*m_pPalette);
}

namespace {

// The text of each outcome's message box, in the order of MessageOutcome; null for an outcome without a box.
constexpr const char* kOutcomeTexts[] = {
    nullptr,
    "Invalid file: %s",
    "Invalid file: %s",
    nullptr,
    "Zelmara! file type %d not supported: %s",
    "Zelmara! '%s' not supported: %s",
    "Couldn't Read Zelmara! File's Font Header: %s",
    "Couldn't Read Zelmara! Background: %s",
    "Invalid file: %s",
    "Couldn't Read Zelmara! Tab Table: %s",
    "Zelmara! Tab Versions prior to 2 not supported: %s",
    "Zelmara! Maximum Tabs Exceeded: %s",
};
static_assert(std::size(kOutcomeTexts) == static_cast<std::size_t>(message::MessageOutcome::kTooManyTabs) + 1);

void Warn(const char* text, const char* title) {
    MessageBoxA(nullptr, text, title, MB_OK | MB_ICONEXCLAMATION);
}

void WarnOfFile(const char* format, const char* path, const char* title) {
    CString text;
    text.Format(format, path);
    Warn(text, title);
}

void WarnOfStandard(const tag_msg_flags& flags, int host_lines) {
    if (flags.Lines() == host_lines) return;
    // The text depends on the host's standard only.
    Warn(VideoStandardOf(host_lines) == VideoStandard::kNtsc
             ? "The Zelmara! message being imported is a PAL message,  \n    this may result in an "
               "offset shift of the message"
             : "The Zelmara! message being imported is an NTSC message,  \n    this may result in an "
               "offset shift of the message",
         "Warning - Video Standard Mismatch Detected");
}

void WarnOfOutcome(message::MessageOutcome outcome, const message::LoadedMessage& message, const char* path) {
    const char* const format = kOutcomeTexts[static_cast<int>(outcome)];
    if (format == nullptr) return;
    CString text;
    if (outcome == message::MessageOutcome::kUnsupportedType) {
        text.Format(format, static_cast<int>(message.file_header->file_type), path);
    } else if (outcome == message::MessageOutcome::kUnsupportedNamedType) {
        const std::string_view name = message.file_header->TypeName();
        text.Format(format, static_cast<const char*>(CString(name.data(), static_cast<int>(name.size()))), path);
    } else {
        text.Format(format, path);
    }
    Warn(text, "Couldn't Read the Zelmara! File");
}

// Shows the message boxes of a load, in the order of the file's sections.
void WarnOfMessage(message::MessageOutcome outcome, const message::LoadedMessage& message, int host_lines,
                   const char* path) {
    const bool is_message = message.file_header && message.file_header->file_type == kMessageFileType;
    if (is_message && outcome != message::MessageOutcome::kShortFlags) WarnOfStandard(*message.flags, host_lines);
    if (message.flash_font) Warn("Flash Font Characters will be ignored", "Flash Font Unsupported");
    WarnOfOutcome(outcome, message, path);
    if (message.bad_tab_row || message.bad_tab_field) {
        WarnOfFile(message.bad_tab_row ? "Invalid Tab row count in %s" : "Invalid Tab field : %s", path,
                   "Zelmara! Import Error");
    }
}

template <typename T>
void Replace(T*& block, std::unique_ptr<T>& loaded) {
    if (!loaded) return;
    delete block;
    block = loaded.release();
}

}  // namespace

bool CZelMessage::ReadMessage(CZelTransDlg* dlg) {
    dlg->m_bImportSkip = IgnoreZelFontErrors() ? 1 : 0;
    CString path;
    path.Format("%s\\%s", static_cast<const char*>(m_sMessageDir), static_cast<const char*>(m_sMessageID));
    message::LoadedMessage message;
    message::MessageOutcome outcome{};
    try {
        CFile file;
        if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone)) return false;
        message::CFileBytes file_bytes(file);
        message::ByteSource source(file_bytes);
        outcome = message::LoadMessage(source, message);
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
    if (dlg->m_bImportSkip == 0) WarnOfMessage(outcome, message, dlg->m_iLines, path);

    if (message.y_offset) CZelFont::m_iZelYOffset = *message.y_offset;
    Replace(m_pFileHeader, message.file_header);
    Replace(m_pMsgFlags, message.flags);
    Replace(m_pMsgHeader, message.header);
    Replace(m_pPalette, message.palette);
    if (message.rows) {
        message::FreeRows()(m_pRows);
        m_pRows = message.rows.release();
    }
    delete[] m_pTabs;
    m_pTabs = message.tabs.release();
    m_nTabs = message.tab_count;
    return outcome == message::MessageOutcome::kRead;
}
