#pragma once

#include "platform/framework/cobject.h"
#include "platform/framework/exceptions.h"

/// A file opened for reading, without a buffer. Left out: writing, locking, status, duplication.
class ZEL_PLATFORM_API CFile : public CObject {
  public:
    enum OpenFlags : UINT { modeRead = 0x0000, shareDenyNone = 0x0040, typeBinary = 0x8000 };
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

    CFile() = default;
    ~CFile() override;

    /// Opens a regular file by a path in the module's form (see system/files.h). A file that is open is closed first.
    /// @param flags  any of OpenFlags; another flag fails with ERROR_INVALID_PARAMETER.
    /// @param error  may be null; on failure it receives cause, system error and name.
    /// @return FALSE on failure, with the thread's last error set.
    BOOL Open(const char* name, UINT flags, CFileException* error = nullptr);

    /// Reads up to `count` bytes from the current position.
    /// @return how many came; fewer than asked at the end of the file or on a read error.
    UINT Read(void* buffer, UINT count) noexcept;

    /// Moves the position, perhaps behind the end. @return the new position.
    /// @throws CFileException, cause badSeek, for a position before the start.
    ULONGLONG Seek(LONGLONG offset, UINT from);

    ULONGLONG GetPosition() const noexcept { return m_position; }
    /// Bytes that the file had when it was opened.
    ULONGLONG GetLength() const noexcept { return m_length; }
    void Close() noexcept;

  private:
    int m_descriptor = -1;
    // Kept here, so that neither moving nor asking costs a call of the system.
    ULONGLONG m_position = 0;
    ULONGLONG m_length = 0;
};
