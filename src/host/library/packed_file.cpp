#include "host/library/packed_file.h"

#include <optional>
#include <stdexcept>
#include <utility>

#include "base/deflate.h"
#include "base/sha256.h"

namespace zel::library {

SharedFile PackFile(std::string_view bytes) {
    return std::make_shared<const PackedFile>(PackedFile{base::Sha256(bytes), bytes.size(), base::Deflated(bytes)});
}

std::string ContentsOf(const PackedFile& file) {
    std::optional<std::string> bytes;
    if (file.size <= kLargestKeptFile) bytes = base::Inflated(file.stream, static_cast<std::size_t>(file.size));
    if (!bytes || base::Sha256(*bytes) != file.sha256)
        throw std::runtime_error("the kept file with the checksum " + file.sha256 + " is damaged");
    return std::move(*bytes);
}

}  // namespace zel::library
