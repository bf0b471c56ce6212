// The two name lists, of 10,000 lines each.
#include "samples/name_lists.h"

#include <fstream>

#include <benchmark/benchmark.h>

#include "module/contract/zel_trans_dlg.h"
#include "module/state/module_state.h"
#include "platform/script/headless_desktop.h"
#include "platform/script/memory_settings_store.h"
#include "scratch_disk.h"

using namespace zel;

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
            unsigned number = family * 4;
            for (const char* style : {"Roman", "Italic", "Bold", "Bold Italic"}) {
                bitstream.Style(style, number++);
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
        seam::SetDesktop(&m_desktop);
        seam::SetSettingsStore(&m_settings);
    }
    ~Lists() {
        seam::SetSettingsStore(nullptr);
        seam::SetDesktop(nullptr);
    }
    std::string Path(std::string_view name) const { return m_disk.Path(name); }

  private:
    script::HeadlessDesktop m_desktop;
    script::MemorySettingsStore m_settings;
    ScratchDisk m_disk;
};

/// Reads a list and asks for the names of as many fonts as a message can have.
template <class Ask>
void Map(benchmark::State& state, bool (CZelTransDlg::*map)(), Ask ask) {
    const Lists lists;
    for (auto _ : state) {
        CZelTransDlg dialog;
        bool all = (dialog.*map)();
        CString name;
        for (unsigned slot = 0; slot < 16; ++slot) all = all && ask(dialog, slot * (kLines / 5 / 16), name);
        if (!all) state.SkipWithError("not read");
    }
}

bool AskBitstream(CZelTransDlg& dialog, unsigned family, CString& name) {
    const std::string word = "Family" + std::to_string(family);
    return dialog.m_mapBitStreamId.Lookup(static_cast<WORD>(family * 4 + 1), name) != 0 &&
           name == (word + " Italic BT").c_str() && dialog.m_mapBitStreamFamily.Lookup(word.c_str(), name) != 0 &&
           name == (word + " Roman BT").c_str();
}
bool AskTypeface(CZelTransDlg& dialog, unsigned family, CString& name) {
    const std::string bitstream = "Family" + std::to_string(family);
    return dialog.m_mapTypeFace.Lookup((bitstream + " Bold Italic BT").c_str(), name) != 0 &&
           name == (bitstream + " MT").c_str();
}
BENCHMARK_CAPTURE(Map, bitstream, &CZelTransDlg::MapBitStreamFont, &AskBitstream)->Name("name_lists/bitstream/module");
BENCHMARK_CAPTURE(Map, typefaces, &CZelTransDlg::MapTypeFace, &AskTypeface)->Name("name_lists/typefaces/module");

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
