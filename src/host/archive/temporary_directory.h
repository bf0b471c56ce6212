#pragma once

#include <filesystem>

namespace zel::archive {

/// A directory that no other user can read, in the system's directory for such ($TMPDIR). It is removed with everything
/// in it.
class TemporaryDirectory {
  public:
    /// @throws std::runtime_error with the directory and the reason.
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// Absolute.
    const std::filesystem::path& Path() const noexcept { return m_path; }

  private:
    std::filesystem::path m_path;
};

}  // namespace zel::archive
