#pragma once

#include <cstdint>

#include "module/contract/records/msg_header.h"
#include "module/contract/records/msg_row.h"
#include "module/contract/records/palette.h"
#include "module/contract/records/psos_header.h"
#include "module/contract/records/tab_field.h"
#include "platform/framework/cstring.h"
#include "platform/system/types.h"

class CWnd;
class CZelFont;
class CZelTransDlg;
struct EFFPAR;
struct tag_font_memory;

/// One loaded message. The host receives a pointer to it, so its members and their order are part of the contract; the
/// blocks belong to the message and end with it.
class CZelMessage {
  public:
    /// Copies the texts, each of which may be null in a message that loads no file, and touches no file.
    /// @param owner  the dialog whose font name maps serve the font descriptions; null for a message that lends its
    ///               members to a single font.
    CZelMessage(const char* font_dir, const char* message_dir, const char* message_id, CZelTransDlg* owner);
    ~CZelMessage();
    CZelMessage(const CZelMessage&) = delete;
    CZelMessage& operator=(const CZelMessage&) = delete;

    /// Loads the file of that name in the message directory, whole. Sets dlg's m_bImportSkip to the Skip Warnings
    /// setting and, unless it is on, tells the user what failed and what the file holds that the module doesn't carry
    /// over.
    /// @return false on every failure; the blocks read so far stay, m_pFileHeader among them if the header came whole.
    /// @throws CMemoryException
    bool ReadMessage(CZelTransDlg* dlg);

    /// Number of the slot's font, kNoFont for none.
    /// @param slot  0 to 15; the message must be loaded.
    std::uint16_t GetSlotFontID(int slot) const { return m_pMsgHeader->font_numbers[slot]; }

    /// Writes the default colour sets into the block that m_pPalette points to.
    void DefaultPalette();

    /// Writes a blank character at the start of each tab field that holds no text, in the field's font and colour. To
    /// be called after the fonts are read; needs dlg's m_pFont. Changes rows for good. One box at most, when a template
    /// was made and a field had no font of its own, unless warnings are skipped.
    void MakeTemplates(CZelTransDlg* dlg);

    /// Fills `lf` with the description of the slot's font: face, weight, italic, height.
    /// @param lf  may be null: then nothing happens.
    void MakeFontDescription(tag_font_memory* slot, LOGFONT* lf, int slot_index);

    /// Fills `effect` with the edge of the slot's font and the default colours of the palette.
    /// @param effect  may be null: then nothing happens.
    void ApplySlotEffects(tag_font_memory* slot, EFFPAR* effect);

    /// Hands the message's characters to the registered callback, row by row along each row's chain.
    /// @param host  passed on to the callback, nothing else.
    /// @throws CFileException  when the record of a stored bitmap glyph is cut short.
    void EmitCharacters(CWnd* host, CZelFont* fonts, bool baseline_align, bool tt_convert);

    CString m_sFontDir;
    CString m_sMessageDir;
    CString m_sMessageID;  ///< name of the file in m_sMessageDir.
    CZelTransDlg* m_pOwner;
    tag_psos_header* m_pFileHeader = nullptr;
    tag_palete* m_pPalette = nullptr;
    tag_msg_header* m_pMsgHeader = nullptr;
    tag_msg_row* m_pRows = nullptr;  ///< m_pMsgHeader->RowCount() rows.
    tag_msg_flags* m_pMsgFlags = nullptr;
    std::int32_t m_nTabs = 0;  ///< counts only while m_pTabs isn't null.
    tag_tab_field* m_pTabs = nullptr;
};
