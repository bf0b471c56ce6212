#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "samples/font_writer.h"
#include "samples/message_writer.h"

namespace zel::limits {

/// A scratch directory in the form of a disk, for files that announce or contain far more than they need. Removed with
/// the object.
class HostileDisk {
  public:
    HostileDisk();
    ~HostileDisk();
    HostileDisk(const HostileDisk&) = delete;
    HostileDisk& operator=(const HostileDisk&) = delete;

    const std::filesystem::path& Path() const noexcept { return m_path; }

    /// Writes MESSAGES/.0001.
    /// @param size  of the file in bytes, if it is to be larger: the rest is a hole, which takes no space.
    void WriteMessage(const samples::MessageFile& message, std::uintmax_t size = 0) const;
    void WriteMessage(const samples::Bytes& bytes, std::uintmax_t size = 0) const;
    /// Writes MACHINE/.<number>. @param size  as for a message.
    void WriteFont(unsigned number, const samples::FontFile& font, std::uintmax_t size = 0) const;
    /// Writes a name list with a hole after its text.
    void WriteList(std::string_view name, std::string_view text, std::uintmax_t size) const;
    /// Writes the library `lib` with one recording, number 1 of the disk without a name.
    /// @param document  the recorded document.
    /// @param picture   the recorded picture, as PNG.
    void WriteLibrary(const std::string& document, const std::string& picture = {}) const;

  private:
    void Write(const std::filesystem::path& name, const samples::Bytes& bytes, std::uintmax_t size) const;

    std::filesystem::path m_path;
};

}  // namespace zel::limits
