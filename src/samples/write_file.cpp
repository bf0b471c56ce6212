#include "samples/write_file.h"

#include <stdexcept>
#include <string>
#include <system_error>

#include "base/whole_file.h"

namespace zel::samples {

void WriteWholeFile(const std::filesystem::path& file, std::string_view text) {
    std::error_code error;
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), error);
    if (!error) error = base::TryWriteWholeFile(file, text, base::Durability::kUnsynced);
    if (error) throw std::runtime_error("can't write " + file.string() + ": " + error.message());
}

void WriteWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) {
    WriteWholeFile(file, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

}  // namespace zel::samples
