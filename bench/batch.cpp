// Batches over a whole disk, with and without pictures.
#include <filesystem>
#include <optional>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/text.h"
#include "host/picture/picture_composer.h"
#include "host/picture/png_writer.h"
#include "host/recorder/batch_recorder.h"
#include "host/run/batch_run.h"
#include "platform/script/memory_settings_store.h"
#include "run_program.h"
#include "samples/disk/demo_disk.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

constexpr unsigned kMessages = 1000, kFonts = 4;
/// Fewer messages with pictures, to keep the run short.
constexpr unsigned kPictures = 300;

/// A disk for batches, and the settings for them.
class BatchDisk {
  public:
    BatchDisk() { seam::SetSettingsStore(&m_settings); }
    ~BatchDisk() { seam::SetSettingsStore(nullptr); }

    std::string Path(std::string_view name = "") const { return m_disk.Path(name); }
    run::BatchRequest Request(unsigned last) const {
        run::BatchRequest request;
        request.disk = Path();
        request.ranges = {{"1", std::to_string(last)}};
        return request;
    }

  protected:
    ScratchDisk m_disk;

  private:
    script::MemorySettingsStore m_settings;
};

/// Messages of 192 small characters, all alike.
struct PlainDisk : BatchDisk {
    PlainDisk() {
        for (unsigned font = 1; font <= kFonts; ++font)
            m_disk.WriteFont(font, RunCodedFont("Font " + std::to_string(font)));
        for (unsigned message = 1; message <= kMessages; ++message)
            m_disk.WriteMessage(message, FullMessage(8, 24, kFonts));
    }
};

/// The messages of the demonstration disk, again and again. It has large characters, edges, pictures in fonts and
/// several palettes.
struct DemonstrationDisk : BatchDisk {
    DemonstrationDisk() {
        // Without the last one, which is no message but a picture.
        constexpr unsigned kOfDisk = 20;
        samples::WriteDemonstrationDisk(Path());
        for (unsigned number = kOfDisk + 1; number <= kPictures; ++number) {
            const auto file = [this](unsigned of) { return Path("MESSAGES/" + base::NumberedName(of)); };
            std::filesystem::copy_file(file((number - 1) % kOfDisk + 1), file(number),
                                       std::filesystem::copy_options::overwrite_existing);
        }
    }
};

template <class Disk>
const BatchDisk& Shared() {
    static const Disk disk;
    return disk;
}

/// Counts the recorded messages.
struct Counter : host::HostObserver {
    void OnBatchItem(const host::BatchItem& item) override {
        recorded += item.outcome == host::ItemOutcome::kRecorded ? 1U : 0U;
    }
    unsigned recorded = 0;
};

void RunNumbers(benchmark::State& state) {
    const run::BatchRequest request = Shared<PlainDisk>().Request(kMessages);
    for (auto _ : state) {
        Counter counter;
        host::HostObserver* const observers[] = {&counter};
        run::RunBatch(request, observers);
        if (counter.recorded != kMessages) state.SkipWithError("a message was not recorded");
    }
}
BENCHMARK(RunNumbers)->Name("batch/plain/module")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void ReadNumbers(benchmark::State& state) {
    const BatchDisk& disk = Shared<PlainDisk>();
    std::string buffer;
    for (auto _ : state) {
        for (unsigned number = 1; number <= kMessages; ++number) {
            ReadWholeFile(disk.Path("MESSAGES/" + base::NumberedName(number)).c_str(), buffer);
            for (unsigned font = 1; font <= kFonts; ++font)
                ReadWholeFile(disk.Path("MACHINE/" + base::NumberedName(font)).c_str(), buffer);
        }
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(ReadNumbers)->Name("batch/plain/raw")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

template <class Disk>
void RecordPictures(benchmark::State& state) {
    const BatchDisk& disk = Shared<Disk>();
    const run::BatchRequest request = disk.Request(kPictures);
    for (auto _ : state) {
        state.PauseTiming();
        std::optional<ScratchDisk> out(std::in_place);
        state.ResumeTiming();
        recorder::FileDigests digests;
        recorder::RecorderOptions options;
        options.library = out->Path("library");
        options.context.font_directory = disk.Path("MACHINE");
        options.jobs = std::thread::hardware_concurrency();
        unsigned recorded = 0;
        {
            recorder::BatchRecorder recorder(options, digests,
                                             [&recorded](const recorder::RecordedItem&) { ++recorded; });
            host::HostObserver* const observers[] = {&recorder.Pictures(), &recorder};
            run::RunBatch(request, observers);
            recorder.Finish();
        }
        if (recorded != kPictures) state.SkipWithError("a message was not recorded");
        state.PauseTiming();
        out.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(RecordPictures<PlainDisk>)
    ->Name("batch/pictures/module")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK(RecordPictures<DemonstrationDisk>)
    ->Name("batch/demonstration/module")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();

/// The pictures of the first messages, no more than the processor's cache holds: a batch encodes each just after it is
/// composed.
class Pictures : public host::HostObserver {
  public:
    explicit Pictures(const BatchDisk& disk) {
        host::HostObserver* const observers[] = {&m_composer, this};
        run::RunBatch(disk.Request(kKept), observers);
    }
    void OnMessage(const document::MessageRecord& /*message*/) override {
        if (auto picture = m_composer.TakePicture()) taken.push_back(std::move(*picture));
    }
    static constexpr unsigned kKept = 20;
    std::vector<picture::Picture> taken;

  private:
    picture::PictureComposer m_composer;
};

template <class Disk>
void EncodeOnly(benchmark::State& state) {
    static const Pictures pictures(Shared<Disk>());
    if (pictures.taken.size() != Pictures::kKept) state.SkipWithError("a picture is missing");
    for (auto _ : state) {
        for (unsigned n = 0; n < kPictures; ++n)
            benchmark::DoNotOptimize(picture::EncodePng(pictures.taken[n % Pictures::kKept]));
    }
}
BENCHMARK(EncodeOnly<PlainDisk>)
    ->Name("batch/pictures/encoder")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK(EncodeOnly<DemonstrationDisk>)
    ->Name("batch/demonstration/encoder")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();

/// The command's batch with a library, by the clock.
void Jobs(benchmark::State& state, const char* jobs) {
    const BatchDisk& disk = Shared<DemonstrationDisk>();
    for (auto _ : state) {
        state.PauseTiming();
        std::optional<ScratchDisk> out(std::in_place);
        state.ResumeTiming();
        const ProgramResult result =
            RunProgram({COMMAND_PROGRAM, "batch", disk.Path(), "1", std::to_string(kPictures), "--library",
                        out->Path("library"), "--settings", out->Path("settings"), "--jobs", jobs});
        if (!result.succeeded) state.SkipWithError("the batch failed");
        state.PauseTiming();
        out.reset();
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(Jobs, one, "1")->Name("batch_jobs/one")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Jobs, two, "2")->Name("batch_jobs/two")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
