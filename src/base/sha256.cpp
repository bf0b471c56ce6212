#include "base/sha256.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <system_error>

#include <nettle/base16.h>
#include <nettle/sha2.h>
#include <sys/stat.h>

#include "base/regular_file.h"

namespace zel::base {

namespace {

class Digest {
  public:
    Digest() noexcept { sha256_init(&m_state); }

    void Add(std::string_view bytes) noexcept {
        sha256_update(&m_state, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    }

    std::string Take() {
        std::string bytes(SHA256_DIGEST_SIZE, '\0');
        sha256_digest(&m_state, bytes.size(), reinterpret_cast<std::uint8_t*>(bytes.data()));
        return bytes;
    }

    std::string TakeHex() {
        const std::string bytes = Take();
        std::string text(BASE16_ENCODE_LENGTH(bytes.size()), '\0');
        base16_encode_update(text.data(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
        return text;
    }

  private:
    sha256_ctx m_state;
};

/// Adds a file's bytes to a digest. @throws std::runtime_error with the reason.
void AddFile(Digest& digest, const std::filesystem::path& file, const std::function<bool()>& stop,
             std::uint64_t largest) {
    const FileDescriptor in = OpenRegularFile(file);
    const auto refuse_size = [largest] {
        throw std::runtime_error("it is larger than " + std::to_string(largest >> 20) + " MiB");
    };
    struct stat status {};
    if (::fstat(in.Get(), &status) == 0 && static_cast<std::uint64_t>(status.st_size) > largest) refuse_size();
    // One byte more than the file has, so that one read reaches its end.
    constexpr std::size_t kSmallest = std::size_t{1} << 12, kLargest = std::size_t{1} << 16;
    const std::size_t piece_size = std::clamp(static_cast<std::size_t>(status.st_size) + 1, kSmallest, kLargest);
    const auto piece = std::make_unique_for_overwrite<char[]>(piece_size);
    // The size is checked again while reading: a file may grow, and those of the kernel have size 0.
    for (std::uint64_t read = 0;;) {
        if (stop && stop()) throw std::runtime_error("stopped");
        const std::size_t size = ReadFully(in.Get(), piece.get(), piece_size);
        if (size < piece_size && errno != 0) throw std::system_error(errno, std::generic_category());
        digest.Add({piece.get(), size});
        if (size < piece_size) return;
        if ((read += size) > largest) refuse_size();
    }
}

}  // namespace

std::string Sha256(std::string_view bytes) {
    Digest digest;
    digest.Add(bytes);
    return digest.TakeHex();
}

std::string Sha256OfFile(const std::filesystem::path& file, const std::function<bool()>& stop, std::uint64_t largest) {
    Digest digest;
    try {
        AddFile(digest, file, stop, largest);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + ": could not be read: " + error.what());
    }
    return digest.TakeHex();
}

std::string Sha256Raw(std::string_view bytes) {
    Digest digest;
    digest.Add(bytes);
    return digest.Take();
}

}  // namespace zel::base
