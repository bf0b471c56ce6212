// The command as a process: processor time, and the memory of a long batch.
#include <cstdlib>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/text.h"
#include "run_program.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

/// A disk with a small message and its font.
struct Disk : ScratchDisk {
    Disk() {
        WriteMessage(1, FullMessage(4, 12, 1));
        WriteFont(1, RunCodedFont("Font"));
    }
};

void RunRepeatedly(benchmark::State& state, const std::vector<std::string>& words) {
    for (auto _ : state) {
        const ProgramResult result = RunProgram(words);
        if (!result.succeeded) state.SkipWithError("the program failed");
        state.SetIterationTime(result.processor_seconds);
    }
}

void Empty(benchmark::State& state) {
    RunRepeatedly(state, {EMPTY_PROGRAM});
}
BENCHMARK(Empty)->Name("process/empty")->Unit(benchmark::kMicrosecond)->Iterations(50)->UseManualTime();

void Info(benchmark::State& state) {
    const Disk disk;
    RunRepeatedly(state, {COMMAND_PROGRAM, "info", disk.Path("MESSAGES/.0001")});
}
BENCHMARK(Info)->Name("process/info")->Unit(benchmark::kMicrosecond)->Iterations(50)->UseManualTime();

void Import(benchmark::State& state) {
    const Disk disk;
    RunRepeatedly(state, {COMMAND_PROGRAM, "import", disk.Path("MESSAGES/.0001"), "--settings", disk.Path("settings")});
}
BENCHMARK(Import)->Name("process/import")->Unit(benchmark::kMicrosecond)->Iterations(50)->UseManualTime();

/// Peak memory of a batch of this many messages, recorded with their pictures.
void Memory(benchmark::State& state, const char* jobs) {
    Disk disk;
    const auto last = static_cast<unsigned>(state.range(0));
    for (unsigned number = 2; number <= last; ++number)
        std::filesystem::create_symlink(".0001", disk.Path("MESSAGES/" + base::NumberedName(number)));
    long peak = 0;
    for (auto _ : state) {
        const ProgramResult result =
            RunProgram({COMMAND_PROGRAM, "batch", disk.Path(), "1", std::to_string(last), "--library",
                        disk.Path("library"), "--settings", disk.Path("settings"), "--jobs", jobs});
        if (!result.succeeded) state.SkipWithError("the batch failed");
        peak = result.peak_memory_kib;
    }
    state.counters["KiB"] = static_cast<double>(peak);
}
BENCHMARK_CAPTURE(Memory, two_jobs, "2")
    ->Name("memory")
    ->Arg(10)
    ->Arg(9999)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, one_job, "1")
    ->Name("memory_one_job")
    ->Arg(10)
    ->Arg(9999)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
