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

/// One loaded message. The host receives pointers to it; its members and their order are part of the contract. The
/// blocks belong to the message and are freed with it.
class CZelMessage {
  public:
    /// Copies the texts and reads no file. A text may be null in a message that loads no file.
    /// @param owner  the dialog whose font name maps the descriptions use. Null for a message that only describes a
    ///               single font.
    CZelMessage(const char* font_dir, const char* message_dir, const char* message_id, CZelTransDlg* owner);
    ~CZelMessage();
    CZelMessage(const CZelMessage&) = delete;
    CZelMessage& operator=(const CZelMessage&) = delete;

    /// Loads the message file. Sets dlg's m_bImportSkip to the Skip Warnings setting. Unless it is on, message boxes
    /// report a failure, and contents of the file that the module does not import.
    /// @return false on failure. The blocks that were read before it remain; m_pFileHeader is one of them if the header
    ///         is complete.
    /// @throws CMemoryException  if memory runs out.
    bool ReadMessage(CZelTransDlg* dlg);

    /// Number of the slot's font, zel::kNoFont for none. The message must be loaded.
    /// @param slot  0 to 15.
    std::uint16_t GetSlotFontID(int slot) const { return m_pMsgHeader->font_numbers[slot]; }

    /// Writes the default colour sets into the block that m_pPalette points to.
    void DefaultPalette();

    /// Writes a blank character at the start of each tab field without text, in the font and colour of the field. To be
    /// called after the fonts are read. Unless warnings are skipped, shows one message box if a blank was written for a
    /// field without a font of its own.
    /// @param dlg  its m_pFont is the font set of the message.
    void MakeTemplates(CZelTransDlg* dlg);

    /// Fills `lf` with the description of the slot's font: face, weight, italic, height.
    /// @param lf  null does nothing.
    void MakeFontDescription(tag_font_memory* slot, LOGFONT* lf, int slot_index);

    /// Fills `effect` with the edge of the slot's font and the default colours of the palette.
    /// @param effect  null does nothing.
    void ApplySlotEffects(tag_font_memory* slot, EFFPAR* effect);

    /// Calls the registered callback for each character: row by row, in the order of each row's chain.
    /// @param host            passed to the callback, not used otherwise.
    /// @param baseline_align  CZelTransDlg::m_bBaselineAlign.
    /// @param tt_convert      CZelTransDlg::m_bTrueFont.
    /// @throws CFileException  if the record of a stored glyph is cut short.
    void EmitCharacters(CWnd* host, CZelFont* fonts, bool baseline_align, bool tt_convert);

    /// Directories of the fonts and of the message file, in the module's form.
    CString m_sFontDir;
    CString m_sMessageDir;
    /// Name of the file in m_sMessageDir.
    CString m_sMessageID;
    CZelTransDlg* m_pOwner;
    /// The blocks of the file, each null until it is read.
    tag_psos_header* m_pFileHeader = nullptr;
    tag_palete* m_pPalette = nullptr;
    tag_msg_header* m_pMsgHeader = nullptr;
    /// m_pMsgHeader->RowCount() rows.
    tag_msg_row* m_pRows = nullptr;
    tag_msg_flags* m_pMsgFlags = nullptr;
    /// Number of tab fields; has a meaning only while m_pTabs is not null.
    std::int32_t m_nTabs = 0;
    tag_tab_field* m_pTabs = nullptr;
};
