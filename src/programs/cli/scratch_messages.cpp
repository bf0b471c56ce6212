#include "programs/cli/scratch_messages.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "base/text.h"
#include "base/whole_file.h"
#include "programs/cli/command.h"

namespace zel::cli {

namespace fs = std::filesystem;

ScratchMessage::~ScratchMessage() {
    std::error_code ignored;
    if (!m_path.empty()) fs::remove(m_path, ignored);
}

ScratchMessages::ScratchMessages() {
    std::error_code error;
    std::string disk = (fs::temp_directory_path(error) / "zeltrans-XXXXXX").string();
    if (!error && mkdtemp(disk.data()) == nullptr) error = std::error_code(errno, std::generic_category());
    if (error) throw CommandError(disk + ": can't be made for the filled messages: " + error.message());
    m_disk = disk;
    m_directory = (m_disk / "MESSAGES").string();
    fs::create_directory(m_directory, error);
    if (error) throw CommandError(m_directory + ": can't be made for the filled messages: " + error.message());
}

ScratchMessages::~ScratchMessages() {
    std::error_code ignored;
    fs::remove_all(m_disk, ignored);
}

ScratchMessage ScratchMessages::Write(int number, std::span<const std::uint8_t> bytes) const {
    ScratchMessage message(m_directory + "/" + base::NumberedName(number));
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::error_code error = base::TryWriteWholeFile(message.Path(), text, base::Durability::kUnsynced);
    if (error) throw std::runtime_error(message.Path() + ": " + error.message());
    return message;
}

}  // namespace zel::cli
