#include "platform/framework/cfile.h"

#include <utility>

#include <unistd.h>

#include "base/file_descriptor.h"
#include "platform/system/errors.h"
#include "platform/system/path_lookup.h"

using namespace zel;

CFile::~CFile() {
    Close();
}

BOOL CFile::Open(const char* name, UINT flags, CFileException* error) {
    Close();
    if ((flags & ~(modeRead | shareDenyNone | typeBinary)) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
    } else {
        m_descriptor = system::OpenForReading(name, &m_length);
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
    const std::size_t size = base::ReadFullyAt(m_descriptor, buffer, count, m_position);
    m_position += size;
    return static_cast<UINT>(size);
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    const ULONGLONG origin = from == end ? m_length : from == current ? m_position : 0;
    LONGLONG place = 0;
    if (m_descriptor < 0 || __builtin_add_overflow(origin, offset, &place) || place < 0)
        AfxThrowFileException(CFileException::badSeek, static_cast<LONG>(ERROR_SEEK));
    return m_position = static_cast<ULONGLONG>(place);
}

void CFile::Close() noexcept {
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
    m_position = m_length = 0;
}
