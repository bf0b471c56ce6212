#include "run_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

ProgramResult RunProgram(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int spawned = ::posix_spawn(&child, arguments[0], &files, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&files);
    int status = 0;
    struct rusage usage {};
    if (spawned != 0 || ::wait4(child, &status, 0, &usage) != child) return {};
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {status == 0, seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss};
}
