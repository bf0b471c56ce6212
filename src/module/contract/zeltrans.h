#pragma once

/// The import module ZelTrans: the one header that a host includes.
///
/// The module reads the messages and bitmap fonts of the Zelmara! character generator and passes them to a host by
/// window messages and one callback per character. All calls, messages and callbacks are on the host's user-interface
/// thread, and each message waits for the host's answer.
///
/// Before the first import a host
///
///  1. sets the main window of the thread, AfxGetThread()->m_pMainWnd: it receives kMsgDialogReady, kMsgImportDone,
///     kMsgHasMessage and kMsgFtp;
///  2. calls Register_GLV_OnChar with its callback and a buffer of 260 bytes: the directory of the two name lists,
///     ending in a backslash, or all zeros for none.
///
/// Then it calls the members of CZelTransExport, one after the other, with the window that receives the other messages.
/// One import is, in this order:
///
///     kMsgDialogReady   main   the dialog: the host sets m_iLines, m_bTrueFont and m_bBaselineAlign, then calls
///                              UpdateData(FALSE)
///     kMsgFonts         host   CZelFont: the fonts and the palette
///     the callback, for each character: tag_CharInf
///     kMsgRowsDone      host   CZelMessage: the rows
///     kMsgTabs          host   tag_tab_field records, only if there are any
///     kMsgMessageDone   host   CZelMessage
///     kMsgImportDone    main   CZelTransDlg: m_sMessageID is the id
///     WM_PAINT          host
///
/// A picture file has kMsgRgba in place of everything between the first and the last two. A failed import sends nothing
/// after kMsgDialogReady; m_iStatus of the dialog says why.
///
/// Lifetime. A tag_CharInf and its LOGFONT end with the callback; a CZelMessage and its rows, with the handling of
/// kMsgImportDone; a CZelFont, with the next import of its dialog, or without a dialog with the call. The blocks of the
/// font slots and each slot's font_copy belong to the host: it calls CZelFont::ReleaseFontData on the font_copy and
/// deletes it when it has asked for all pixels that it needs (CZelFont::GetMFRect, CZelFont::BuildMFData).
///
/// Exceptions (CFileException, CMemoryException) leave the module as pointers; whoever catches one calls Delete().
///
/// Positions and sizes are pixels, angles degrees (0 up, clockwise), colours COLORREF. Texts are bytes.
///
/// examples/minimal_host.cpp is the smallest complete host.

#include "module/contract/dialog_ids.h"
#include "module/contract/export_window.h"
#include "module/contract/host_messages.h"
#include "module/contract/message_id.h"
#include "module/contract/name_maps.h"
#include "module/contract/records/char_entry.h"
#include "module/contract/records/char_inf.h"
#include "module/contract/records/edge.h"
#include "module/contract/records/effpar.h"
#include "module/contract/records/font_header.h"
#include "module/contract/records/font_memory.h"
#include "module/contract/records/msg_header.h"
#include "module/contract/records/msg_row.h"
#include "module/contract/records/palette.h"
#include "module/contract/records/psos_header.h"
#include "module/contract/records/tab_field.h"
#include "module/contract/records/video_standard.h"
#include "module/contract/registration.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_export.h"
#include "module/contract/zel_trans_ftp.h"
