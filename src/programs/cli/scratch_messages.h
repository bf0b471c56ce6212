#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <utility>

namespace zel::cli {

/// A message file that exists as long as this object.
class ScratchMessage {
  public:
    explicit ScratchMessage(std::string path) : m_path(std::move(path)) {}
    ScratchMessage(ScratchMessage&& other) noexcept : m_path(std::exchange(other.m_path, {})) {}
    ScratchMessage& operator=(ScratchMessage&& other) noexcept {
        std::swap(m_path, other.m_path);
        return *this;
    }
    ~ScratchMessage();

    const std::string& Path() const noexcept { return m_path; }

  private:
    std::string m_path;
};

/// A directory for message files that are imported and then removed, below the directory for temporary files. It is
/// removed with this object.
class ScratchMessages {
  public:
    /// @throws CommandError if it can't be made.
    ScratchMessages();
    ~ScratchMessages();
    ScratchMessages(const ScratchMessages&) = delete;
    ScratchMessages& operator=(const ScratchMessages&) = delete;

    /// Absolute.
    const std::string& Directory() const noexcept { return m_directory; }

    /// Writes a message file with the name of a number.
    /// @throws std::runtime_error
    ScratchMessage Write(int number, std::span<const std::uint8_t> bytes) const;

  private:
    std::filesystem::path m_disk;
    std::string m_directory;
};

}  // namespace zel::cli
