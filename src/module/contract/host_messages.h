#pragma once

#include "platform/system/types.h"

namespace zel {

// Window messages from the module to the host; the numbers are the host's. "host" is the import's host window, "export"
// the window of a batch export, "main" the main window of the user-interface thread.
//
// One import: kMsgFonts, the callback for each character, kMsgRowsDone, kMsgTabs (only with tab fields),
// kMsgMessageDone, kMsgImportDone, WM_PAINT. An RGBA file: kMsgRgba, kMsgImportDone, WM_PAINT.

inline constexpr UINT kMsgFonts = 1157;  ///< host; lParam CZelFont*, which lives until the next import of the dialog.
inline constexpr UINT kMsgRowsDone = 1181;     ///< host; lParam CZelMessage*, after the last character.
inline constexpr UINT kMsgTabs = 1158;         ///< host; wParam count, lParam tag_tab_field*.
inline constexpr UINT kMsgMessageDone = 1180;  ///< host; lParam CZelMessage*, which dies when the import ends.
inline constexpr UINT kMsgRgba = 1211;         ///< host; wParam 1 object, 0 background; lParam CZelTransDlg*.
inline constexpr UINT kMsgDialogReady = 1212;  ///< main; lParam CZelTransDlg*, before its recent lists load.
inline constexpr UINT kMsgImportDone = 1213;   ///< main; lParam CZelTransDlg*, its id not yet advanced.
inline constexpr UINT kMsgRecord = 1160;       ///< host; lParam id of the message that a batch has just imported.
inline constexpr UINT kMsgNuvoOut =
    1161;  ///< host; wParam 1: lParam BYTE* to fetch into; wParam 2: lParam the state to set.
inline constexpr UINT kMsgHasMessage = 1125;  ///< main; wParam id; the result is 0 when the host has no such message.
inline constexpr UINT kMsgExportFlagged =
    1168;  ///< host; wParam id, lParam CString* export path; flag of the window set.
inline constexpr UINT kMsgExportPlain = 1190;   ///< export; as above, flag clear.
inline constexpr UINT kMsgExportFinish = 1189;  ///< export; after either of the two.
inline constexpr UINT kMsgFtp = 1199;  ///< main; lParam CZelTransFTP*, whose m_bExecute tells transfer from browse.

}  // namespace zel
