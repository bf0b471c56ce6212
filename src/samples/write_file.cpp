#include "samples/write_file.h"

#include <cerrno>
#include <fstream>
#include <ios>
#include <stdexcept>
#include <system_error>

namespace zel::samples {
namespace {

std::filesystem::path DraftOf(const std::filesystem::path& file) {
    std::filesystem::path draft = file;
    draft += ".part";
    return draft;
}

[[noreturn]] void Fail(const std::filesystem::path& file, const std::string& reason) {
    std::error_code ignored;
    std::filesystem::remove(DraftOf(file), ignored);
    throw std::runtime_error("can't write " + file.string() + ": " + reason);
}

}  // namespace

void WriteWholeFile(const std::filesystem::path& file, std::string_view text) {
    std::error_code error;
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), error);
    if (error) Fail(file, error.message());

    errno = 0;
    std::ofstream out(DraftOf(file), std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    if (!out) Fail(file, std::generic_category().message(errno != 0 ? errno : EIO));

    std::filesystem::rename(DraftOf(file), file, error);
    if (error) Fail(file, error.message());
}

void WriteWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) {
    // A char view of the bytes, which is what a stream takes.
    WriteWholeFile(file, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

}  // namespace zel::samples
