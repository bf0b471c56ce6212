#pragma once

#include <cstdint>

#include "module/contract/name_maps.h"
#include "module/contract/records/video_standard.h"
#include "module/contract/records/zeltrans_api.h"
#include "platform/framework/cdialog.h"
#include "platform/framework/cstring.h"
#include "platform/framework/message_map.h"

class CZelFont;

namespace zel {

/// Result of the last import, the values of CZelTransDlg::m_iStatus.
struct ImportStatus {
    enum Value : std::int32_t {
        /// Also when the user cancelled the choice for an RGBA file.
        kFinished = 0,
        kBadFontDirectory = 1,
        kBadMessageDirectory = 2,
        kMessageNotFound = 3,
        /// The message file is damaged, or neither a message nor an RGBA file.
        kLoadFailed = 4,
        kFontPromptCancelled = 5,
    };
};

}  // namespace zel

/// The import dialog, and the owner of what an import needs: paths, options, font name maps and font set. It also runs
/// an import without showing the dialog. The host receives pointers to it; its members and their order are part of the
/// contract. The whole class is exported, with its type information, so that a host can derive from it.
class ZELTRANS_API CZelTransDlg : public CDialog {
  public:
    /// For DoModal. Takes over the stored Skip Warnings setting.
    /// @param parent  not used.
    explicit CZelTransDlg(CWnd* parent = nullptr);
    /// Creates the hidden window and fills its controls from a message path. Turns Skip Warnings on, which is stored.
    /// @param message_path  full path, in the module's form. One with fewer than two backslashes fills nothing.
    /// @param font_dir      empty for the directory "MACHINE" beside the message's directory.
    CZelTransDlg(CString& message_path, CString& font_dir);
    /// Does not destroy the font set: SavePath does, and so does each member of CZelTransExport.
    ~CZelTransDlg() override;
    CZelTransDlg(const CZelTransDlg&) = delete;
    CZelTransDlg& operator=(const CZelTransDlg&) = delete;

    /// Imports the message that the controls name. The result is in m_iStatus.
    /// @throws CFileException    if the record of a stored glyph is cut short.
    /// @throws CMemoryException  if memory runs out.
    void Read();

    /// Fills the font name maps from bitstream_fontlist.txt in the registered directory.
    /// @return false if the file can't be opened. Unless warnings are skipped, a message box reports it.
    bool MapBitStreamFont();
    /// The same from typeface_list.txt.
    bool MapTypeFace();

    /// Loads one font file into slot 0 of a font set and gives the set the default palette. On success font_header of
    /// slot 0 is not null.
    /// @param font  owned by the caller, who releases slot 0 and its font_copy.
    void MakeTavroFont(char* path, CZelFont* font);

    /// Reads and checks the boxes of both directories and of the id. On success sets m_sFontDir, m_sMessageDir and
    /// m_sMessageID. On failure sets m_iStatus and shows a message box; a missing message file is reported only if
    /// warnings are not skipped.
    void ReadDirectoryPaths();
    /// Looks for the file of an id, as it is and, for a number, in its forms with leading zeros. Sets m_bNumericName
    /// and m_sNumericName.
    /// @param name  an id with or without a leading dot, which is ignored.
    /// @param dir   in the module's form, without a final backslash.
    /// @return true if there is such a file and it can be opened.
    bool CheckFileExist(const char* name, const char* dir);
    /// Sets m_sMessageID to the id after `name`, 0000 after 9999. An id that is no number of up to four digits leaves
    /// it unchanged. The next dialog of the process starts with m_sMessageID.
    void IncrementFileName(const char* name);

    /// Stores the window's position and the recent lists, and destroys the font set.
    void SavePath();
    /// Reads one entry of a stored recent list.
    /// @param index  0 is the newest.
    /// @param list   one of stored::kRecentLists.
    /// @param out    a buffer of 260 bytes. Unchanged when the result is false.
    /// @return false if there is no such entry or its text is too long.
    bool RestoreRecentList(int index, char* list, char* out);
    /// Stores one entry. A registry that can't be written is ignored.
    void StoreRecentList(int index, char* list, char* text);
    /// True if the key of the list has a sub-key of this name.
    bool IsZelTransRegistrySubKeyExist(char* list, char* name);
    /// Deletes the sub-keys of a list that are named like its entries. The entries themselves are values and stay.
    void DeleteZelTransRegistrySubKey(char* list);

    /// Bitstream number to built name.
    zel::NumberedNames m_mapBitStreamId{10};
    /// Built name to installed typeface.
    zel::NamedNames m_mapTypeFace{10};
    /// First word of a built name to that name.
    zel::NamedNames m_mapBitStreamFamily{10};
    /// Receives the messages of an import; null for none.
    CWnd* m_pHostWnd = nullptr;
    /// The export window of a batch export.
    CWnd* m_pExportWnd = nullptr;
    /// Result of the last import, a value of zel::ImportStatus.
    std::int32_t m_iStatus = zel::ImportStatus::kFinished;
    /// Font set of the last import. The next import destroys it, and so does the end of the dialog.
    CZelFont* m_pFont = nullptr;
    /// Active lines of the host's video standard, 486 or 576; the host may set it.
    std::int32_t m_iLines = zel::ActiveLines(zel::VideoStandard::kNtsc);
    /// Name of the message file in m_sMessageDir; after an import the id of the next message.
    CString m_sMessageID;
    /// Non-zero: run-coded characters are passed in text form, by code and typeface. The host may set it.
    BOOL m_bTrueFont = 0;
    /// Non-zero: base_shift is 0 for characters in text form. The host may set it.
    BOOL m_bBaselineAlign = 1;
    /// This object's copy of the Skip Warnings setting.
    BOOL m_bImportSkip = 0;
    /// Directories of the last import, in the module's form.
    CString m_sMessageDir;
    CString m_sFontDir;
    /// The id that CheckFileExist last looked for is a number; its file is m_sNumericName.
    bool m_bNumericName = false;
    CString m_sNumericName;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    afx_msg void OnButtonRead();
    afx_msg void OnButtonBrowserFont();
    afx_msg void OnButtonBrowserMessage();
    afx_msg void OnCheckTrueFont();
    afx_msg void OnCheckBaselineAlign();
    afx_msg void OnCheckImportSkip();
    afx_msg void OnMessageNameChanged();
    afx_msg void OnButtonZeltransBatch();
    afx_msg void OnButtonZeltransCopyFiles();
    afx_msg void OnButtonZeltransFTP();

    /// Shows a text, with the system's text for its last error below.
    /// @return the last error.
    int ReportError(CString& text);

    /// The id that the next dialog of this process starts with.
    static CString M_sNextMessage;

    DECLARE_MESSAGE_MAP()
};
