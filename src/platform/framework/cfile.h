#pragma once

#include "platform/framework/cobject.h"
#include "platform/framework/exceptions.h"

/// A file opened for reading, without a buffer. Not provided: writing, locking, status, duplication.
class ZEL_PLATFORM_API CFile : public CObject {
  public:
    enum OpenFlags : UINT { modeRead = 0x0000, shareDenyNone = 0x0040, typeBinary = 0x8000 };
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

    CFile() = default;
    ~CFile() override;

    /// Closes the file that is open, if any, and opens a regular file.
    /// @param name   a path in the module's form (see system/files.h).
    /// @param flags  a combination of OpenFlags; any other flag fails with ERROR_INVALID_PARAMETER.
    /// @param error  may be null; on failure it receives the cause, the system error and the name.
    /// @return FALSE on failure, with the thread's last error set.
    BOOL Open(const char* name, UINT flags, CFileException* error = nullptr);

    /// Reads up to `count` bytes from the current position.
    /// @return the number of bytes read; less than `count` at the end of the file or after a read error.
    UINT Read(void* buffer, UINT count) noexcept;

    /// Moves the position, which may be beyond the end.
    /// @param from  a SeekPosition.
    /// @return the new position.
    /// @throws CFileException  cause badSeek, for a position before the start.
    ULONGLONG Seek(LONGLONG offset, UINT from);

    ULONGLONG GetPosition() const noexcept { return m_position; }
    /// Size in bytes when the file was opened.
    ULONGLONG GetLength() const noexcept { return m_length; }
    void Close() noexcept;

  private:
    int m_descriptor = -1;
    // Stored here so that Seek, GetPosition and GetLength need no system call.
    ULONGLONG m_position = 0;
    ULONGLONG m_length = 0;
};
