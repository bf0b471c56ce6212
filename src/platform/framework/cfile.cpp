#include "platform/framework/cfile.h"

#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/system/errors.h"
#include "platform/system/path_lookup.h"

CFile::~CFile() {
    Close();
}

BOOL CFile::Open(const char* name, UINT flags, CFileException* error) {
    Close();
    if ((flags & ~(modeRead | shareDenyNone | typeBinary)) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
    } else {
        m_descriptor = OpenForReading(name);
    }
    if (m_descriptor >= 0) return TRUE;
    if (error != nullptr) {
        error->m_lOsError = static_cast<LONG>(GetLastError());
        error->m_cause = CFileException::OsErrorToException(error->m_lOsError);
        error->m_strFileName = name;
    }
    return FALSE;
}

UINT CFile::Read(void* buffer, UINT count) noexcept {
    return static_cast<UINT>(ReadFully(m_descriptor, buffer, count));
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    const int origin = from == end ? SEEK_END : from == current ? SEEK_CUR : SEEK_SET;
    const off_t place = ::lseek(m_descriptor, offset, origin);
    if (place < 0) AfxThrowFileException(CFileException::badSeek, static_cast<LONG>(ERROR_SEEK));
    return static_cast<ULONGLONG>(place);
}

ULONGLONG CFile::GetPosition() const noexcept {
    const off_t place = ::lseek(m_descriptor, 0, SEEK_CUR);
    return place > 0 ? static_cast<ULONGLONG>(place) : 0;
}

ULONGLONG CFile::GetLength() const noexcept {
    struct stat status {};
    return ::fstat(m_descriptor, &status) == 0 && status.st_size > 0 ? static_cast<ULONGLONG>(status.st_size) : 0;
}

void CFile::Close() noexcept {
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
}
