#include "limits/measured_command.h"

#include <cerrno>
#include <system_error>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zel::limits {

namespace {

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

Cost MeasureCommand(const std::string& line, const std::filesystem::path& directory, unsigned most_seconds) {
    const std::string script = "cd '" + directory.string() +
                               "' && export XDG_CONFIG_HOME=\"$PWD/settings\" && ulimit -t " +
                               std::to_string(most_seconds) + " && exec " + line + " </dev/null >/dev/null 2>&1";
    malloc_trim(0);  // the command's largest size begins with that of this process
    const pid_t child = fork();
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", script.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) < 0)
        throw std::system_error(errno, std::generic_category(), line);
    return {Seconds(usage.ru_utime) + Seconds(usage.ru_stime), static_cast<double>(usage.ru_maxrss) / 1024,
            WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

}  // namespace zel::limits
