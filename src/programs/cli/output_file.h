#pragma once

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>

namespace zel::cli {

/// What an output contains. Binary outputs are not written to a terminal.
enum class OutputContent { kText, kBinary };

/// An output file that appears whole or not at all, even if the machine stops. A device, a pipe or standard output is
/// written directly. Missing directories of its path are made at once, and stay.
class OutputFile {
  public:
    /// @param path  "-" is standard output.
    /// @throws CommandError if the file cannot be written.
    explicit OutputFile(const std::string& path, OutputContent content = OutputContent::kText);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    std::ostream& Stream() noexcept { return m_stream; }

    /// Writes a complete text.
    /// @throws CommandError with the reason.
    void Write(std::string_view text);

    /// Gives the file its name.
    /// @throws CommandError if not everything could be written; an existing file is then unchanged.
    void Commit();

  private:
    class Target;

    std::string m_path;  // as the user gave it
    /// None for standard output.
    std::unique_ptr<Target> m_target;
    std::ostream m_stream;
};

/// The target of a link, which need not exist, or the path itself: the file that is written under the path.
/// @param error  receives the reason when a link cannot be followed; the result is undefined then.
std::filesystem::path LinkTarget(const std::string& path, std::error_code& error);

/// Checks that a regular file can be written under a path, making the directories that are missing, or that standard
/// output takes a binary output for "-".
/// @return the path, or the target of a link of that path.
/// @throws CommandError if it cannot, or if it is another kind of file.
std::string CheckRegularOutput(const std::string& path);

/// Writes a binary output.
/// @throws CommandError with the reason.
void WriteBinaryOutput(const std::string& path, std::string_view bytes);

}  // namespace zel::cli
