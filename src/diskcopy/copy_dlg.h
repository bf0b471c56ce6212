#pragma once

#include "platform/api.h"

class CWnd;

/// A dialog that copies message and font files from a disk to a folder: the part of the disk library that the module
/// calls. README.md describes what is copied and how.
class ZEL_PLATFORM_API CCopyDlg {
  public:
    /// @param parent  ignored, as for every dialog; may be null.
    explicit CCopyDlg(CWnd* parent);
    virtual ~CCopyDlg();
    CCopyDlg(const CCopyDlg&) = delete;
    CCopyDlg& operator=(const CCopyDlg&) = delete;

    /// Runs the dialog until the user closes it.
    /// @param open_log  called after the dialog is closed, with the path of the last run's log in the module's form;
    /// not
    ///                  called without a log. The buffer is valid and writable during the call. May be null.
    /// @return IDCANCEL; -1 when the dialog could not be created.
    virtual int OpenDialog(void (*open_log)(char*));
};
