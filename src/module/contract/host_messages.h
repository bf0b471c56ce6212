#pragma once

#include "platform/system/types.h"

namespace zel {

// Window messages from the module to the host. The module waits until the host's handler returns. It uses the result of
// kMsgHasMessage only. A wParam or lParam that is not described is 0.
//
// Receivers: "main" is the main window of the user-interface thread, "host" the window of the call, "export" the export
// window of ZelBatchExport. A message to a null host or export window is left out; the main window must exist.
//
// zeltrans.h gives the order of the messages of one import, and how long the objects live.

// One import.

/// To main, once for each dialog, before its recent lists are loaded. lParam: CZelTransDlg*.
inline constexpr UINT kMsgDialogReady = 1212;
/// To host. lParam: CZelFont*, the fonts of the message.
inline constexpr UINT kMsgFonts = 1157;
/// To host, after the last character. lParam: CZelMessage*.
inline constexpr UINT kMsgRowsDone = 1181;
/// To host, only for a message with tab fields. wParam: their number. lParam: tag_tab_field*, an array of as many.
inline constexpr UINT kMsgTabs = 1158;
/// To host. lParam: CZelMessage*, for the last time.
inline constexpr UINT kMsgMessageDone = 1180;
/// To host, for an RGBA file. wParam: 1 to insert it as an object, 0 as the background. lParam: CZelTransDlg*, whose
/// m_sMessageDir and m_sMessageID name the file.
inline constexpr UINT kMsgRgba = 1211;
/// To main. lParam: CZelTransDlg*, whose m_sMessageID is still the id of the imported file.
inline constexpr UINT kMsgImportDone = 1213;

// A batch of imports.

/// To host, if the user chose to skip the Nuvo output. At the start of the batch: wParam 1, lParam a BYTE* that
/// receives the state of the output; then wParam 2, lParam 0, which turns it off. At the end: wParam 2, lParam the
/// state received.
inline constexpr UINT kMsgNuvoOut = 1161;
/// To host, after each successful import. lParam: id of the message, which the host is to record.
inline constexpr UINT kMsgRecord = 1160;

// A batch of exports. In each of these wParam is the id of a message of the host.

/// To main. The result is 0 if the host has no such message; the module then continues with the next id.
inline constexpr UINT kMsgHasMessage = 1125;
/// To host, if the flag of the export window is set. lParam: CString*, the export path of the call.
inline constexpr UINT kMsgExportFlagged = 1168;
/// To export, if the flag is clear. lParam: CString*, as above.
inline constexpr UINT kMsgExportPlain = 1190;
/// To export, after either of the two. lParam: CString*, as above.
inline constexpr UINT kMsgExportFinish = 1189;

// The FTP dialog.

/// To main. lParam: CZelTransFTP*, whose m_bExecute says whether to transfer files or to browse.
inline constexpr UINT kMsgFtp = 1199;

}  // namespace zel
