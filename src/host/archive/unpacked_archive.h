#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/archive/archive_stream.h"
#include "host/archive/temporary_directory.h"

namespace zel::archive {

/// What is unpacked of one archive at most; far more than a box of disks needs.
struct UnpackLimits {
    /// Bytes of one file.
    std::uint64_t file = std::uint64_t{256} << 20;
    /// Bytes of all files together, and of what is decompressed to get at them.
    std::uint64_t total = std::uint64_t{4} << 30;
    /// Bytes that are unpacked for each byte of the archive, beyond the first ones.
    std::uint64_t ratio = 200;
    std::uint64_t free_of_ratio = std::uint64_t{256} << 20;
    std::size_t entries = 200000;
};

/// Which files are unpacked.
enum class Wanted {
    /// Those in folders MESSAGES and MACHINE.
    kDisks,
    kAll,
};

/// The files of an archive in a temporary directory, with their modification times. Nothing is written outside that
/// directory. Links, special files, encrypted files and names that are not safe are refused, each for itself; a limit
/// or damage ends the reading, and what precedes it is kept.
class UnpackedArchive {
  public:
    /// @param file  a regular file.
    /// @param stop  polled while the archive is read; true ends that. May be empty.
    /// @throws std::runtime_error with the reason, without the file's name, if it is no archive or can't be read at
    ///         all, or if there is no room to unpack it.
    UnpackedArchive(const std::filesystem::path& file, Wanted wanted, const std::function<bool()>& stop = {},
                    const UnpackLimits& limits = {});

    /// The directory of the files, in folders as in the archive.
    const std::filesystem::path& Root() const noexcept { return m_directory.Path(); }

    /// One line for each entry that is refused: its name, a colon and the reason. Of many, the first ones.
    const std::vector<std::string>& Refused() const noexcept { return m_refused; }
    std::size_t RefusedCount() const noexcept { return m_refused_count; }
    /// Why not all of the archive was read; empty if it was.
    const std::string& Failure() const noexcept { return m_failure; }
    /// Nothing was refused, and all of it was read.
    bool IsWhole() const noexcept { return m_refused_count == 0 && m_failure.empty() && !m_stopped; }
    bool WasStopped() const noexcept { return m_stopped; }

  private:
    class Reader;

    TemporaryDirectory m_directory;
    std::vector<std::string> m_refused;
    std::size_t m_refused_count = 0;
    std::string m_failure;
    bool m_stopped = false;
};

}  // namespace zel::archive
