#include "faults/machine.h"

#include <algorithm>
#include <exception>
#include <optional>

#include "faults/failing.h"
#include "files/font_writer.h"
#include "files/message_writer.h"
#include "module/contract/zel_trans_export.h"
#include "module/font/format/font_blocks.h"
#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/exceptions.h"
#include "samples/name_lists.h"

namespace zel::faults {

namespace {

using failing::Paused;

class Host : public CWnd {
  public:
    explicit Host(std::string& log) : m_log(log) {
        CreateHostWindow("host");
        g_host = this;
    }
    ~Host() override {
        if (m_drawer.m_Slots[0].font_header != nullptr) m_fonts[kFontSlots - 1] = m_drawer.m_Slots[0];
        for (tag_font_memory& font : m_fonts) {
            delete font.font_copy;
            font::ReleaseFontBlocks(font);
        }
        g_host = nullptr;
    }

    void Draw() {
        int drawn = 0;
        for (const tag_font_memory& font : m_fonts) {
            for (DWORD code = 'A'; code <= 'B'; ++code)
                drawn += DrawGlyph(reinterpret_cast<FontAddress>(font.font_copy), code);
        }
        const Paused paused;
        m_log += std::to_string(drawn) + " drawn";
    }

    // One font without a message, which is there in slot 0 or not at all.
    void ReadAlone() {
        char path[] = "D:\\MACHINE\\.0001";
        const bool read = CZelTransExport().MakeTavroFont(path, &m_drawer);
        const Paused paused;
        m_log += read ? "alone" : "not alone";
    }

    static void OnChar(CWnd*, tag_CharInf*, unsigned) {
        const Paused paused;
        g_host->m_log += "c ";
    }

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        const Paused paused;
        if (message < 1100) return CWnd::WindowProc(message, wParam, lParam);
        m_log += std::to_string(message) + ' ';
        if (message == 1157) {
            for (int i = 0; i < kFontSlots; ++i) {
                const tag_font_memory& slot = reinterpret_cast<CZelFont*>(lParam)->m_Slots[i];
                if (slot.font_copy != nullptr) m_fonts[i] = slot;
            }
        }
        return 0;
    }

  private:
    // 1 when the glyph has pixels.
    int DrawGlyph(FontAddress font, DWORD code) {
        int top = 0;
        const CRect rect = m_drawer.GetMFRect(font, 0, code, top, nullptr);
        std::uint8_t pixels[4096] = {};
        if (rect.Width() * rect.Height() * 4 > static_cast<int>(sizeof pixels)) return 0;
        DIBSECTION dib{};
        dib.dsBm.bmBits = pixels;
        dib.dsBmih.biWidth = rect.Width();
        dib.dsBmih.biHeight = rect.Height();
        m_drawer.BuildMFData(font, &dib, 0, code, -1);
        return std::any_of(std::begin(pixels), std::end(pixels), [](std::uint8_t byte) { return byte != 0; }) ? 1 : 0;
    }

    static Host* g_host;
    std::string& m_log;
    CZelFont m_drawer;
    tag_font_memory m_fonts[kFontSlots];
};

Host* Host::g_host = nullptr;

/// Does one thing, and adds to the log how it ended.
template <typename Work>
void Do(std::string& log, Work&& work) {
    const char* ending = "; ";
    try {
        work();
    } catch (CMemoryException* error) {
        ending = "no memory; ";
        error->Delete();
    } catch (CFileException* error) {
        ending = "file error; ";
        error->Delete();
    } catch (const std::exception&) {
        ending = "another exception; ";
    }
    const Paused paused;
    log += ending;
}

}  // namespace

Machine::Machine() {
    files::FontFile codes, stored;
    codes.header.font_name = "Quay Bold";
    codes.header.font_id_text = "5021";
    codes.AddRunCoded('A', {files::ColourRun(1, 255, 4), files::EndOfLine(), files::EndOfGlyph()}, 2, 9);
    codes.header.font_flags |= files::kHasCharTables;
    codes.aux_block.assign(10, 7);
    codes.word_table = {1, 2, 3};
    codes.sample.emplace().a = {2, 2, files::Bytes(4, 1)};
    stored.AddStored('B', {.width = 2, .height = 3, .pixels = files::Bytes(24, 0xFF)}, 0, 2);
    files::MessageFile message;
    message.header.font_numbers[0] = 1;
    message.header.font_numbers[1] = 2;
    message.rows = {files::RowFromText(60, "A", 100, 20), files::RowFromText(120, "B", 100, 16, {.char_font = 1}),
                    files::EmptyRow(200)};
    message.palette.emplace().entries.assign(256, 7);
    message.tabs.emplace().fields = {{.tab_start = 93, .tab_end = 193, .tab_row = 2}};
    std::filesystem::create_directory(m_room.Directory() / "MESSAGES");
    std::filesystem::create_directory(m_room.Directory() / "MACHINE");
    m_room.Put("MACHINE/.0001", files::WriteFont(codes));
    m_room.Put("MACHINE/.0002", files::WriteFont(stored));
    m_room.Put("MESSAGES/.0001", files::WriteMessage(message));
    m_room.PutText(samples::kBitstreamListName, samples::BitstreamList().Plain("Quay", 21).Written());
    m_room.PutText(samples::kTypefaceListName, samples::TypefaceList().Typeface("Arial", "Quay BT").Written());
    m_log.reserve(4096);
}

std::string Machine::Import() {
    m_log.clear();
    const std::int64_t before = failing::LiveBlocks();
    {
        std::optional<Paused> paused(std::in_place);
        Host host(m_log), main(m_log);
        AfxGetThread()->m_pMainWnd = &main;
        char map_dir[MAX_PATH] = "D:\\";
        Register_GLV_OnChar(&Host::OnChar, map_dir);
        CString path("D:\\MESSAGES\\.0001"), fonts;
        paused.reset();
        Do(m_log, [&] { CZelTransExport().ReadZelmaraMessage(&host, path, fonts); });
        Do(m_log, [&] { host.Draw(); });
        Do(m_log, [&] { host.ReadAlone(); });
        paused.emplace();
        AfxGetThread()->m_pMainWnd = nullptr;
        g_pfnOnChar = nullptr;
    }
    m_blocks_left = failing::LiveBlocks() - before;
    const Paused paused;
    return m_log;
}

}  // namespace zel::faults
