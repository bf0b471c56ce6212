#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/file_descriptor.h"

namespace zel::ftp {

/// A local file or directory cannot be used; what() is the reason, to print after its name and a colon.
class LocalError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A file that is being fetched: NAME.KEY.part until it is complete. Locked against a second fetch. SafeDirectory opens
/// it and must outlive it.
class PartFile {
  public:
    /// Bytes in the file, including those of an earlier fetch of the same remote file.
    std::uint64_t Size() const noexcept { return m_size; }

    /// @throws LocalError with the system's reason, as do the functions below.
    void Append(std::span<const std::uint8_t> bytes);
    void Reset();
    /// The last bytes of the file, at most `count`.
    std::vector<std::uint8_t> Tail(std::size_t count) const;

    /// Writes the file to the disk and renames it to NAME.
    /// @param overwrite  false: fails if a file of that name has appeared meanwhile.
    void Finish(bool overwrite);
    /// Removes the file.
    void Discard() noexcept;

  private:
    friend class SafeDirectory;
    PartFile(int directory, std::string name, std::string part_name);

    int m_directory;  // not owned
    std::string m_name, m_part_name;
    base::FileDescriptor m_file;
    std::uint64_t m_size = 0;
};

}  // namespace zel::ftp
