#pragma once

#include "platform/api.h"

class CWnd;

/// Copies message and font files from a disk to a folder, in a dialog of its own: the part of the disk library that the
/// module calls. What is copied, and how, stands in README.md.
class ZEL_PLATFORM_API CCopyDlg {
  public:
    /// @param parent  of no account, as for every dialog; may be null.
    explicit CCopyDlg(CWnd* parent);
    virtual ~CCopyDlg();
    CCopyDlg(const CCopyDlg&) = delete;
    CCopyDlg& operator=(const CCopyDlg&) = delete;

    /// Runs the dialog until the user closes it.
    /// @param open_log  called once the dialog is closed if a run has left a log, with the log's path in the module's
    /// form: of the last run, in a buffer that lives as long as the call and may be written to. May be null.
    /// @return IDCANCEL; -1 when the dialog could not be made.
    virtual int OpenDialog(void (*open_log)(char*));
};
