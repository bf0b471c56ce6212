// The walk over a message's characters.
#include <benchmark/benchmark.h>

#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/font/format/font_blocks.h"
#include "module/state/module_state.h"
#include "platform/script/headless_desktop.h"
#include "platform/script/memory_settings_store.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

constexpr unsigned kRows = 12, kCharacters = 60;

unsigned g_calls = 0;

void Count(CWnd* /*host*/, tag_CharInf* info, unsigned character) {
    g_calls += character + static_cast<unsigned>(info->x);
}

/// A message with two fonts, one mapped by its number and one by its name, and the module objects for the walk.
class WalkedMessage {
  public:
    WalkedMessage()
        : m_registration(&m_desktop), m_message(nullptr, m_disk.Path("MESSAGES").c_str(), ".0001", &m_owner) {
        m_disk.WriteMessage(1, FullMessage(kRows, kCharacters, 2));
        m_disk.WriteFont(1, RunCodedFont("Any Name"));
        files::FontFile named = RunCodedFont("Swiss Bold");
        named.header.font_id_text = "17";
        m_disk.WriteFont(2, named);
        m_owner.m_mapBitStreamId.SetAt(1, "Dutch bold BT");
        m_owner.m_mapBitStreamFamily.SetAt("Swiss", "Swiss BT");
        m_owner.m_mapTypeFace.SetAt("Dutch bold BT", "Times New Roman");
        m_owner.m_mapTypeFace.SetAt("Swiss BT", "Arial");
        CString fonts(m_disk.Path("MACHINE").c_str());
        ok = m_message.ReadMessage(&m_owner);
        for (int slot = 0; slot < 2; ++slot) ok = m_fonts.ReadFont(fonts, slot + 1, slot, false) == 1 && ok;
        char no_maps[MAX_PATH] = "\\";
        Register_GLV_OnChar(&Count, no_maps);
    }
    ~WalkedMessage() {
        Register_GLV_OnChar(nullptr, std::string(MAX_PATH, '\0').data());
        for (tag_font_memory& slot : m_fonts.m_Slots) {
            font::ReleaseFontBlocks(slot);
            delete slot.font_copy;
        }
    }
    void Run(bool as_text) { m_message.EmitCharacters(nullptr, &m_fonts, true, as_text); }

    bool ok = false;

  private:
    /// Registers desktop and settings before the module's objects are constructed.
    struct Registration {
        explicit Registration(script::HeadlessDesktop* desktop) {
            seam::SetDesktop(desktop);
            seam::SetSettingsStore(&settings);
        }
        ~Registration() {
            seam::SetSettingsStore(nullptr);
            seam::SetDesktop(nullptr);
        }
        script::MemorySettingsStore settings;
    };
    script::HeadlessDesktop m_desktop;
    Registration m_registration;
    ScratchDisk m_disk;
    CZelTransDlg m_owner;
    CZelMessage m_message;
    CZelFont m_fonts;
};

void Walk(benchmark::State& state, bool as_text) {
    WalkedMessage walked;
    if (!walked.ok) state.SkipWithError("not read");
    for (auto _ : state) walked.Run(as_text);
    state.SetItemsProcessed(state.iterations() * kRows * kCharacters);
}
BENCHMARK_CAPTURE(Walk, bitmap, false)->Name("walk/bitmap_form");
BENCHMARK_CAPTURE(Walk, text, true)->Name("walk/text_form");

void CallOnly(benchmark::State& state) {
    tag_CharInf info{};
    OnCharCallback callback = &Count;
    benchmark::DoNotOptimize(callback);
    for (auto _ : state) {
        for (unsigned n = 0; n < kRows * kCharacters; ++n) callback(nullptr, &info, n & 0xFF);
    }
    benchmark::DoNotOptimize(g_calls);
    state.SetItemsProcessed(state.iterations() * kRows * kCharacters);
}
BENCHMARK(CallOnly)->Name("walk/calls");

}  // namespace
