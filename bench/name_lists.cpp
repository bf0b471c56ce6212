// The two name lists, of 10,000 lines each.
#include "samples/name_lists.h"

#include <fstream>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#include "module/contract/zel_trans_dlg.h"
#include "module/state/module_state.h"
#include "platform/script/headless_desktop.h"
#include "platform/script/memory_settings_store.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

constexpr unsigned kLines = 10000;

/// Both lists, in a registered directory.
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

/// Reads a list and looks up the names of 16 fonts, the most that a message has.
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

void ReadLines(benchmark::State& state, std::string_view name) {
    const Lists lists;
    const std::string path = lists.Path(name);
    for (auto _ : state) {
        std::ifstream file(path);
        std::size_t read = 0;
        for (std::string line; std::getline(file, line);) read += line.size();
        benchmark::DoNotOptimize(read);
    }
}
BENCHMARK_CAPTURE(ReadLines, bitstream, samples::kBitstreamListName)->Name("name_lists/bitstream/lines");
BENCHMARK_CAPTURE(ReadLines, typefaces, samples::kTypefaceListName)->Name("name_lists/typefaces/lines");

// The hash table alone: filling it with the names of the typeface list and 16 look-ups; then the look-ups alone.

/// The keys of the typeface list in one text.
struct Keys {
    Keys() {
        for (unsigned family = 0; family < kLines / 5; ++family) {
            for (const char* style : {" Roman BT", " Italic BT", " Bold BT", " Bold Italic BT", " BT"}) {
                const std::string key = "Family" + std::to_string(family) + style;
                slices.push_back({static_cast<std::uint32_t>(list.size()), static_cast<std::uint16_t>(key.size())});
                list += key;
                names.push_back(key);
            }
        }
    }
    std::string list;
    std::vector<TextSlice> slices;
    std::vector<std::string> names;
};

struct TransparentHash : std::hash<std::string_view> {
    using is_transparent = void;
};
using StringMap = std::unordered_map<std::string, NameParts, TransparentHash, std::equal_to<>>;
using ViewMap = std::unordered_map<std::string_view, NameParts>;

struct OwnMap {
    OwnMap(const std::shared_ptr<NameText>& text, const Keys& keys) {
        map.UseText(text, keys.slices.size());
        for (const TextSlice& key : keys.slices)
            map.Add(key, {NameParts::Form::kWhole, key}, NamedNames::IfPresent::kReplace);
    }
    bool Find(const std::string& key) const { return map.Lookup(key.c_str(), found) != 0; }
    NamedNames map;
    mutable CString found;
};

template <class Map>
struct StandardMap {
    StandardMap(const std::shared_ptr<NameText>& list, const Keys& keys) : text(list) {
        map.reserve(keys.slices.size());
        for (const TextSlice& key : keys.slices)
            map.insert_or_assign(typename Map::key_type(text->Of(key)), NameParts(NameParts::Form::kWhole, key));
    }
    bool Find(const std::string& key) const {
        const auto at = map.find(std::string_view(key.c_str()));
        if (at == map.end()) return false;
        found = text->Compose(at->second);
        return true;
    }
    std::shared_ptr<NameText> text;
    Map map;
    mutable CString found;
};

template <class Map>
bool FindSixteen(const Map& map, const Keys& keys) {
    bool all = true;
    for (std::size_t n = 0; n < 16; ++n) all = map.Find(keys.names[n * (kLines / 16)]) && all;
    return all;
}

template <class Map>
void Fill(benchmark::State& state) {
    const Keys keys;
    const auto text = std::make_shared<NameText>(keys.list);
    for (auto _ : state) {
        const Map map(text, keys);
        if (!FindSixteen(map, keys)) state.SkipWithError("not found");
    }
}
BENCHMARK(Fill<OwnMap>)->Name("name_lists/map/own");
BENCHMARK(Fill<StandardMap<ViewMap>>)->Name("name_lists/map/unordered_of_views");
BENCHMARK(Fill<StandardMap<StringMap>>)->Name("name_lists/map/unordered_of_strings");

template <class Map>
void LookUp(benchmark::State& state) {
    const Keys keys;
    const Map map(std::make_shared<NameText>(keys.list), keys);
    for (auto _ : state) {
        if (!FindSixteen(map, keys)) state.SkipWithError("not found");
    }
}
BENCHMARK(LookUp<OwnMap>)->Name("name_lists/look_up/own");
BENCHMARK(LookUp<StandardMap<ViewMap>>)->Name("name_lists/look_up/unordered_of_views");
BENCHMARK(LookUp<StandardMap<StringMap>>)->Name("name_lists/look_up/unordered_of_strings");

}  // namespace
