#pragma once

#include <filesystem>
#include <string>

namespace zel::cli {

/// Standard input as a file that the module can open, in a disk of its own below the directory for temporary files. It
/// is removed with this object.
class SpooledInput {
  public:
    /// @param directory  of the file on the disk: "MESSAGES" or "MACHINE".
    /// @throws CommandError if standard input can't be read or the file can't be written.
    explicit SpooledInput(const std::string& directory);
    ~SpooledInput();
    SpooledInput(const SpooledInput&) = delete;
    SpooledInput& operator=(const SpooledInput&) = delete;

    const std::string& Path() const noexcept { return m_path; }
    /// A text about the file, as one about standard input.
    std::string Shown(std::string text) const;

  private:
    std::filesystem::path m_disk;
    std::string m_path;
};

}  // namespace zel::cli
