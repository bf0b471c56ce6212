// Batches over a whole disk, with and without pictures.
#include <atomic>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/text.h"
#include "host/picture/picture_composer.h"
#include "host/picture/png_writer.h"
#include "host/recorder/batch_recorder.h"
#include "host/run/batch_run.h"
#include "platform/script/memory_settings_store.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

constexpr unsigned kMessages = 1000, kFonts = 4;
/// Fewer messages with pictures, to keep the run short.
constexpr unsigned kPictures = 300;

class BatchDisk {
  public:
    BatchDisk() {
        for (unsigned font = 1; font <= kFonts; ++font)
            m_disk.WriteFont(font, RunCodedFont("Font " + std::to_string(font)));
        for (unsigned message = 1; message <= kMessages; ++message)
            m_disk.WriteMessage(message, FullMessage(8, 24, kFonts));
        seam::SetSettingsStore(&m_settings);
    }
    ~BatchDisk() { seam::SetSettingsStore(nullptr); }

    std::string Path(std::string_view name = "") const { return m_disk.Path(name); }
    run::BatchRequest Request(unsigned last) const {
        run::BatchRequest request;
        request.disk = Path();
        request.ranges = {{"1", std::to_string(last)}};
        return request;
    }

  private:
    ScratchDisk m_disk;
    script::MemorySettingsStore m_settings;
};

const BatchDisk& SharedDisk() {
    static const BatchDisk disk;
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
    const run::BatchRequest request = SharedDisk().Request(kMessages);
    for (auto _ : state) {
        Counter counter;
        host::HostObserver* const observers[] = {&counter};
        run::RunBatch(request, observers);
        if (counter.recorded != kMessages) state.SkipWithError("a message was not recorded");
    }
}
BENCHMARK(RunNumbers)->Name("batch/plain/module")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void ReadNumbers(benchmark::State& state) {
    const BatchDisk& disk = SharedDisk();
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

void RecordPictures(benchmark::State& state) {
    const run::BatchRequest request = SharedDisk().Request(kPictures);
    for (auto _ : state) {
        const ScratchDisk out;
        recorder::FileDigests digests;
        recorder::RecorderOptions options;
        options.library = out.Path("library");
        options.context.font_directory = SharedDisk().Path("MACHINE");
        options.jobs = std::thread::hardware_concurrency();
        unsigned recorded = 0;
        recorder::BatchRecorder recorder(options, digests, [&recorded](const recorder::RecordedItem&) { ++recorded; });
        host::HostObserver* const observers[] = {&recorder.Pictures(), &recorder};
        run::RunBatch(request, observers);
        recorder.Finish();
        if (recorded != kPictures) state.SkipWithError("a message was not recorded");
    }
}
BENCHMARK(RecordPictures)->Name("batch/pictures/module")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

/// The pictures of the first messages.
class Pictures : public host::HostObserver {
  public:
    Pictures() {
        host::HostObserver* const observers[] = {&m_composer, this};
        run::RunBatch(SharedDisk().Request(kPictures), observers);
    }
    void OnMessage(const document::MessageRecord& /*message*/) override {
        if (auto picture = m_composer.TakePicture()) taken.push_back(std::move(*picture));
    }
    std::vector<picture::Picture> taken;

  private:
    picture::PictureComposer m_composer;
};

void EncodeOnly(benchmark::State& state) {
    static const Pictures pictures;
    if (pictures.taken.size() != kPictures) state.SkipWithError("a picture is missing");
    for (auto _ : state) {
        std::atomic<std::size_t> next = 0;
        std::vector<std::jthread> threads;
        for (unsigned thread = 0; thread < std::thread::hardware_concurrency(); ++thread) {
            threads.emplace_back([&next] {
                for (std::size_t i = next++; i < pictures.taken.size(); i = next++)
                    benchmark::DoNotOptimize(picture::EncodePng(pictures.taken[i]));
            });
        }
    }
}
BENCHMARK(EncodeOnly)->Name("batch/pictures/encoder")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

}  // namespace
