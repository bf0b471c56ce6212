#include "limits/hostile_files.h"

#include <string>

#include "host/picture/png_writer.h"
#include "samples/name_lists.h"

namespace zel::limits {

namespace {

constexpr unsigned kFonts = 16, kColourSets = 8;
constexpr unsigned kLongestRow = 63;
constexpr unsigned kFirstCode = 33, kCodes = samples::kFontCharCount - kFirstCode;
constexpr std::uintmax_t kMebibyte = std::uintmax_t{1} << 20;

/// A message of full rows of different characters, which name all slots and colour sets in turn.
/// @param fonts  number of slots in use.
samples::MessageFile FullRows(unsigned rows, unsigned fonts, unsigned colour_sets) {
    samples::MessageFile message;
    for (unsigned slot = 0; slot < fonts; ++slot)
        message.header.font_numbers[slot] = static_cast<std::uint16_t>(slot + 1);
    unsigned number = 0;
    for (unsigned row = 0; row < rows; ++row) {
        samples::RowText text;
        text.row_y = 10 + row % 400;
        for (unsigned n = 0; n < kLongestRow; ++n, ++number) {
            text.cells.push_back({.char_x = n,
                                  .colour_set = number / (kCodes * fonts) % colour_sets,
                                  .char_font = number / kCodes % fonts,
                                  .char_code = kFirstCode + number % kCodes});
        }
        samples::ChainInOrder(text);
        message.rows.push_back(text);
    }
    message.palette.emplace().entries.assign(256, samples::PaletteEntry(0x12, 0x34, 0x56));
    return message;
}

samples::FontFile EmptyFont(unsigned height = 40) {
    samples::FontFile font;
    font.header.font_name = "Wide";
    font.header.font_height = static_cast<int>(height);
    return font;
}

/// Adds glyphs of all codes that share their run codes, from places a code apart.
void AddShared(samples::FontFile& font, const samples::RunCodes& codes) {
    font.AddRunCoded(kFirstCode, codes, 3, 4);
    for (unsigned n = 1; n < kCodes; ++n) {
        font.directory.at(kFirstCode + n) = font.directory.at(kFirstCode);
        font.directory.at(kFirstCode + n).glyph_offset = 4 * n;
    }
}

/// One line of `runs` runs, then empty lines.
samples::RunCodes WideGlyph(unsigned runs) {
    samples::RunCodes codes(runs, samples::ColourRun(samples::kFaceIndex, 255, samples::kLongestRun));
    codes.resize(codes.size() + 500, samples::EndOfLine());
    codes.push_back(samples::EndOfGlyph());
    return codes;
}

samples::RunCodes StayCodesOf(std::uintmax_t bytes, std::uint32_t code) {
    samples::RunCodes codes(static_cast<std::size_t>(bytes / 4 - 1), code);
    codes.push_back(samples::EndOfGlyph());
    return codes;
}

void TallTypefaces(const HostileDisk& disk, unsigned edge_type) {
    for (unsigned slot = 0; slot < kFonts; ++slot) {
        samples::FontFile font = EmptyFont(2000 - slot);
        font.header.font_name = "TT Sans";
        font.header.edge_type = edge_type;
        font.header.edge_size = 255;
        AddShared(font, samples::RunCodes(kCodes + 1, samples::ColourRun(samples::kFaceIndex, 255, 9)));
        disk.WriteFont(slot + 1, font);
    }
    disk.WriteMessage(FullRows(60, kFonts, 1));
}

std::string DocumentOfRows(int count) {
    std::string rows = "[{}";
    for (int n = 1; n < count; ++n) rows += ",{}";
    return "{\"rows\":" + rows + "],\"characters\":[]}";
}

/// A document with an empty row and one more member.
std::string DocumentWith(const std::string& member, const std::string& value) {
    return "{\"rows\":[{}],\"characters\":[],\"" + member + "\":" + value + "}";
}

}  // namespace

void WideGlyphs(const HostileDisk& disk) {
    samples::FontFile font = EmptyFont();
    AddShared(font, WideGlyph(499));
    disk.WriteFont(1, font);
    disk.WriteMessage(FullRows(12, 1, 1));
}

void WideGlyphsOfManyFonts(const HostileDisk& disk) {
    for (unsigned slot = 0; slot < kFonts; ++slot) {
        samples::FontFile font = EmptyFont(40 + slot);
        AddShared(font, WideGlyph(250));
        font.encoding.resize(font.encoding.size() + 4 * slot);
        disk.WriteFont(slot + 1, font);
    }
    disk.WriteMessage(FullRows(400, kFonts, kColourSets));
}

void GlyphsOverOneAnother(const HostileDisk& disk) {
    samples::RunCodes codes;
    for (unsigned line = 0; line < 480; ++line) {
        codes.insert(codes.end(), 22, samples::ColourRun(samples::kFaceIndex, 128, samples::kLongestRun));
        codes.push_back(samples::EndOfLine());
    }
    codes.push_back(samples::EndOfGlyph());
    samples::FontFile font = EmptyFont();
    AddShared(font, codes);
    disk.WriteFont(1, font);
    disk.WriteMessage(FullRows(20, 1, 1));
}

void TallTypefacesWithShadow(const HostileDisk& disk) {
    TallTypefaces(disk, 2);
}

void TallTypefacesWithBorder(const HostileDisk& disk) {
    TallTypefaces(disk, 1);
}

void AnnouncedRows(const HostileDisk& disk) {
    samples::MessageFile message;
    message.header.last_row = 65535;
    disk.WriteMessage(message);
}

void EmptyRows(const HostileDisk& disk) {
    samples::MessageFile message;
    message.rows.assign(65536, samples::EmptyRow(100));
    disk.WriteMessage(message);
}

void ManyTabFields(const HostileDisk& disk) {
    samples::MessageFile message = FullRows(1, 1, 1);
    message.rows.resize(64, samples::RowFromText(100, "A", 10, 10));
    samples::TabTable& tabs = message.tabs.emplace();
    for (unsigned n = 0; n < 200; ++n)
        tabs.fields.push_back({.tab_start = 0, .tab_end = 719, .tab_name = "WWWWWWWWWWWWWWWW", .tab_row = n % 64});
    disk.WriteFont(1, EmptyFont());
    disk.WriteMessage(message);
}

void SparseFonts(const HostileDisk& disk) {
    samples::FontFile font = EmptyFont();
    font.AddRunCoded(kFirstCode, {samples::EndOfGlyph()}, 3, 4);
    font.header.encoding_size = 256U << 20;
    for (unsigned slot = 0; slot < kFonts; ++slot) disk.WriteFont(slot + 1, font, 257 * kMebibyte);
    disk.WriteMessage(FullRows(4, kFonts, 1));
}

void SparseFontsWithinTheLimit(const HostileDisk& disk) {
    samples::FontFile font = EmptyFont();
    font.AddRunCoded(kFirstCode, {samples::EndOfGlyph()}, 3, 4);
    font.header.encoding_size = 4U << 20;
    for (unsigned slot = 0; slot < kFonts; ++slot) disk.WriteFont(slot + 1, font, 5 * kMebibyte);
    disk.WriteMessage(FullRows(4, kFonts, 1));
}

void LargeSparseFiles(const HostileDisk& disk) {
    for (unsigned slot = 0; slot < kFonts; ++slot) disk.WriteFont(slot + 1, EmptyFont(), 80 * kMebibyte);
    disk.WriteMessage(FullRows(4, kFonts, 1), 80 * kMebibyte);
}

void LargeStoredGlyph(const HostileDisk& disk) {
    samples::FontFile font = EmptyFont();
    font.AddStored(kFirstCode, {.width = 8192, .height = 8192, .length = 256U << 20}, 3, 4);
    disk.WriteFont(1, font, 257 * kMebibyte);
    disk.WriteMessage(FullRows(1, 1, 1));
}

void ManyStoredGlyphs(const HostileDisk& disk) {
    samples::FontFile font = EmptyFont();
    for (unsigned n = 0; n < kCodes; ++n)
        font.AddStored(kFirstCode + n, {.width = 1024, .height = 1023, .length = 12}, 3, 4);
    disk.WriteFont(1, font);
    disk.WriteMessage(FullRows(20, 1, 1));
}

void StayCodes(const HostileDisk& disk) {
    samples::FontFile font = EmptyFont();
    AddShared(font, StayCodesOf(16 * kMebibyte, samples::Stay(samples::kFaceIndex, 255)));
    disk.WriteFont(1, font);
    disk.WriteMessage(FullRows(4, 1, 1));
}

void StayCodesOfManyFonts(const HostileDisk& disk) {
    constexpr unsigned kSlots = 4;
    for (unsigned slot = 0; slot < kSlots; ++slot) {
        samples::FontFile font = EmptyFont(40 + slot);
        AddShared(font, StayCodesOf(kMebibyte + slot * 64, samples::BlendedStay(samples::kFaceIndex, 128)));
        disk.WriteFont(slot + 1, font);
    }
    disk.WriteMessage(FullRows(kSlots * kColourSets * kCodes / kLongestRow, kSlots, kColourSets));
}

void LargeRgbaPicture(const HostileDisk& disk) {
    disk.WriteMessage(samples::WriteRgbaFile(717, {.width = 4096, .height = 4096, .length = 65U << 20}),
                      66 * kMebibyte);
}

void LongNameLists(const HostileDisk& disk) {
    samples::BitstreamList numbers;
    samples::TypefaceList typefaces;
    for (unsigned n = 0; numbers.Written().size() < 8 * kMebibyte; ++n) {
        numbers.Plain(std::to_string(n), n);
        typefaces.Typeface(std::to_string(n), std::to_string(n) + " BT");
    }
    disk.WriteList(samples::kBitstreamListName, numbers.Written(), 0);
    disk.WriteList(samples::kTypefaceListName, typefaces.Written(), 0);
    disk.WriteFont(1, EmptyFont());
    disk.WriteMessage(FullRows(1, 1, 1));
}

void SparseNameLists(const HostileDisk& disk) {
    disk.WriteList(samples::kBitstreamListName, samples::BitstreamList().Plain("Quay", 21).Written(), 256 * kMebibyte);
    disk.WriteList(samples::kTypefaceListName, samples::TypefaceList().Typeface("Arial", "Quay BT").Written(),
                   256 * kMebibyte);
    disk.WriteFont(1, EmptyFont());
    disk.WriteMessage(FullRows(1, 1, 1));
}

void DocumentOfEmptyObjects(const HostileDisk& disk) {
    disk.WriteLibrary(DocumentOfRows(240000));
}

void DocumentOfManyValues(const HostileDisk& disk) {
    disk.WriteLibrary(DocumentOfRows(149000));
}

void DocumentOfBrackets(const HostileDisk& disk) {
    disk.WriteLibrary(std::string(8U << 20, '['));
}

void DocumentOfMembers(const HostileDisk& disk) {
    std::string members = "{\"a\":0";
    for (int n = 0; n < 500000; ++n) members += ",\"" + std::to_string(n) + "\":0";
    disk.WriteLibrary(DocumentWith("more", members + "}"));
}

void LargeRecordedPicture(const HostileDisk& disk) {
    disk.WriteLibrary(DocumentWith("more", "0"), picture::EncodePng(picture::ClearPicture(4096, 4096)));
}

}  // namespace zel::limits
