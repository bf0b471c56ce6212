#include "host/compare/file_bytes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <span>
#include <stdexcept>

#include <sys/stat.h>

#include "base/file_descriptor.h"
#include "base/regular_file.h"

namespace zel::compare {

namespace {

constexpr std::size_t kPiece = std::size_t{64} << 10;

/// An open file that is read from its beginning to its end.
class PieceReader {
  public:
    explicit PieceReader(const std::string& path) : m_path(path) {
        try {
            m_file = base::OpenRegularFile(path);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(path + ": " + error.what());
        }
        if (::fstat(m_file.Get(), &m_status) != 0) Fail();
    }

    std::uint64_t Size() const noexcept { return static_cast<std::uint64_t>(m_status.st_size); }
    bool IsSameFile(const PieceReader& other) const noexcept {
        return m_status.st_dev == other.m_status.st_dev && m_status.st_ino == other.m_status.st_ino;
    }

    /// The next bytes, fewer at the end of the file.
    std::size_t Read(std::span<std::uint8_t> out) {
        const std::size_t size = base::ReadFully(m_file.Get(), out.data(), out.size());
        if (size < out.size() && errno != 0) Fail();
        return size;
    }

  private:
    [[noreturn]] void Fail() const { throw std::runtime_error(m_path + ": " + std::strerror(errno)); }

    std::string m_path;
    base::FileDescriptor m_file;
    struct stat m_status {};
};

}  // namespace

ByteDifference CompareBytes(const std::string& a, const std::string& b, bool count_all) {
    PieceReader file_a(a), file_b(b);
    ByteDifference difference{file_a.Size(), file_b.Size()};
    if (file_a.IsSameFile(file_b)) return difference;
    const std::uint64_t longer = std::max(difference.size_a, difference.size_b);
    const std::uint64_t shorter = std::min(difference.size_a, difference.size_b);
    if (!count_all && longer != shorter) {
        difference.count = longer - shorter;
        return difference;
    }
    const auto found = [&](std::uint64_t offset) {
        if (difference.count++ == 0) difference.first = offset;
        difference.last = offset;
    };
    const auto buffer_a = std::make_unique<std::array<std::uint8_t, kPiece>>();
    const auto buffer_b = std::make_unique<std::array<std::uint8_t, kPiece>>();
    for (std::uint64_t offset = 0;; offset += kPiece) {
        const std::size_t size = std::min(file_a.Read(*buffer_a), file_b.Read(*buffer_b));
        if (std::memcmp(buffer_a->data(), buffer_b->data(), size) != 0) {
            for (std::size_t i = 0; i < size; ++i) {
                if ((*buffer_a)[i] == (*buffer_b)[i]) continue;
                found(offset + i);
                if (!count_all) return difference;
            }
        }
        if (size < kPiece) break;
    }
    if (longer != shorter) {
        if (difference.count == 0) difference.first = shorter;
        difference.count += longer - shorter;
        difference.last = longer - 1;
    }
    return difference;
}

}  // namespace zel::compare
