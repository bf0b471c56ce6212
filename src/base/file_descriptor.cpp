#include "base/file_descriptor.h"

#include <algorithm>

#include <unistd.h>

namespace zel::base {

namespace {

constexpr std::size_t kLargestPiece = 1 << 30;  // of one call; the system takes less than 2^31 bytes

/// @param read_piece  reads into an address, at most a size, at a count of bytes already read.
template <class ReadPiece>
std::size_t ReadPieces(void* buffer, std::size_t size, ReadPiece read_piece) noexcept {
    std::size_t done = 0;
    while (done < size) {
        errno = 0;
        char* const to = static_cast<char*>(buffer) + done;
        const ssize_t got =
            RetryInterrupted([&] { return read_piece(to, std::min(size - done, kLargestPiece), done); });
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

}  // namespace

FileDescriptor::~FileDescriptor() {
    if (m_descriptor < 0) return;
    const int error = errno;
    ::close(m_descriptor);
    errno = error;
}

std::size_t ReadFully(int descriptor, void* buffer, std::size_t size) noexcept {
    return ReadPieces(buffer, size,
                      [=](char* to, std::size_t most, std::size_t) { return ::read(descriptor, to, most); });
}

std::size_t ReadFullyAt(int descriptor, void* buffer, std::size_t size, std::uint64_t offset) noexcept {
    return ReadPieces(buffer, size, [=](char* to, std::size_t most, std::size_t done) {
        return ::pread(descriptor, to, most, static_cast<off_t>(offset + done));
    });
}

bool WriteFully(int descriptor, std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const ssize_t written = RetryInterrupted([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
        if (written == 0) errno = ENOSPC;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace zel::base
