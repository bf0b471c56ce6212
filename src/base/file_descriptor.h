#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace zel::base {

/// Owns a file descriptor, or none (-1).
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(other.Release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    /// Closes the descriptor. errno is unchanged, so that a failure can be reported after its file is closed.
    ~FileDescriptor();

    bool IsOpen() const noexcept { return m_descriptor >= 0; }
    int Get() const noexcept { return m_descriptor; }
    /// The caller becomes the owner.
    int Release() noexcept { return std::exchange(m_descriptor, -1); }

  private:
    int m_descriptor = -1;
};

/// Repeats a system call that a signal interrupts.
/// @param call  returns -1 with errno set when it fails.
template <class Call>
auto RetryInterrupted(Call call) {
    decltype(call()) result{};
    do {
        result = call();
    } while (result == -1 && errno == EINTR);
    return result;
}

/// Reads at the descriptor's position up to the end of the file.
/// @return the number of bytes read. Fewer than `size`: the file ended (errno is 0), or reading failed (errno is set).
std::size_t ReadFully(int descriptor, void* buffer, std::size_t size) noexcept;

/// Reads likewise from an offset in bytes; the descriptor's position is unchanged.
std::size_t ReadFullyAt(int descriptor, void* buffer, std::size_t size, std::uint64_t offset) noexcept;

/// Writes all bytes. @return false with errno set.
bool WriteFully(int descriptor, std::string_view bytes) noexcept;

}  // namespace zel::base
