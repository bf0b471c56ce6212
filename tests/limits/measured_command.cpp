#include "limits/measured_command.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
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

/// In the child: becomes the command.
[[noreturn]] void Become(std::vector<char*>& arguments, const std::string& directory, const std::string& settings,
                         unsigned most_seconds) {
    const rlimit time{most_seconds, most_seconds};
    const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (setrlimit(RLIMIT_CPU, &time) == 0 && chdir(directory.c_str()) == 0 && null >= 0) {
        for (int descriptor = 0; descriptor <= 2; ++descriptor) dup2(null, descriptor);
        setenv("XDG_CONFIG_HOME", settings.c_str(), 1);
        execv(arguments.front(), arguments.data());
    }
    _exit(127);
}

}  // namespace

Cost MeasureCommand(const std::string& command, const std::vector<std::string>& arguments,
                    const std::filesystem::path& directory, unsigned most_seconds) {
    std::vector<std::string> texts{command};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const std::string native = directory.string(), settings = native + "/settings";
    malloc_trim(0);  // the command's largest size begins with that of this process
    const pid_t child = fork();
    if (child == 0) Become(pointers, native, settings, most_seconds);
    int status = 0;
    rusage usage{};
    while (child > 0 && wait4(child, &status, 0, &usage) < 0) {
        if (errno != EINTR) throw std::system_error(errno, std::generic_category(), command);
    }
    if (child < 0) throw std::system_error(errno, std::generic_category(), command);
    return {Seconds(usage.ru_utime) + Seconds(usage.ru_stime), static_cast<double>(usage.ru_maxrss) / 1024,
            WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

}  // namespace zel::limits
