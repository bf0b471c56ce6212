// The command as a process: how long it takes, and how much memory a long batch needs.
#include <cstdlib>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "scratch_disk.h"

using namespace zel;

namespace {

struct Ended {
    bool well = false;
    double seconds = 0;    // of processor time
    long most_memory = 0;  // KiB
};

Ended RunProgram(const std::vector<std::string>& words) {
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

/// A small message with its font, and settings of its own.
struct Disk : ScratchDisk {
    Disk() {
        WriteMessage(1, FullMessage(4, 12, 1));
        WriteFont(1, RunCodedFont("Font"));
    }
};

void RunOften(benchmark::State& state, const std::vector<std::string>& words) {
    for (auto _ : state) {
        const Ended end = RunProgram(words);
        if (!end.well) state.SkipWithError("the program failed");
        state.SetIterationTime(end.seconds);
    }
}

void Empty(benchmark::State& state) {
    RunOften(state, {EMPTY_PROGRAM});
}
BENCHMARK(Empty)->Name("process/empty")->Unit(benchmark::kMicrosecond)->Iterations(50)->UseManualTime();

void Info(benchmark::State& state) {
    const Disk disk;
    RunOften(state, {COMMAND_PROGRAM, "info", disk.Path("MESSAGES/.0001")});
}
BENCHMARK(Info)->Name("process/info")->Unit(benchmark::kMicrosecond)->Iterations(50)->UseManualTime();

void Import(benchmark::State& state) {
    const Disk disk;
    RunOften(state, {COMMAND_PROGRAM, "import", disk.Path("MESSAGES/.0001"), "--settings", disk.Path("settings")});
}
BENCHMARK(Import)->Name("process/import")->Unit(benchmark::kMicrosecond)->Iterations(50)->UseManualTime();

/// What a batch of so many messages, recorded with their pictures, takes of memory at most.
void Memory(benchmark::State& state) {
    Disk disk;
    const auto last = static_cast<unsigned>(state.range(0));
    for (unsigned number = 2; number <= last; ++number)
        std::filesystem::create_symlink(".0001", disk.Path("MESSAGES/" + samples::NumberedName(number)));
    long most = 0;
    for (auto _ : state) {
        const Ended end = RunProgram({COMMAND_PROGRAM, "batch", disk.Path(), "1", std::to_string(last), "--library",
                                      disk.Path("library"), "--settings", disk.Path("settings")});
        if (!end.well) state.SkipWithError("the batch failed");
        most = end.most_memory;
    }
    state.counters["KiB"] = static_cast<double>(most);
}
BENCHMARK(Memory)->Name("memory")->Arg(10)->Arg(9999)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
