// A library of 100,000 recordings and a directory of 10,000 messages, beside an empty library and reading the files.
#include <cstdlib>
#include <filesystem>

#include <benchmark/benchmark.h>

#include "base/text.h"
#include "run_program.h"
#include "sample_library.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

constexpr int kRecordings = 100'000;
constexpr int kMessages = 10'000;

struct Libraries : ScratchDisk {
    Libraries() {
        MakeSampleLibrary(large, kRecordings);
        MakeSampleLibrary(empty, 0);
    }
    std::string large = Path("large.zellib"), empty = Path("empty.zellib");
};

const Libraries& SharedLibraries() {
    static const Libraries libraries;
    return libraries;
}

struct Messages : ScratchDisk {
    Messages() {
        // Of the size that most messages have.
        for (int number = 0; number < kMessages; ++number)
            WriteMessage(static_cast<unsigned>(number), FullMessage(4, 12, 1));
    }
    std::string directory = Path("MESSAGES");
};

const std::string& SharedMessages() {
    static const Messages messages;
    return messages.directory;
}

void RunRepeatedly(benchmark::State& state, const std::vector<std::string>& words) {
    for (auto _ : state) {
        const ProgramResult result = RunProgram(words);
        if (!result.succeeded) state.SkipWithError("the program failed");
        state.SetIterationTime(result.processor_seconds);
    }
}

void ListEmpty(benchmark::State& state) {
    RunRepeatedly(state, {COMMAND_PROGRAM, "library", "list", SharedLibraries().empty, "--limit", "50"});
}
BENCHMARK(ListEmpty)->Name("library/empty")->Unit(benchmark::kMillisecond)->Iterations(20)->UseManualTime();

void ListPage(benchmark::State& state) {
    RunRepeatedly(state, {COMMAND_PROGRAM, "library", "list", SharedLibraries().large, "--limit", "50", "--after",
                          "DISK0007/1234"});
}
BENCHMARK(ListPage)->Name("library/list")->Unit(benchmark::kMillisecond)->Iterations(20)->UseManualTime();

void Search(benchmark::State& state, const char* word) {
    RunRepeatedly(state, {COMMAND_PROGRAM, "library", "search", SharedLibraries().large, word, "--limit", "50"});
}
BENCHMARK_CAPTURE(Search, rare, kRareWord)
    ->Name("library/search")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20)
    ->UseManualTime();
BENCHMARK_CAPTURE(Search, seldom, kSeldomWord)
    ->Name("library/search_more")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20)
    ->UseManualTime();
BENCHMARK_CAPTURE(Search, common, kCommonWord)
    ->Name("library/search_all")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5)
    ->UseManualTime();

#ifdef DESKTOP_START
void StartDesktop(benchmark::State& state, std::string Libraries::*library) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    RunRepeatedly(state, {DESKTOP_START, SharedLibraries().*library});
}
BENCHMARK_CAPTURE(StartDesktop, empty, &Libraries::empty)
    ->Name("library/desktop_empty")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5)
    ->UseManualTime();
BENCHMARK_CAPTURE(StartDesktop, large, &Libraries::large)
    ->Name("library/desktop")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5)
    ->UseManualTime();
#endif

void InspectDirectory(benchmark::State& state) {
    RunRepeatedly(state, {COMMAND_PROGRAM, "info", SharedMessages()});
}
BENCHMARK(InspectDirectory)->Name("info/directory")->Unit(benchmark::kMillisecond)->Iterations(3)->UseManualTime();

void ReadDirectory(benchmark::State& state) {
    RunRepeatedly(state, {"/bin/sh", "-c", "find \"$0\" -type f -print0 | xargs -0 cat", SharedMessages()});
}
BENCHMARK(ReadDirectory)->Name("info/cat")->Unit(benchmark::kMillisecond)->Iterations(3)->UseManualTime();

}  // namespace
