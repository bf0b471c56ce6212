#pragma once

#include <fstream>
#include <iosfwd>
#include <string>
#include <string_view>

namespace zel::cli {

/// A file that appears whole or not at all: written under another name beside it, which takes its place at the end. A
/// device or a pipe is written as it stands.
class OutputFile {
  public:
    /// @throws CommandError when the file can't be written.
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    std::ostream& Stream() noexcept { return m_stream; }

    /// Writes a text that is there as a whole.
    /// @throws CommandError with the reason.
    void Write(std::string_view text);

    /// @throws CommandError when not everything could be written; the file is then as it was.
    void Commit();

  private:
    std::string m_path;    // as the user gave it
    std::string m_target;  // what links lead to
    std::string m_draft;   // empty for a device
    std::ofstream m_stream;
};

/// Sees to it that a plain file can be written under a path.
/// @return the path, or what a link of that path leads to.
/// @throws CommandError when it can't, or when something else is there.
std::string CheckPlainOutput(const std::string& path);

}  // namespace zel::cli
