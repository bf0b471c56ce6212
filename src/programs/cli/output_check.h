#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zel::cli {

/// The files of one run of a command, as the user named them.
struct CommandFiles {
    struct File {
        std::string path;
        /// What it is, to follow "it is": "the message", "the file of --png".
        std::string role;
    };
    struct Directory {
        std::string path;
        /// The names that the command gives to files in it.
        std::function<bool(std::string_view name)> is_written;
    };

    /// A file that is read. One that the module reads is found as the module finds it, without regard to case.
    void Read(const std::string& path, const std::string& role) { inputs.push_back({path, role}); }
    void ReadByModule(const std::string& path, const std::string& role);
    /// A directory in which the module looks for messages or fonts.
    void SearchByModule(const std::string& path);
    /// The two lists in a directory of --maps; may be empty.
    void ReadNameLists(const std::optional<std::string>& directory);
    /// The stored settings. @param directory  of --settings; empty: the user's.
    void ReadSettings(const std::optional<std::string>& directory);
    /// A library, with the files that belong to it while it is open.
    void ReadLibrary(const std::string& path, const std::string& role = "the library");
    void WriteLibrary(const std::string& path);
    /// @param path    empty if the option is not given; "-" is standard output.
    /// @param option  such as "--png".
    void Write(const std::optional<std::string>& path, const std::string& option);
    void WriteInto(const std::string& directory, std::function<bool(std::string_view name)> is_written) {
        output_directories.push_back({directory, std::move(is_written)});
    }

    /// Outputs may be files of a disk, for a command that makes such files.
    bool may_write_disks = false;
    std::vector<File> inputs, outputs;
    std::vector<std::string> searched_directories;
    std::vector<Directory> output_directories;
};

/// Checks that no output would destroy what the command reads, a file of a disk, or another output. Files are compared
/// by device and inode, so that links and other spellings of a path make no difference. Devices and pipes are no files.
/// A disk's files are those below a directory MESSAGES or MACHINE that the command uses, or that has the other one
/// beside it. In a directory of another name, the files named by a number are messages or fonts.
/// @throws CommandError for the first output that must not be written.
void CheckOutputs(const CommandFiles& files);

}  // namespace zel::cli
