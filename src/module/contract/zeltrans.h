#pragma once

/// The import module ZelTrans: the one header that a host includes.
///
/// The module reads the messages and bitmap fonts of the Zelmara! character generator and passes them to a host by
/// window messages and one callback per character. All calls, messages and callbacks are on the host's user-interface
/// thread, and each message waits for the host's answer.
///
/// Before the first import a host
///
///  1. creates its windows, of classes derived from CWnd, by CWnd::CreateHostWindow;
///  2. sets the main window of the thread, AfxGetThread()->m_pMainWnd (platform/framework/cwinapp.h), which receives
///     kMsgDialogReady, kMsgImportDone, kMsgHasMessage and kMsgFtp;
///  3. calls Register_GLV_OnChar with its callback and a buffer of 260 bytes: the directory of the two name lists,
///     ending in a backslash, or all zeros for the current directory.
///
/// Then it calls the members of CZelTransExport, one after the other, with the window that receives the other messages.
/// Paths are in the module's form; zel::system::ModulePath (platform/system/files.h) converts to it.
///
/// Dialogs, message boxes and settings go through platform/seam/desktop.h and platform/seam/settings_store.h. A host
/// that sets neither has a desktop without a screen, which closes each dialog and gives each message box a default
/// answer, and settings in memory.
///
/// One import sends, in this order:
///
///     kMsgDialogReady   main   the dialog: the host sets m_iLines, m_bTrueFont and m_bBaselineAlign, then calls
///                              UpdateData(FALSE)
///     kMsgFonts         host   CZelFont: the fonts and the palette
///     the callback, for each character: tag_CharInf
///     kMsgRowsDone      host   CZelMessage: the rows
///     kMsgTabs          host   tag_tab_field records, only if there are any
///     kMsgMessageDone   host   CZelMessage, for the last time
///     kMsgImportDone    main   CZelTransDlg: m_sMessageID is the id
///     WM_PAINT          host   the host may draw
///
/// kMsgDialogReady is sent once for a dialog, in which the user can import several messages.
///
/// For an RGBA file, kMsgRgba replaces everything between the first and the last two; if the user cancels the choice,
/// only WM_PAINT follows kMsgDialogReady. A failed import sends nothing more. CZelTransDlg::m_iStatus has its result,
/// as long as the dialog's window exists; CWnd::AddChangeListener notifies the host before it is destroyed.
///
/// Lifetime. A tag_CharInf and its LOGFONT are valid until the callback returns; a CZelMessage and its rows, until the
/// handler of kMsgImportDone returns; a CZelFont, until the next import of its dialog or the end of the call. The
/// blocks of the font slots and each slot's font_copy belong to the host. When it needs no more pixels
/// (CZelFont::GetMFRect, CZelFont::BuildMFData), it calls CZelFont::ReleaseFontData on the font_copy and deletes the
/// font_copy.
///
/// Exceptions (CFileException, CMemoryException) leave the module as pointers. The host deletes them by Delete(). The
/// fonts that it has received by then are its own, as after a completed import.
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
#include "module/contract/stored_settings.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_export.h"
#include "module/contract/zel_trans_ftp.h"
