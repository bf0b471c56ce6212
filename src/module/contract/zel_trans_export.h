#pragma once

#include "module/contract/records/zeltrans_api.h"
#include "platform/framework/cstring.h"

class CWnd;
class CZelFont;

/// The entry points of the module. The class has no state: any instance may be used. Register_GLV_OnChar is called
/// first.
///
/// A host calls one member after the other, on the user-interface thread. It owns the windows that it passes, which
/// must live until the call returns. It receives what is imported by messages; see zeltrans.h.
///
/// CFileException and CMemoryException, thrown as pointers, leave a member after the objects of the import are
/// destroyed. The caller deletes them with Delete().
class CZelTransExport {
  public:
    /// Does nothing.
    ZELTRANS_API CZelTransExport& operator=(const CZelTransExport&);

    /// Runs the import dialog until the user closes it.
    /// @param host  receives the messages of the imports.
    /// @return true.
    ZELTRANS_API bool ZelTranslation(CWnd* host);
    /// The same; the first argument is ignored.
    ZELTRANS_API bool ZelTranslation(void* ignored, CWnd* host);

    /// Imports one message without showing the dialog, with Skip Warnings on, which is stored.
    /// @param host          receives the messages of the import.
    /// @param message_path  full path of the message file, in the module's form (backslashes).
    /// @param font_dir      directory of the fonts; empty for the directory "MACHINE" beside the message's directory.
    /// @return true, also for a failed import, which sends no kMsgImportDone; see zeltrans.h for its status.
    ZELTRANS_API bool ReadZelmaraMessage(CWnd* host, CString& message_path, CString& font_dir);

    /// Runs the batch dialog for an export: for each id of a range, asks the host to export its message.
    /// @param host           receives kMsgExportFlagged.
    /// @param export_path    passed to the host unchanged.
    /// @param export_window  a CZelExportWnd; receives the other messages of the export.
    /// @return true.
    ZELTRANS_API bool ZelBatchExport(CWnd* host, CString& export_path, CWnd* export_window);

    /// Loads one font file into slot 0 of the caller's font set, with the default palette.
    /// @param path  full path of the font file, in the module's form.
    /// @param font  owned by the caller, who releases slot 0 and its font_copy.
    /// @return true if slot 0 has a font; false if it has none, or for a null font set.
    ZELTRANS_API bool MakeTavroFont(char* path, CZelFont* font);
};
