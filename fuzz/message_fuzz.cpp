// Message files: reading, templates, and the walk over their characters.
#include <algorithm>

#include "base/text.h"
#include "files/font_writer.h"
#include "files/message_writer.h"
#include "module/contract/zel_message.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/message_loader.h"
#include "module/state/module_state.h"
#include "module_environment.h"
#include "samples/name_lists.h"
#include "section_mutator.h"

using namespace zel;

namespace {

using fuzz::Require;

// Messages with more rows take time and cover no more code. tests/faults has a test for them.
constexpr int kMaxRows = 32;

/// A dialog with the lists and five fonts: plain, with a border, installed, stored, of another height.
struct Environment : fuzz::ModuleEnvironment {
    Environment() {
        Require(!dialog.MapBitStreamFont() && !dialog.MapTypeFace(), "missing lists are not read");
        PutText(samples::kBitstreamListName, samples::BitstreamList().Plain("Quay", 21).Written());
        PutText(samples::kTypefaceListName, samples::TypefaceList().Typeface("Arial", "Quay BT").Written());
        dialog.MapBitStreamFont();
        dialog.MapTypeFace();
        dialog.m_pFont = new CZelFont();
        constexpr const char* kNames[] = {"Plain", "Quay Bold", "TT Arial Bold Italic", "Stored", "Tall"};
        for (int i = 0; i < 5; ++i) {
            files::FontFile font;
            font.header = {.font_name = kNames[i],
                           .font_id_text = i % 2 == 0 ? "5021" : "12",
                           .font_height = 40 + 10 * i,
                           .row_top_offset = i,
                           .edge_type = static_cast<unsigned>(i),
                           .row_inset = 3};
            if (i != 2)
                font.AddRunCoded('A', {files::ColourRun(1, 255, 4), files::EndOfLine(), files::EndOfGlyph()}, 2, 9);
            if (i == 3) font.AddStored('A', {.width = 1, .height = 1, .pixels = files::Bytes(4, 9)}, 0, 2);
            Put(base::NumberedName(i + 1), files::WriteFont(font));
            Require(ReadFont(*dialog.m_pFont, i + 1, i * 3), "a font");
        }
    }
    ~Environment() {
        for (tag_font_memory& slot : dialog.m_pFont->m_Slots) Release(slot);
    }
    CZelTransDlg dialog{nullptr};
};

void CheckCall(CWnd*, tag_CharInf* info, unsigned character) {
    Require(info->row_index >= 0 && info->row_index < kMaxRows, "the row is one of the message");
    Require(info->slot >= -1 && info->slot < kFontSlots && character < 256, "slot and character are in range");
    Require(info->font_copy == nullptr || info->slot >= 0, "a bitmap has a slot");
}

files::Bytes Describe(fuzz::Random& random) {
    const auto value = [&random] { return fuzz::HostileValue(random); };
    const auto any = [&random](std::size_t end) { return static_cast<unsigned>(fuzz::Below(random, end)); };
    files::MessageFile file;
    file.pal = any(2) != 0;
    for (auto& number : file.header.font_numbers) number = static_cast<std::uint16_t>(any(20));
    for (unsigned row = any(5); row-- > 0;) {
        file.rows.push_back(files::RowFromText(value(), std::string(any(any(8) == 0 ? 64 : 6), 'A'), value(), value(),
                                               {.colour_set = any(8), .char_y = value(), .char_font = any(17)}));
        if (any(2) != 0) file.rows.push_back(files::EmptyRow(value()));
        for (auto& cell : file.rows.back().cells) {
            if (any(8) == 0) cell.next_char = value();
        }
    }
    if (any(4) == 0) file.header.last_row = any(kMaxRows);
    if (any(4) == 0) file.flash_font.emplace().encoding_size = any(64);
    if (any(2) != 0) file.palette.emplace().entries.assign(any(300), value());
    if (any(8) == 0) file.background.emplace().tag = 0xBBBB + any(3);
    if (any(2) != 0) {
        file.tabs.emplace();
        for (unsigned tab = any(any(8) == 0 ? 210 : 4); tab-- > 0;) {
            file.tabs->fields.push_back(
                {.tab_start = value(), .tab_end = value(), .tab_row = any(5), .tab_font = any(32)});
        }
    }
    return files::WriteMessage(file);
}

/// Whether the header of a file has more than kMaxRows rows.
bool HasTooManyRows(fuzz::Input file) {
    constexpr std::size_t kFlashFont = 136 + 16, kFlashHeader = kFlashFont + 8, kFlashSize = 8 + 128 + 1920;
    const auto u32 = [file](std::size_t at) {
        return message::BigEndianCursor(file.subspan(std::min(at, file.size()))).U32();
    };
    std::uint64_t header = kFlashFont;
    if ((u32(136) >> 16 & static_cast<unsigned>(SectionFlag::kFlashFont)) != 0)
        header += kFlashSize + std::uint64_t{u32(kFlashHeader + 98)} + u32(kFlashHeader + 120);
    return header < file.size() && u32(static_cast<std::size_t>(header) + 4) >> 16 >= kMaxRows;
}

void Observe(fuzz::Input file, message::SectionObserver& sections) {
    if (HasTooManyRows(file)) return;
    message::LoadedMessage message;
    message::LoadMessage(file, message, &sections);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Environment environment;
    if (HasTooManyRows({data, size})) return 0;
    g_pfnOnChar = &CheckCall;
    CZelFont::m_bIgnoreErrors = static_cast<int>(size % 2);
    environment.dialog.m_iLines = ActiveLines(size % 16 < 8 ? VideoStandard::kNtsc : VideoStandard::kPal);
    environment.Put(".0000", {data, size});
    CZelMessage message("", "D:", ".0000", &environment.dialog);
    if (!message.ReadMessage(&environment.dialog)) return 0;
    for (int slot = 0; slot < kFontSlots; ++slot) {
        tag_font_memory& font = environment.dialog.m_pFont->m_Slots[slot];
        if (font.font_header == nullptr) continue;
        message.MakeFontDescription(&font, font.log_font, slot);
        message.ApplySlotEffects(&font, font.effect_params);
    }
    message.MakeTemplates(&environment.dialog);
    const bool convert = size % 4 < 2;
    message.EmitCharacters(nullptr, environment.dialog.m_pFont, !convert, convert);
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size, unsigned seed) {
    return fuzz::MutateSections({&Observe, &Describe}, data, size, max_size, seed);
}
