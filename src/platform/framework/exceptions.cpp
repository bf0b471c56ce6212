#include "platform/framework/exceptions.h"

#include <array>
#include <cstdio>
#include <cstring>

#include "platform/framework/message_box.h"
#include "platform/system/errors.h"

namespace {

/// The framework's texts, in the order of the causes. %1 is replaced by the name of the file.
constexpr std::array kFileTexts = {
    "No error occurred.",
    "An unknown error occurred while accessing %1.",
    "%1 was not found.",
    "%1 contains an invalid path.",
    "%1 could not be opened because there are too many open files.",
    "Access to %1 was denied.",
    "An invalid file handle was associated with %1.",
    "%1 could not be removed because it is the current directory.",
    "%1 could not be created because the directory is full.",
    "Seek failed on %1",
    "A hardware I/O error was reported while accessing %1.",
    "A sharing violation occurred while accessing %1.",
    "A locking violation occurred while accessing %1.",
    "Disk full while accessing %1.",
    "An attempt was made to access %1 past its end.",
};
static_assert(kFileTexts.size() == CFileException::endOfFile + 1);

constexpr char kOutOfMemory[] = "Out of memory.";

}  // namespace

void CException::Delete() {
    if (m_bAutoDelete) delete this;
}

BOOL CException::GetErrorMessage(char* text, UINT maximum, UINT* helpContext) const {
    if (helpContext != nullptr) *helpContext = 0;
    if (text == nullptr || maximum == 0) return FALSE;
    const CString message = Text();
    std::snprintf(text, maximum, "%s", message.GetString());
    return !message.IsEmpty();
}

int CException::ReportError(UINT type, UINT messageId) {
    const CString message = Text();
    return AfxMessageBox(message.IsEmpty() ? "No error message is available." : message.GetString(), type, messageId);
}

CString CException::Text() const {
    return {};
}

BOOL CMemoryException::GetErrorMessage(char* text, UINT maximum, UINT* helpContext) const {
    if (helpContext != nullptr) *helpContext = 0;
    if (text == nullptr || maximum == 0) return FALSE;
    std::snprintf(text, maximum, "%s", kOutOfMemory);
    return TRUE;
}
CString CMemoryException::Text() const {
    return kOutOfMemory;
}

CString CInvalidArgException::Text() const {
    return "Encountered an improper argument.";
}

CFileException::CFileException(int cause, LONG osError, const char* fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

int CFileException::OsErrorToException(LONG osError) noexcept {
    switch (static_cast<DWORD>(osError)) {
        case ERROR_SUCCESS:
            return none;
        case ERROR_FILE_NOT_FOUND:
            return fileNotFound;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_FILENAME_EXCED_RANGE:
            return badPath;
        case ERROR_TOO_MANY_OPEN_FILES:
            return tooManyOpenFiles;
        case ERROR_ACCESS_DENIED:
            return accessDenied;
        case ERROR_INVALID_HANDLE:
            return invalidFile;
        case ERROR_SEEK:
            return badSeek;
        case ERROR_IO_DEVICE:
        case ERROR_NOT_READY:
        case ERROR_NO_MEDIA_IN_DRIVE:
        case ERROR_DEVICE_NOT_CONNECTED:
        case ERROR_FILE_CORRUPT:
        case ERROR_DISK_CORRUPT:
        case ERROR_UNRECOGNIZED_MEDIA:
            return hardIO;
        case ERROR_SHARING_VIOLATION:
            return sharingViolation;
        case ERROR_DISK_FULL:
            return diskFull;
        default:
            return genericException;
    }
}

CString CFileException::Text() const {
    const bool known = m_cause >= 0 && m_cause < static_cast<int>(kFileTexts.size());
    CString text = kFileTexts[static_cast<std::size_t>(known ? m_cause : genericException)];
    const int place = text.Find("%1");
    if (place < 0) return text;
    return text.Left(place) + (m_strFileName.IsEmpty() ? "an unnamed file" : m_strFileName.GetString()) +
           text.Mid(place + 2);
}

void AfxThrowMemoryException() {
    static CMemoryException exception(FALSE);
    throw &exception;
}

void AfxThrowInvalidArgException() {
    throw new CInvalidArgException;
}

void AfxThrowFileException(int cause, LONG osError, const char* fileName) {
    throw new CFileException(cause, osError, fileName);
}
