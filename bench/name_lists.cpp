// The two name lists, of 10,000 lines each.
#include "samples/name_lists.h"

#include <fstream>

#include <benchmark/benchmark.h>

#include "dialog/zel_trans_dlg.h"
#include "pipeline/module_state.h"
#include "platform/headless_desktop.h"
#include "platform/memory_settings_store.h"
#include "scratch_disk.h"

namespace {

constexpr unsigned kLines = 10000;

/// Both lists in a registered directory.
class Lists {
  public:
    Lists() {
        samples::BitstreamList bitstream;
        samples::TypefaceList typefaces;
        for (unsigned family = 0; family < kLines / 5; ++family) {
            const std::string name = "Family" + std::to_string(family);
            bitstream.Family(name);
            for (const char* style : {"Roman", "Italic", "Bold", "Bold Italic"}) {
                bitstream.Style(style, (family * 4 + 1) % kLines);
                typefaces.Typeface(name + " MT", name + " " + style + " BT");
            }
            typefaces.Typeface(name + " Alt", name + " BT");
        }
        const auto write = [this](std::string_view name, const std::string& text) {
            m_disk.Write(name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        };
        write(samples::kBitstreamListName, bitstream.Written());
        write(samples::kTypefaceListName, typefaces.Written());
        char directory[MAX_PATH] = {};
        m_disk.Path("").copy(directory, sizeof directory - 1);
        Register_GLV_OnChar(nullptr, directory);
        SetDesktop(&m_desktop);
        SetSettingsStore(&m_settings);
    }
    ~Lists() {
        SetSettingsStore(nullptr);
        SetDesktop(nullptr);
    }
    std::string Path(std::string_view name) const { return m_disk.Path(name); }

  private:
    HeadlessDesktop m_desktop;
    MemorySettingsStore m_settings;
    ScratchDisk m_disk;
};

void Map(benchmark::State& state, bool (CZelTransDlg::*map)()) {
    const Lists lists;
    for (auto _ : state) {
        CZelTransDlg dialog;
        if (!(dialog.*map)()) state.SkipWithError("not read");
    }
}
BENCHMARK_CAPTURE(Map, bitstream, &CZelTransDlg::MapBitStreamFont)->Name("name_lists/bitstream/module");
BENCHMARK_CAPTURE(Map, typefaces, &CZelTransDlg::MapTypeFace)->Name("name_lists/typefaces/module");

void ByLines(benchmark::State& state, std::string_view name) {
    const Lists lists;
    const std::string path = lists.Path(name);
    for (auto _ : state) {
        std::ifstream file(path);
        std::size_t read = 0;
        for (std::string line; std::getline(file, line);) read += line.size();
        benchmark::DoNotOptimize(read);
    }
}
BENCHMARK_CAPTURE(ByLines, bitstream, samples::kBitstreamListName)->Name("name_lists/bitstream/lines");
BENCHMARK_CAPTURE(ByLines, typefaces, samples::kTypefaceListName)->Name("name_lists/typefaces/lines");

}  // namespace
