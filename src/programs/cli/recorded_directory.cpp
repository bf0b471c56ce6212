#include "programs/cli/recorded_directory.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

#include <nlohmann/json.hpp>

#include "base/regular_file.h"
#include "module/contract/message_id.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

/// In bytes. A document has its source at its beginning.
constexpr std::size_t kBeginning = 16384;

bool IsDocument(const fs::path& file) {
    constexpr std::size_t kDigits = 4;
    const std::string name = file.filename().string();
    return CountDigits(name) == kDigits && name.substr(kDigits) == ".json";
}

std::string SourceIn(std::string_view text) {
    constexpr std::string_view kKey = "\n  \"source\": ";
    const std::size_t begin = text.find(kKey);
    if (begin == std::string_view::npos) return {};
    const std::string_view line = text.substr(begin + kKey.size());
    const std::size_t end = line.find("\",\n");
    if (end == std::string_view::npos) return {};
    const nlohmann::json source = nlohmann::json::parse(line.substr(0, end + 1), nullptr, false);
    return source.is_string() ? source.get<std::string>() : std::string();
}

std::string SourceOf(const fs::path& document) {
    try {
        const std::vector<std::uint8_t> bytes = base::ReadFileBytes(document, kBeginning);
        return SourceIn({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } catch (const std::runtime_error&) {
        return {};
    }
}

}  // namespace

std::string SourceOfDocuments(const std::string& directory) {
    std::error_code error;
    for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
        if (!IsDocument(it->path())) continue;
        const fs::path source = SourceOf(it->path());
        if (source.is_absolute()) return source.parent_path().string();
    }
    return {};
}

}  // namespace zel::cli
