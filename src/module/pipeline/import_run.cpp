#include <cstring>
#include <new>

#include "module/contract/dialog_ids.h"
#include "module/contract/host_messages.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/state/module_state.h"
#include "module/tools/zel_rgba.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/exceptions.h"
#include "platform/framework/wait_cursor.h"

using namespace zel;

namespace {

/// Result of reading the fonts of a message.
enum class FontsOutcome { kRead, kCancelled };

/// Releases the fonts of an import that ends before the host has received them.
class PendingFonts {
  public:
    PendingFonts() = default;
    ~PendingFonts() {
        if (m_fonts == nullptr) return;
        for (tag_font_memory& font : m_fonts->m_Slots) {
            delete font.font_copy;
            font.font_copy = nullptr;
            m_fonts->ReleaseFontData(&font);
        }
    }
    PendingFonts(const PendingFonts&) = delete;
    PendingFonts& operator=(const PendingFonts&) = delete;

    void Hold(CZelFont& fonts) noexcept { m_fonts = &fonts; }
    void PassToHost() noexcept { m_fonts = nullptr; }

  private:
    CZelFont* m_fonts = nullptr;
};

/// One import of the message that a dialog's controls name, from the check of the paths to the last message to the
/// host.
class ImportRun {
  public:
    explicit ImportRun(CZelTransDlg& dialog) : m_dialog(dialog) {}
    void Run();

  private:
    ImportStatus::Value Import(const CString& font_dir);
    bool OfferRgba();
    FontsOutcome ReadFonts(CZelMessage& message, const CString& font_dir);
    void SendContents(CZelMessage& message);
    void Advance();
    void SendToHost(UINT message, WPARAM wParam, const void* object) {
        if (m_dialog.m_pHostWnd != nullptr)
            m_dialog.m_pHostWnd->SendMessage(message, wParam, reinterpret_cast<LPARAM>(object));
    }

    CZelTransDlg& m_dialog;
    PendingFonts m_pending_fonts;
};

void ImportRun::Run() {
    m_dialog.m_iStatus = ImportStatus::kFinished;
    const CWaitCursor wait;
    CString font_dir;
    m_dialog.GetDlgItemText(ImportControl::kFontDirBox, font_dir);
    m_dialog.ReadDirectoryPaths();
    if (m_dialog.m_iStatus != ImportStatus::kFinished) return;
    m_dialog.m_iStatus = Import(font_dir);
    if (m_dialog.m_iStatus != ImportStatus::kFinished) return;
    m_dialog.SendMessage(DM_SETDEFID, ImportControl::kReadButton);
    SendToHost(WM_PAINT, 0, nullptr);
}

// The message is destroyed here, with everything in it that the host has received.
ImportStatus::Value ImportRun::Import(const CString& font_dir) {
    CZelMessage message(m_dialog.m_sFontDir, m_dialog.m_sMessageDir, m_dialog.m_sMessageID, &m_dialog);
    if (message.ReadMessage(&m_dialog)) {
        if (ReadFonts(message, font_dir) == FontsOutcome::kCancelled) return ImportStatus::kFontPromptCancelled;
        SendContents(message);
        Advance();
        return ImportStatus::kFinished;
    }
    if (message.m_pFileHeader == nullptr || !IsRgbaFileType(message.m_pFileHeader->file_type))
        return ImportStatus::kLoadFailed;
    if (OfferRgba()) Advance();
    return ImportStatus::kFinished;
}

// The file is a picture, which the host reads itself and inserts as object or background.
bool ImportRun::OfferRgba() {
    tools::CZelRGBA choice(nullptr);
    if (choice.DoModal() != IDOK) return false;
    SendToHost(kMsgRgba, choice.m_bInsertObject != 0 ? 1 : 0, &m_dialog);
    return true;
}

FontsOutcome ImportRun::ReadFonts(CZelMessage& message, const CString& font_dir) {
    delete m_dialog.m_pFont;
    m_dialog.m_pFont = nullptr;
    m_dialog.m_pFont = new CZelFont();
    CZelFont& fonts = *m_dialog.m_pFont;
    m_pending_fonts.Hold(fonts);
    CZelFont::m_bIgnoreErrors = IgnoreZelFontErrors() ? 1 : 0;
    CancelZelFontBrowse();
    for (int slot = 0; slot < kFontSlots; ++slot) {
        const std::uint16_t number = message.GetSlotFontID(slot);
        if (number == kNoFont) continue;
        m_dialog.m_sFontDir = font_dir;  // for each slot, as ReadFont changes it
        const int result = fonts.ReadFont(m_dialog.m_sFontDir, number, slot, false);
        tag_font_memory& font = fonts.m_Slots[slot];
        if (result == 1) {
            message.MakeFontDescription(&font, font.log_font, slot);
            message.ApplySlotEffects(&font, font.effect_params);
            continue;
        }
        CZelFont::ReleaseUnfinishedSlot(&font);
        if (result == -1) return FontsOutcome::kCancelled;
    }
    return FontsOutcome::kRead;
}

void ImportRun::SendContents(CZelMessage& message) {
    CZelFont& fonts = *m_dialog.m_pFont;
    const bool has_tabs = message.m_pTabs != nullptr && message.m_nTabs > 0;
    if (has_tabs) message.MakeTemplates(&m_dialog);
    fonts.m_MessageBlock = message.m_pMsgHeader;
    static_assert(sizeof fonts.m_Palette == sizeof *message.m_pPalette);
    std::memcpy(fonts.m_Palette, message.m_pPalette, sizeof fonts.m_Palette);
    m_pending_fonts.PassToHost();
    SendToHost(kMsgFonts, 0, &fonts);
    message.EmitCharacters(m_dialog.m_pHostWnd, &fonts, m_dialog.m_bBaselineAlign != 0, m_dialog.m_bTrueFont != 0);
    SendToHost(kMsgRowsDone, 0, &message);
    if (has_tabs) SendToHost(kMsgTabs, static_cast<WPARAM>(message.m_nTabs), message.m_pTabs);
    SendToHost(kMsgMessageDone, 0, &message);
}

void ImportRun::Advance() {
    AfxGetThread()->m_pMainWnd->SendMessage(kMsgImportDone, 0, reinterpret_cast<LPARAM>(&m_dialog));
    const CString id = m_dialog.m_sMessageID;
    m_dialog.IncrementFileName(id);
    m_dialog.SetDlgItemText(ImportControl::kMessageIdEdit, m_dialog.m_sMessageID);
    if (CWnd* const edit = m_dialog.GetDlgItem(ImportControl::kMessageIdEdit)) edit->SendMessage(EM_SETSEL, 0, -1);
}

}  // namespace

void CZelTransDlg::Read() {
    OnButtonRead();
}

void CZelTransDlg::OnButtonRead() {
    try {
        ImportRun(*this).Run();
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}
