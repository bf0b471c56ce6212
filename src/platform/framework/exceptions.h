#pragma once

#include "platform/framework/cobject.h"
#include "platform/framework/cstring.h"

/// The framework's exceptions. They are thrown as pointers (`throw new CFileException(...)`) and caught as pointers
/// (`catch (CFileException* e)`). The handler frees the exception by Delete().

class ZEL_PLATFORM_API CException : public CObject {
  public:
    /// @param autoDelete  TRUE for an object created by `new`, which Delete frees.
    explicit CException(BOOL autoDelete = TRUE) noexcept : m_bAutoDelete(autoDelete) {}

    void Delete();

    /// Copies the error's text, cut to `maximum` - 1 characters.
    /// @return FALSE if the error has no text; `text` is then empty.
    virtual BOOL GetErrorMessage(char* text, UINT maximum, UINT* helpContext = nullptr) const;

    /// Shows the error's text by AfxMessageBox. For an error without a text: "No error message is available.".
    /// @return the user's answer.
    virtual int ReportError(UINT type = 0, UINT messageId = 0);

  protected:
    /// The error's text, empty for none.
    virtual CString Text() const;

  private:
    BOOL m_bAutoDelete;
};

/// Out of memory. The framework throws a static object, so that throwing allocates nothing of its own.
class ZEL_PLATFORM_API CMemoryException : public CException {
  public:
    explicit CMemoryException(BOOL autoDelete = TRUE) noexcept : CException(autoDelete) {}

    /// Allocates nothing.
    BOOL GetErrorMessage(char* text, UINT maximum, UINT* helpContext = nullptr) const override;

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

    /// The cause for a system error number.
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
