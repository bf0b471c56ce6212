#include "platform/system/errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

thread_local DWORD t_lastError = ERROR_SUCCESS;

struct ErrorText {
    DWORD error;
    std::string_view text;
};

/// The system's texts, ordered by number.
constexpr std::array kTexts = {
    ErrorText{0, "The operation completed successfully.\r\n"},
    ErrorText{2, "The system cannot find the file specified.\r\n"},
    ErrorText{3, "The system cannot find the path specified.\r\n"},
    ErrorText{4, "The system cannot open the file.\r\n"},
    ErrorText{5, "Access is denied.\r\n"},
    ErrorText{6, "The handle is invalid.\r\n"},
    ErrorText{8, "Not enough storage is available to process this command.\r\n"},
    ErrorText{21, "The device is not ready.\r\n"},
    ErrorText{25, "The drive cannot locate a specific area or track on the disk.\r\n"},
    ErrorText{26, "The specified disk or diskette cannot be accessed.\r\n"},
    ErrorText{31, "A device attached to the system is not functioning.\r\n"},
    ErrorText{32, "The process cannot access the file because it is being used by another process.\r\n"},
    ErrorText{59, "An unexpected network error occurred.\r\n"},
    ErrorText{87, "The parameter is incorrect.\r\n"},
    ErrorText{112, "There is not enough space on the disk.\r\n"},
    ErrorText{122, "The data area passed to a system call is too small.\r\n"},
    ErrorText{126, "The specified module could not be found.\r\n"},
    ErrorText{206, "The filename or extension is too long.\r\n"},
    ErrorText{234, "More data is available.\r\n"},
    ErrorText{317, "The system cannot find message text for message number 0x%1 in the message file for %2.\r\n"},
    ErrorText{1112, "No media in drive.\r\n"},
    ErrorText{1114, "A dynamic link library (DLL) initialization routine failed.\r\n"},
    ErrorText{1117, "The request could not be performed because of an I/O device error.\r\n"},
    ErrorText{1167, "The device is not connected.\r\n"},
    ErrorText{1392, "The file or directory is corrupted and unreadable.\r\n"},
    ErrorText{1393, "The disk structure is corrupted and unreadable.\r\n"},
    ErrorText{1400, "Invalid window handle.\r\n"},
    ErrorText{1785, "The disk media is not recognized. It may not be formatted.\r\n"},
};
static_assert(std::is_sorted(kTexts.begin(), kTexts.end(), [](auto& a, auto& b) { return a.error < b.error; }));

}  // namespace

DWORD GetLastError() noexcept {
    return t_lastError;
}
void SetLastError(DWORD error) noexcept {
    t_lastError = error;
}

namespace zel::system {

DWORD ErrorFromErrno(int value) noexcept {
    switch (value) {
        case 0:
            return ERROR_SUCCESS;
        case ENOENT:
            return ERROR_FILE_NOT_FOUND;
        case ENOTDIR:
        case ELOOP:
            return ERROR_PATH_NOT_FOUND;
        case EMFILE:
        case ENFILE:
            return ERROR_TOO_MANY_OPEN_FILES;
        case EACCES:
        case EPERM:
        case EISDIR:
        case EROFS:
            return ERROR_ACCESS_DENIED;
        case EBADF:
            return ERROR_INVALID_HANDLE;
        case ENOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        case ENODEV:
        case ENXIO:
        case ENOTCONN:  // a mounted file system whose server has ended
        case ESHUTDOWN:
            return ERROR_DEVICE_NOT_CONNECTED;
        case ENOMEDIUM:
            return ERROR_NO_MEDIA_IN_DRIVE;
        case EMEDIUMTYPE:
            return ERROR_UNRECOGNIZED_MEDIA;
        case EUCLEAN:  // a damaged structure in a file system
            return ERROR_DISK_CORRUPT;
        case EBADMSG:  // a wrong checksum in a file system
            return ERROR_FILE_CORRUPT;
        case ESTALE:
            return ERROR_UNEXP_NET_ERR;
        case EBUSY:
        case ETXTBSY:
            return ERROR_SHARING_VIOLATION;
        case EINVAL:
            return ERROR_INVALID_PARAMETER;
        case ENOSPC:
            return ERROR_DISK_FULL;
        case ENAMETOOLONG:
            return ERROR_FILENAME_EXCED_RANGE;
        case EIO:
        case EREMOTEIO:
            return ERROR_IO_DEVICE;
        default:
            return ERROR_GEN_FAILURE;
    }
}

}  // namespace zel::system

DWORD FormatMessageA(DWORD flags, const void*, DWORD message, DWORD, char* buffer, DWORD, void*) noexcept {
    if (flags != (FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM) || buffer == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    char* text = nullptr;
    std::memcpy(buffer, &text, sizeof text);
    const auto* const found =
        std::find_if(kTexts.begin(), kTexts.end(), [&](auto& entry) { return entry.error == message; });
    if (found == kTexts.end()) {
        SetLastError(ERROR_MR_MID_NOT_FOUND);
        return 0;
    }
    text = static_cast<char*>(std::malloc(found->text.size() + 1));
    if (text == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    std::memcpy(text, found->text.data(), found->text.size() + 1);  // the literal's NUL included
    std::memcpy(buffer, &text, sizeof text);
    return static_cast<DWORD>(found->text.size());
}

void* LocalFree(void* memory) noexcept {
    std::free(memory);
    return nullptr;
}
