#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "files/font_writer.h"
#include "files/message_writer.h"
#include "samples/scratch_directory.h"

namespace zel::limits {

/// A scratch directory in the form of a disk, for files that announce or contain far more than they need.
class HostileDisk {
  public:
    HostileDisk();

    const std::filesystem::path& Path() const noexcept { return m_scratch.Path(); }

    /// Writes MESSAGES/.0001.
    /// @param size  of the file in bytes, if it is to be larger: the rest is a hole, which takes no space.
    void WriteMessage(const files::MessageFile& message, std::uintmax_t size = 0) const;
    /// Writes any file. @param size  as for a message.
    void Write(const std::filesystem::path& name, const files::Bytes& bytes, std::uintmax_t size) const;
    /// Writes MACHINE/.<number>. @param size  as for a message.
    void WriteFont(unsigned number, const files::FontFile& font, std::uintmax_t size = 0) const;
    /// Writes the library `lib` with one recording, number 1 of the disk without a name.
    /// @param document  the recorded document.
    /// @param picture   the recorded picture, as PNG.
    void WriteLibrary(const std::string& document, const std::string& picture = {}) const;

  private:
    samples_test::ScratchDirectory m_scratch;
};

}  // namespace zel::limits
