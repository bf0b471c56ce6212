#include "base/sha256.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <nettle/base16.h>
#include <nettle/sha2.h>

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

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

[[noreturn]] void FailRead(const std::filesystem::path& file, int error) {
    throw std::runtime_error(file.string() + ": could not be read: " + std::generic_category().message(error));
}

}  // namespace

std::string Sha256(std::string_view bytes) {
    Digest digest;
    digest.Add(bytes);
    return digest.TakeHex();
}

std::string Sha256OfFile(const std::filesystem::path& file) {
    const std::unique_ptr<std::FILE, CloseFile> in(std::fopen(file.c_str(), "rb"));
    if (!in) FailRead(file, errno);
    Digest digest;
    std::vector<char> piece(std::size_t{1} << 16);
    while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), in.get())) {
        digest.Add({piece.data(), size});
    }
    if (std::ferror(in.get()) != 0) FailRead(file, errno);
    return digest.TakeHex();
}

std::string Sha256Raw(std::string_view bytes) {
    Digest digest;
    digest.Add(bytes);
    return digest.Take();
}

}  // namespace zel::base
