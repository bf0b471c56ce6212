#include "limits/hostile_files.h"

#include <string>

#include "host/picture/png_writer.h"
#include "samples/name_lists.h"

namespace zel::limits {

namespace {

constexpr unsigned kFonts = 16, kColourSets = 8;
constexpr unsigned kLongestRow = 63;
constexpr unsigned kFirstCode = 33, kCodes = files::kFontCharCount - kFirstCode;
constexpr unsigned kMebibyte = 1U << 20;

/// A message of full rows of different characters, which name all slots and colour sets in turn.
/// @param fonts  number of slots in use.
files::MessageFile FullRows(unsigned rows, unsigned fonts, unsigned colour_sets) {
    files::MessageFile message;
    for (unsigned slot = 0; slot < fonts; ++slot)
        message.header.font_numbers[slot] = static_cast<std::uint16_t>(slot + 1);
    unsigned number = 0;
    for (unsigned row = 0; row < rows; ++row) {
        files::RowText text;
        text.row_y = 10 + row % 400;
        for (unsigned n = 0; n < kLongestRow; ++n, ++number) {
            text.cells.push_back({.char_x = n,
                                  .colour_set = number / (kCodes * fonts) % colour_sets,
                                  .char_font = number / kCodes % fonts,
                                  .char_code = kFirstCode + number % kCodes});
        }
        files::ChainInOrder(text);
        message.rows.push_back(text);
    }
    message.palette.emplace().entries.assign(256, files::PaletteEntry(0x12, 0x34, 0x56));
    return message;
}

files::FontFile EmptyFont(unsigned height = 40) {
    files::FontFile font;
    font.header.font_name = "Wide";
    font.header.font_height = static_cast<int>(height);
    return font;
}

/// Adds glyphs of all codes that share their run codes, from places a code apart.
void AddShared(files::FontFile& font, const files::RunCodes& codes) {
    font.AddRunCoded(kFirstCode, codes, 3, 4);
    for (unsigned n = 1; n < kCodes; ++n) {
        font.directory.at(kFirstCode + n) = font.directory.at(kFirstCode);
        font.directory.at(kFirstCode + n).glyph_offset = 4 * n;
    }
}

/// Characters whose glyphs have a line of `runs` runs and are 501 lines high, in fonts that differ and in all colour
/// sets.
void WriteWideGlyphs(const HostileDisk& disk, unsigned runs, unsigned fonts) {
    files::RunCodes codes(runs, files::ColourRun(files::kFaceIndex, 255, files::kLongestRun));
    codes.resize(codes.size() + 500, files::EndOfLine());
    codes.push_back(files::EndOfGlyph());
    for (unsigned slot = 0; slot < fonts; ++slot) {
        files::FontFile font = EmptyFont(40 + slot);
        AddShared(font, codes);
        font.encoding.resize(font.encoding.size() + 4 * slot);
        disk.WriteFont(slot + 1, font);
    }
    disk.WriteMessage(FullRows(12 + 25 * (fonts - 1), fonts, kColourSets));
}

/// Glyphs of up to 15,968 x 501 pixels, each too large.
void WideGlyphs(const HostileDisk& disk) {
    WriteWideGlyphs(disk, 499, 1);
}

/// Glyphs half as wide, too large together.
void WideGlyphsOfManyFonts(const HostileDisk& disk) {
    WriteWideGlyphs(disk, 250, kFonts);
}

/// Glyphs as large as the picture, over one another in every row.
void GlyphsOverOneAnother(const HostileDisk& disk) {
    files::RunCodes codes;
    for (unsigned line = 0; line < 480; ++line) {
        codes.insert(codes.end(), 22, files::ColourRun(files::kFaceIndex, 128, files::kLongestRun));
        codes.push_back(files::EndOfLine());
    }
    codes.push_back(files::EndOfGlyph());
    files::FontFile font = EmptyFont();
    AddShared(font, codes);
    disk.WriteFont(1, font);
    disk.WriteMessage(FullRows(20, 1, 1));
}

/// Characters of typefaces of 2000 lines, each with a border or a shadow of 255.
void TallTypefaces(const HostileDisk& disk) {
    for (unsigned slot = 0; slot < kFonts; ++slot) {
        files::FontFile font = EmptyFont(2000 - slot);
        font.header.font_name = "TT Sans";
        font.header.edge_type = 1 + slot % 2;
        font.header.edge_size = 255;
        AddShared(font, files::RunCodes(kCodes + 1, files::ColourRun(files::kFaceIndex, 255, 9)));
        disk.WriteFont(slot + 1, font);
    }
    disk.WriteMessage(FullRows(60, kFonts, 1));
}

/// As many rows as a header can announce.
void EmptyRows(const HostileDisk& disk) {
    files::MessageFile message;
    message.rows.assign(65536, files::EmptyRow(100));
    disk.WriteMessage(message);
}

/// As many tab fields as are read, each over the whole width.
void ManyTabFields(const HostileDisk& disk) {
    files::MessageFile message = FullRows(1, 1, 1);
    message.rows.resize(64, files::RowFromText(100, "A", 10, 10));
    files::TabTable& tabs = message.tabs.emplace();
    for (unsigned n = 0; n < 200; ++n)
        tabs.fields.push_back({.tab_start = 0, .tab_end = 719, .tab_name = "WWWWWWWWWWWWWWWW", .tab_row = n % 64});
    disk.WriteFont(1, EmptyFont());
    disk.WriteMessage(message);
}

/// Fonts whose encoding data are a hole of a size, and as many bytes after them.
void WriteSparseFonts(const HostileDisk& disk, unsigned encoding_size, unsigned file_size, unsigned message_size = 0) {
    files::FontFile font = EmptyFont();
    font.AddRunCoded(kFirstCode, {files::EndOfGlyph()}, 3, 4);
    font.header.encoding_size = encoding_size;
    for (unsigned slot = 0; slot < kFonts; ++slot) disk.WriteFont(slot + 1, font, file_size);
    disk.WriteMessage(FullRows(4, kFonts, 1), message_size);
}

/// Encoding data that are too large.
void SparseFonts(const HostileDisk& disk) {
    WriteSparseFonts(disk, 256 * kMebibyte, 257 * kMebibyte);
}

/// As much encoding data as is read.
void SparseFontsWithinTheLimit(const HostileDisk& disk) {
    WriteSparseFonts(disk, 4 * kMebibyte, 5 * kMebibyte);
}

/// Files that have checksums one by one, but not all together.
void LargeSparseFiles(const HostileDisk& disk) {
    WriteSparseFonts(disk, 4, 80 * kMebibyte, 80 * kMebibyte);
}

/// A stored glyph of 8192 x 8192 pixels, all a hole.
void LargeStoredGlyph(const HostileDisk& disk) {
    files::FontFile font = EmptyFont();
    font.AddStored(kFirstCode, {.width = 8192, .height = 8192, .length = 256U << 20}, 3, 4);
    disk.WriteFont(1, font, 257 * kMebibyte);
    disk.WriteMessage(FullRows(1, 1, 1));
}

/// Stored glyphs that announce 1024 x 1023 pixels and contain none.
void ManyStoredGlyphs(const HostileDisk& disk) {
    files::FontFile font = EmptyFont();
    for (unsigned n = 0; n < kCodes; ++n)
        font.AddStored(kFirstCode + n, {.width = 1024, .height = 1023, .length = 12}, 3, 4);
    disk.WriteFont(1, font);
    disk.WriteMessage(FullRows(20, 1, 1));
}

/// 1 MiB of codes that never advance and blend, in each of four fonts and in all colour sets.
void StayCodes(const HostileDisk& disk) {
    constexpr unsigned kSlots = 4;
    for (unsigned slot = 0; slot < kSlots; ++slot) {
        files::FontFile font = EmptyFont(40 + slot);
        files::RunCodes codes(kMebibyte / 4 + slot * 16, files::BlendedStay(files::kFaceIndex, 128));
        codes.push_back(files::EndOfGlyph());
        AddShared(font, codes);
        disk.WriteFont(slot + 1, font);
    }
    disk.WriteMessage(FullRows(kSlots * kColourSets * kCodes / kLongestRow, kSlots, kColourSets));
}

/// An RGBA picture of 4096 x 4096 pixels, all a hole.
void LargeRgbaPicture(const HostileDisk& disk) {
    disk.Write("MESSAGES/.0001", files::WriteRgbaFile(717, {.width = 4096, .height = 4096, .length = 65 * kMebibyte}),
               66 * kMebibyte);
}

/// Name lists of 256 MiB: short lines, more than are read, then a hole.
void LongNameLists(const HostileDisk& disk) {
    samples::BitstreamList numbers;
    samples::TypefaceList typefaces;
    for (unsigned n = 0; numbers.Written().size() < 8 * kMebibyte; ++n) {
        numbers.Plain(std::to_string(n), n);
        typefaces.Typeface(std::to_string(n), std::to_string(n) + " BT");
    }
    for (const auto& [name, text] : {std::pair(samples::kBitstreamListName, numbers.Written()),
                                     std::pair(samples::kTypefaceListName, typefaces.Written())}) {
        disk.Write(name, {text.begin(), text.end()}, 256 * kMebibyte);
    }
    disk.WriteFont(1, EmptyFont());
    disk.WriteMessage(FullRows(1, 1, 1));
}

/// A document with as many values as are read, as rows.
void DocumentOfManyValues(const HostileDisk& disk) {
    std::string rows = "[{}";
    for (int n = 1; n < 149000; ++n) rows += ",{}";
    disk.WriteLibrary("{\"rows\":" + rows + "],\"characters\":[]}");
}

/// A document of 8 MiB, all opening brackets.
void DocumentOfBrackets(const HostileDisk& disk) {
    disk.WriteLibrary(std::string(8 * kMebibyte, '['));
}

/// A picture of 4096 x 4096 pixels in few bytes.
void LargeRecordedPicture(const HostileDisk& disk) {
    disk.WriteLibrary(R"({"rows":[{}],"characters":[]})", picture::EncodePng(picture::ClearPicture(4096, 4096)));
}

/// Figures of their own have sheets of large glyphs, files of many MiB, and a message of 25,000 characters.
constexpr HostileFiles kFiles[] = {
    {"wide_glyphs", WideGlyphs},
    {"wide_glyphs_of_many_fonts", WideGlyphsOfManyFonts, 0.3, 80},
    {"glyphs_over_one_another", GlyphsOverOneAnother, 0.2, 88},
    {"tall_typefaces", TallTypefaces},
    {"empty_rows", EmptyRows},
    {"many_tab_fields", ManyTabFields},
    {"sparse_fonts", SparseFonts},
    {"sparse_fonts_within_the_limit", SparseFontsWithinTheLimit, 0.2, 88},
    {"large_sparse_files", LargeSparseFiles, 0.6, 192},
    {"large_stored_glyph", LargeStoredGlyph},
    {"many_stored_glyphs", ManyStoredGlyphs, 0.2, 80},
    {"stay_codes", StayCodes, 0.3},
    {"large_rgba_picture", LargeRgbaPicture, 0.2, 88},
    {"long_name_lists", LongNameLists},
    {"document_of_many_values", DocumentOfManyValues},
    {"document_of_brackets", DocumentOfBrackets},
    {"large_recorded_picture", LargeRecordedPicture, 0.2, 96},
};

}  // namespace

std::span<const HostileFiles> AllHostileFiles() {
    return kFiles;
}

}  // namespace zel::limits
