#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "samples/scratch_directory.h"
#include "samples/write_file.h"
#include "support/sample_files.h"

namespace zel::test {

/// The result of a command.
struct CommandResult {
    int exit_code = -1;
    std::string out;
    std::string err;

    int ErrorLines() const { return static_cast<int>(std::ranges::count(err, '\n')); }
};

/// A scratch directory with a blank and a quote in its name. It is the current directory of the command and contains a
/// small disk: the message .0012, its font .0012 but not its font 31, and the RGBA file .0020.
class CommandDisk {
  public:
    CommandDisk() {
        samples::WriteWholeFile(m_path / "MESSAGES/.0012", files::WriteMessage(GoodMessage()));
        samples::WriteWholeFile(m_path / "MACHINE/.0012", files::WriteFont(GoodFont()));
        const files::StoredGlyph picture{.width = 4, .height = 4, .pixels = files::Bytes(64, 9)};
        samples::WriteWholeFile(m_path / "MESSAGES/.0020", files::WriteRgbaFile(714, picture));
    }

    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

    std::string Read(const std::string& name) const { return samples_test::ReadAll(m_path / name); }

    /// The names in the directory itself, except the files that Shell creates.
    std::vector<std::string> Names() const {
        std::vector<std::string> names = samples_test::NamesIn(m_path);
        std::erase_if(names, [](const std::string& name) { return name.starts_with("run."); });
        return names;
    }

    /// A shell script that runs a line in the directory, where `zeltrans` is the command.
    std::string Script(const std::string& line) const {
        return "cd " + Quoted(m_path.string()) + " && export XDG_CONFIG_HOME=\"$PWD/run.settings\" && zeltrans() { " +
               Quoted(ZELTRANS_COMMAND) + " \"$@\"; } && { " + line + "\n}";
    }

    CommandResult Shell(const std::string& line) const {
        const int status = std::system((Script(line) + " >run.out 2>run.err </dev/null").c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read("run.out"), Read("run.err")};
    }

    /// The command for Shell, run without the rights of root, which no permission stops. Makes the directory accessible
    /// to it. Empty if that is not possible here.
    std::string UnprivilegedCommand() const {
        const std::string command =
            (geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups " : "") + Quoted(ZELTRANS_COMMAND);
        return Shell("chmod -R a+rwX .. && " + command + " --version").exit_code == 0 ? command : std::string();
    }

    static std::string Quoted(const std::string& text) {
        std::string quoted = "'";
        for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
        return quoted + "'";
    }

  private:
    samples_test::ScratchDirectory m_scratch;
    const std::filesystem::path m_path = m_scratch.Path() / "zeltrans it's";
};

}  // namespace zel::test
