#pragma once

#include "module/contract/records/zeltrans_api.h"
#include "platform/framework/cstring.h"

class CWnd;
class CZelFont;

/// All that the host asks of the module, beside Register_GLV_OnChar, which it calls first. Any instance serves; calls
/// come one after the other on the user-interface thread. The windows passed in stay the host's and must outlive the
/// call. Nothing is caught: a CFileException or CMemoryException (thrown as pointers) leaves after the import's objects
/// are gone.
class CZelTransExport {
  public:
    /// Does nothing: there is no state.
    ZELTRANS_API CZelTransExport& operator=(const CZelTransExport&);

    /// Runs the import dialog modally.
    /// @return always true; what arrived is told by the messages.
    ZELTRANS_API bool ZelTranslation(CWnd* host);
    ZELTRANS_API bool ZelTranslation(void* ignored, CWnd* host);

    /// Imports one message without showing a dialog, Skip Warnings on.
    /// @param message_path  full path of the message file.
    /// @param font_dir      empty: the directory "MACHINE" beside the message's.
    /// @return always true.
    ZELTRANS_API bool ReadZelmaraMessage(CWnd* host, CString& message_path, CString& font_dir);

    /// Runs the batch dialog for export: the host is asked, number by number, to export its messages.
    /// @param export_path  handed on to the host unchanged.
    /// @return always true.
    ZELTRANS_API bool ZelBatchExport(CWnd* host, CString& export_path, CWnd* export_window);

    /// Loads one font file into slot 0 of the caller's font set.
    /// @return false for a null font set, else whether slot 0 was filled.
    ZELTRANS_API bool MakeTavroFont(char* path, CZelFont* font);
};
