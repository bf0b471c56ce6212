#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "base/file_descriptor.h"

namespace zel::base {

/// A program that runs beside this one, reads what it is given on its standard input, and writes to one file. Nothing
/// is interpreted by a shell. It is in a process group of its own, so that a Ctrl-C at the terminal doesn't reach it.
/// Used by one thread.
class ChildProcess {
  public:
    /// The descriptor of the output in the program.
    static constexpr int kOutput = 3;

    /// Starts a program, with /dev/null as its standard output.
    /// @param program    a path.
    /// @param arguments  without the program's name.
    /// @param output     passed on as kOutput; stays the caller's.
    /// @throws std::system_error
    ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments, int output);
    /// Ends the program at once, if Finish was not called.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Writes to the program's standard input.
    /// @return false when the program reads no more.
    /// @throws std::system_error
    bool Write(std::string_view bytes);

    struct End {
        /// As waitpid reports it.
        int status = 0;
        /// The end of what the program wrote to its standard error; at most kLongestWords bytes of any kind.
        std::string words;

        bool Succeeded() const noexcept { return status == 0; }
        /// "exit code 1" or "signal 9".
        std::string Text() const;
    };
    /// Ends the program's standard input and waits for the program. Called once, last.
    End Finish();

    static constexpr std::size_t kLongestWords = 4096;

  private:
    bool HasEnded(bool wait) noexcept;
    bool ReadWords();

    pid_t m_process = -1;
    std::optional<int> m_status;
    FileDescriptor m_input, m_errors;
    std::string m_words;
};

/// The program of this name in the first directory of the PATH that has one; empty if none has. Relative directories
/// are not searched.
std::filesystem::path FindProgram(std::string_view name);

}  // namespace zel::base
