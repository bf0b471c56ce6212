// Reading messages, fonts and single glyphs from files.
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include "base/text.h"
#include "module/contract/zel_font.h"
#include "module/font/format/font_blocks.h"
#include "module/message/cfile_bytes.h"
#include "module/message/format/message_loader.h"
#include "platform/framework/cfile.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

constexpr unsigned kStoredCode = 65;

/// A message and two fonts: font 1 is run-coded, font 2 holds a stored glyph of 40 by 30.
struct Files {
    Files() {
        files::MessageFile written = FullMessage(12, 32, 1);
        written.palette.emplace().entries.resize(256, 0x12345678);
        disk.WriteMessage(1, written);
        disk.WriteFont(1, RunCodedFont("Run Coded"));
        files::FontFile stored = RunCodedFont("Stored");
        stored.AddStored(kStoredCode, {40, 30, SmoothPixels(40, 30)}, 10, 40);
        files::FontOffsets offsets;
        disk.Write("MACHINE/" + base::NumberedName(2), files::WriteFont(stored, &offsets));
        glyph_offset = offsets.stored.at(kStoredCode);
        message = disk.Path("MESSAGES/.0001");
        font = disk.Path("MACHINE/.0001");
        stored_font = disk.Path("MACHINE/.0002");
    }
    ScratchDisk disk;
    std::string message, font, stored_font;
    std::size_t glyph_offset = 0;
};

const Files& SharedFiles() {
    static const Files files;
    return files;
}

void ReadRaw(benchmark::State& state, std::string Files::*file) {
    const std::string path = SharedFiles().*file;
    std::string buffer;
    for (auto _ : state) benchmark::DoNotOptimize(ReadWholeFile(path.c_str(), buffer));
    state.counters["bytes"] = static_cast<double>(ReadWholeFile(path.c_str(), buffer));
}
BENCHMARK_CAPTURE(ReadRaw, message, &Files::message)->Name("message/raw");
BENCHMARK_CAPTURE(ReadRaw, font, &Files::font)->Name("font/raw");

void ReadMessage(benchmark::State& state) {
    const std::string path = SharedFiles().message;
    for (auto _ : state) {
        CFile file;
        if (!file.Open(path.c_str(), CFile::modeRead | CFile::shareDenyNone)) state.SkipWithError("not opened");
        message::CFileBytes file_bytes(file);
        message::ByteSource source(file_bytes);
        message::LoadedMessage message;
        if (message::LoadMessage(source, message) != message::MessageOutcome::kRead) state.SkipWithError("not read");
        benchmark::DoNotOptimize(message.rows.get());
    }
}
BENCHMARK(ReadMessage)->Name("message/module");

void Release(CZelFont& fonts) {
    font::ReleaseFontBlocks(fonts.m_Slots[0]);
    delete fonts.m_Slots[0].font_copy;
    fonts.m_Slots[0] = tag_font_memory();
}

void ReadFont(benchmark::State& state) {
    CZelFont fonts;
    CString path(SharedFiles().disk.Path("MACHINE").c_str());
    for (auto _ : state) {
        if (fonts.ReadFont(path, 1, 0, false) != 1) state.SkipWithError("not read");
        Release(fonts);
    }
}
BENCHMARK(ReadFont)->Name("font/module");

void GlyphOnRequest(benchmark::State& state) {
    CZelFont fonts;
    CString path(SharedFiles().disk.Path("MACHINE").c_str());
    if (fonts.ReadFont(path, 2, 0, false) != 1) state.SkipWithError("not read");
    std::vector<std::uint32_t> pixels(std::size_t{40} * 30);
    DIBSECTION dib{};
    dib.dsBm.bmBits = pixels.data();
    dib.dsBmih.biWidth = 40;
    dib.dsBmih.biHeight = 30;
    for (auto _ : state) {
        fonts.BuildMFData(reinterpret_cast<FontAddress>(&fonts.m_Slots[0]), &dib, 0, kStoredCode, -1);
        benchmark::ClobberMemory();
    }
    Release(fonts);
}
BENCHMARK(GlyphOnRequest)->Name("glyph_on_request/module");

void ReadGlyphRaw(benchmark::State& state) {
    const Files& files = SharedFiles();
    std::vector<std::uint8_t> record(12 + 40 * 30 * 4);
    for (auto _ : state) {
        const int file = ::open(files.stored_font.c_str(), O_RDONLY | O_CLOEXEC);
        const ssize_t size = ::pread(file, record.data(), record.size(), static_cast<off_t>(files.glyph_offset));
        ::close(file);
        if (size != static_cast<ssize_t>(record.size())) state.SkipWithError("not read");
    }
}
BENCHMARK(ReadGlyphRaw)->Name("glyph_on_request/raw");

}  // namespace
