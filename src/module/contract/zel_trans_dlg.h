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

/// The object of an import: the dialog where the user names directories and a message id, and behind it the owner of
/// paths, options, font name maps and font set, also where no dialog is shown. The host receives pointers to it, so its
/// members and their order are part of the contract.
class CZelTransDlg : public CDialog {
  public:
    /// For DoModal. The parent isn't used.
    ZELTRANS_API explicit CZelTransDlg(CWnd* parent = nullptr);
    /// Creates the dialog window hidden, fills its controls from a message path and turns Skip Warnings on, stored too.
    /// @param font_dir  empty: the directory "MACHINE" beside the message's.
    ZELTRANS_API CZelTransDlg(CString& message_path, CString& font_dir);
    ZELTRANS_API ~CZelTransDlg() override;
    CZelTransDlg(const CZelTransDlg&) = delete;
    CZelTransDlg& operator=(const CZelTransDlg&) = delete;

    /// Imports the message that the controls name; the outcome is in m_iStatus.
    /// @throws CFileException, CMemoryException  from a glyph cut short and from memory running out.
    ZELTRANS_API void Read();

    /// Fill the font name maps from bitstream_fontlist.txt and typeface_list.txt in the registered directory.
    /// @return false when the file can't be opened; the user is told unless warnings are skipped.
    ZELTRANS_API bool MapBitStreamFont();
    ZELTRANS_API bool MapTypeFace();

    /// Loads one font file into slot 0 of the caller's font set and gives the set the default palette. Success shows in
    /// slot 0, whose font_header isn't null then.
    ZELTRANS_API void MakeTavroFont(char* path, CZelFont* font);

    /// Reads and checks the controls for directories and id. On success sets m_sFontDir, m_sMessageDir and
    /// m_sMessageID, else tells the user and sets m_iStatus.
    ZELTRANS_API void ReadDirectoryPaths();
    /// True when the directory has a file for the id. Sets m_bNumericName and m_sNumericName.
    ZELTRANS_API bool CheckFileExist(const char* name, const char* dir);
    /// Sets m_sMessageID to the id after `name`, and with it what the next dialog starts with.
    ZELTRANS_API void IncrementFileName(const char* name);

    /// Stores position and recent lists and destroys the font set.
    ZELTRANS_API void SavePath();
    /// One entry of a stored recent list.
    /// @param out  room for 260 bytes; a stored text that doesn't fit is left out.
    ZELTRANS_API bool RestoreRecentList(int index, char* list, char* out);
    ZELTRANS_API void StoreRecentList(int index, char* list, char* text);
    ZELTRANS_API bool IsZelTransRegistrySubKeyExist(char* list, char* name);
    ZELTRANS_API void DeleteZelTransRegistrySubKey(char* list);

    zel::NumberedNames m_mapBitStreamId;   ///< Bitstream number to built name.
    zel::NamedNames m_mapTypeFace;         ///< built name to installed typeface.
    zel::NamedNames m_mapBitStreamFamily;  ///< first word of a built name to that name.
    CWnd* m_pHostWnd = nullptr;
    CWnd* m_pExportWnd = nullptr;
    std::int32_t m_iStatus = zel::ImportStatus::kFinished;
    CZelFont* m_pFont = nullptr;  ///< font set of the last import; the next one, or the dialog's end, destroys it.
    /// Active lines of the host's video standard, 486 or 576; the host may set it.
    std::int32_t m_iLines = zel::ActiveLines(zel::VideoStandard::kNtsc);
    CString m_sMessageID;
    BOOL m_bTrueFont = 0;
    BOOL m_bBaselineAlign = 1;
    BOOL m_bImportSkip = 0;  ///< this object's copy of the Skip Warnings setting.
    CString m_sMessageDir;
    CString m_sFontDir;
    bool m_bNumericName = false;  ///< the last id checked is a number, found under the name m_sNumericName.
    CString m_sNumericName;

  protected:
    ZELTRANS_API void DoDataExchange(CDataExchange* exchange) override;
    ZELTRANS_API BOOL OnInitDialog() override;
    ZELTRANS_API void OnOK() override;
    ZELTRANS_API void OnCancel() override;
    ZELTRANS_API afx_msg void OnButtonRead();
    ZELTRANS_API afx_msg void OnButtonBrowserFont();
    ZELTRANS_API afx_msg void OnButtonBrowserMessage();
    ZELTRANS_API afx_msg void OnCheckTrueFont();
    ZELTRANS_API afx_msg void OnCheckBaselineAlign();
    ZELTRANS_API afx_msg void OnCheckImportSkip();
    ZELTRANS_API afx_msg void OnMessageNameChanged();
    ZELTRANS_API afx_msg void OnButtonZeltransBatch();
    ZELTRANS_API afx_msg void OnButtonZeltransCopyFiles();
    ZELTRANS_API afx_msg void OnButtonZeltransFTP();

    /// Shows a text with the system's words for its last error below, and gives that error.
    ZELTRANS_API int ReportError(CString& text);

    ZELTRANS_API static CString M_sNextMessage;  ///< id that the next dialog of this process starts with.

    DECLARE_MESSAGE_MAP_EXPORT(ZELTRANS_API)

  private:
    bool TakeDirectory(int combo_box, const char* invalid_text, const char* invalid_caption, CString& directory);
    void FillHiddenControls(const CString& message_path, const CString& font_dir);
};
