#pragma once

#include "platform/framework/cobject.h"
#include "platform/framework/cstring.h"

/// The framework's exceptions. They are thrown as pointers (`throw new CFileException(...)`), caught as pointers
/// (`catch (CFileException* e)`), and whoever catches one frees it with Delete().

class ZEL_PLATFORM_API CException : public CObject {
  public:
    /// @param autoDelete  whether Delete frees the object, which must then come from `new`.
    explicit CException(BOOL autoDelete = TRUE) noexcept : m_bAutoDelete(autoDelete) {}

    void Delete();

    /// Puts the error's text, cut to `maximum` - 1 characters, into `text`. FALSE, with an empty text, when it has
    /// none.
    virtual BOOL GetErrorMessage(char* text, UINT maximum, UINT* helpContext = nullptr) const;

    /// Shows the error's text with AfxMessageBox and `type`; an error without a text shows "No error message is
    /// available.".
    /// @return the box's answer.
    virtual int ReportError(UINT type = 0, UINT messageId = 0);

  protected:
    /// The error's text, empty for none.
    virtual CString Text() const;

  private:
    BOOL m_bAutoDelete;
};

/// Memory has run out. The framework throws one object of its own, so that nothing has to be allocated.
class ZEL_PLATFORM_API CMemoryException : public CException {
  public:
    explicit CMemoryException(BOOL autoDelete = TRUE) noexcept : CException(autoDelete) {}

  protected:
    CString Text() const override;
};

class ZEL_PLATFORM_API CInvalidArgException : public CException {
  protected:
    CString Text() const override;
};

/// A file operation has failed.
class ZEL_PLATFORM_API CFileException : public CException {
  public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    /// @param fileName  may be null; the text then says "an unnamed file".
    explicit CFileException(int cause = none, LONG osError = -1, const char* fileName = nullptr);

    /// The cause that stands for a system error number.
    static int OsErrorToException(LONG osError) noexcept;

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;

  protected:
    CString Text() const override;
};

[[noreturn]] ZEL_PLATFORM_API void AfxThrowMemoryException();
[[noreturn]] ZEL_PLATFORM_API void AfxThrowInvalidArgException();
[[noreturn]] ZEL_PLATFORM_API void AfxThrowFileException(int cause, LONG osError = -1, const char* fileName = nullptr);
