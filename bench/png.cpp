// PNG files of the demonstration disk's pictures, beside libpng. The benchmarks run on one core.
#include <cctype>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <png.h>

#include "host/picture/picture_composer.h"
#include "host/picture/png_writer.h"
#include "host/run/batch_run.h"
#include "platform/script/memory_settings_store.h"
#include "samples/disk/demo_disk.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

/// Takes the picture of each message.
class PictureTaker : public host::HostObserver {
  public:
    void OnSend(const host::SentMessage& sent) override { m_composer.OnSend(sent); }
    void OnChar(const host::SentCharacter& character) override { m_composer.OnChar(character); }
    void OnMessage(const document::MessageRecord& /*message*/) override {
        if (auto picture = m_composer.TakePicture()) taken.push_back(std::move(*picture));
    }
    std::vector<picture::Picture> taken;

  private:
    picture::PictureComposer m_composer;
};

/// The pictures of the demonstration disk.
std::vector<picture::Picture> DiskPictures() {
    const ScratchDisk disk;
    samples::WriteDemonstrationDisk(disk.Path());
    script::MemorySettingsStore settings;
    seam::SetSettingsStore(&settings);
    run::BatchRequest request;
    request.disk = disk.Path();
    for (const auto& entry : std::filesystem::directory_iterator(disk.Path("MESSAGES"))) {
        const std::string number = entry.path().filename().string().substr(1);
        if (!number.empty() && std::isdigit(static_cast<unsigned char>(number[0])) != 0)
            request.ranges.push_back({number, number});
    }
    PictureTaker pictures;
    host::HostObserver* const observers[] = {&pictures};
    run::RunBatch(request, observers);
    seam::SetSettingsStore(nullptr);
    if (pictures.taken.empty()) throw std::runtime_error("the demonstration disk has no pictures");
    return std::move(pictures.taken);
}

/// libpng with one of its levels, and its own choice of filters or none.
struct Libpng {
    int level = -1;
    bool filters = true;

    std::string operator()(const picture::Picture& picture) const {
        std::string bytes;
        png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        if (setjmp(png_jmpbuf(png)) != 0) std::abort();
        const auto append = [](png_structp to, png_bytep more, std::size_t size) {
            static_cast<std::string*>(png_get_io_ptr(to))->append(reinterpret_cast<const char*>(more), size);
        };
        png_set_write_fn(png, &bytes, append, [](png_structp) {});
        png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height), 8,
                     PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        if (!filters) png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
        if (level >= 0) png_set_compression_level(png, level);
        png_write_info(png, info);
        for (int y = 0; y < picture.height; ++y)
            png_write_row(png, picture.rgba.data() + picture::PixelBytes(picture.width, y));
        png_write_end(png, info);
        png_destroy_write_struct(&png, &info);
        return bytes;
    }
};

/// The host's own encoder.
struct Own {
    picture::PngEffort effort;

    std::string operator()(const picture::Picture& picture) const {
        return picture::EncodePng(picture, {.effort = effort});
    }
};

template <typename Encoder>
void EncodeDisk(benchmark::State& state, Encoder encoder) {
    static const std::vector<picture::Picture> pictures = DiskPictures();
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (const picture::Picture& picture : pictures) bytes += encoder(picture).size();
    }
    state.counters["pictures"] = static_cast<double>(pictures.size());
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK_CAPTURE(EncodeDisk, own, Own{picture::PngEffort::kFast})->Name("png/fast")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EncodeDisk, libpng, Libpng{})->Name("png/libpng")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EncodeDisk, libpng2, Libpng{2, false})->Name("png/libpng_level_2")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EncodeDisk, small, Own{picture::PngEffort::kSmall})
    ->Name("png_size/small")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(EncodeDisk, libpng9, Libpng{9})
    ->Name("png_size/libpng_level_9")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

/// A picture without a character, beside copying its pixels.
void EncodeClear(benchmark::State& state) {
    const picture::Picture clear = picture::ClearPicture(720, 576);
    for (auto _ : state) benchmark::DoNotOptimize(picture::EncodePng(clear));
}
BENCHMARK(EncodeClear)->Name("png/clear/encoder")->Unit(benchmark::kMicrosecond);

void CopyClear(benchmark::State& state) {
    const picture::Picture clear = picture::ClearPicture(720, 576);
    picture::Picture copy = clear;
    for (auto _ : state) {
        std::copy(clear.rgba.begin(), clear.rgba.end(), copy.rgba.begin());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyClear)->Name("png/clear/copy")->Unit(benchmark::kMicrosecond);

}  // namespace
