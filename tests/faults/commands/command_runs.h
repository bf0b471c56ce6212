#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

#include "base/file_descriptor.h"
#include "faults/commands/protocol.h"

namespace zel::failing {

/// Runs a command in a directory, again and again, with failing calls of the system.
class CommandRuns {
  public:
    /// @param arguments  without the program's name. Output goes to run.out and run.err of the directory, whose
    ///                   run.settings has the settings.
    CommandRuns(const std::filesystem::path& directory, const std::vector<std::string>& arguments);
    ~CommandRuns();
    CommandRuns(const CommandRuns&) = delete;
    CommandRuns& operator=(const CommandRuns&) = delete;

    Reply Run(const Request& request);

  private:
    base::FileDescriptor m_socket;
    pid_t m_process = -1;
};

/// The files of a directory and its subdirectories, by their relative path; those of directories end in '/'. Without
/// run.out and run.err.
using Tree = std::map<std::string, std::string>;

Tree ReadTree(const std::filesystem::path& directory);

/// Makes the directory what it was.
void Restore(const std::filesystem::path& directory, const Tree& tree);

}  // namespace zel::failing
