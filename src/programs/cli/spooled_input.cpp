#include "programs/cli/spooled_input.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/whole_file.h"
#include "programs/cli/command.h"
#include "programs/cli/standard_input.h"

namespace zel::cli {

namespace fs = std::filesystem;

namespace {

std::vector<std::uint8_t> ReadWhole() {
    try {
        return ReadStandardInput();
    } catch (const std::runtime_error& error) {
        throw CommandError(std::string(kStandardInput) + ": " + error.what());
    }
}

}  // namespace

SpooledInput::SpooledInput(const std::string& directory) {
    const std::vector<std::uint8_t> bytes = ReadWhole();
    std::error_code error;
    std::string disk = (fs::temp_directory_path(error) / "zeltrans-XXXXXX").string();
    if (error || mkdtemp(disk.data()) == nullptr) {
        throw CommandError(disk + ": can't be made for standard input: " +
                           (error ? error : std::error_code(errno, std::generic_category())).message());
    }
    m_disk = disk;
    for (const char* name : {"MESSAGES", "MACHINE"}) fs::create_directory(m_disk / name, error);
    m_path = m_disk / directory / ".0000";
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!error) error = base::TryWriteWholeFile(m_path, text, base::Durability::kUnsynced);
    if (!error) return;
    std::error_code ignored;
    fs::remove_all(m_disk, ignored);
    throw CommandError(m_path + ": can't be written for standard input: " + error.message());
}

SpooledInput::~SpooledInput() {
    std::error_code ignored;
    fs::remove_all(m_disk, ignored);
}

std::string SpooledInput::Shown(std::string text) const {
    for (std::size_t at = text.find(m_path); at != std::string::npos; at = text.find(m_path, at))
        text.replace(at, m_path.size(), kStandardInput);
    return text;
}

}  // namespace zel::cli
