#include "samples/disk/disk_fonts.h"

namespace zel::samples {
namespace {

constexpr const char* kSans = "DejaVu Sans";
constexpr const char* kSerif = "DejaVu Serif";
constexpr const char* kMono = "DejaVu Sans Mono";

constexpr Edge Border(unsigned size) {
    return {EdgeType::kBorder, 0, size};
}
constexpr Edge DropShadow(unsigned direction, unsigned size) {
    return {EdgeType::kDropShadow, direction, size};
}
constexpr Edge Offset(unsigned direction, unsigned size) {
    return {EdgeType::kOffset, direction, size};
}

/// A font with every optional block that a plain one can have.
DiskFont MakeFullFont() {
    DiskFont font = MakeDiskFont({.number = 2,
                                  .name = "Lantern 28",
                                  .id_text = "5020",
                                  .face = {.family = kSans, .em = 28},
                                  .flags = files::kPlainFont | files::kHasCharTables,
                                  .headroom = 1});
    font.file.sample = MakeSampleBlock({.family = kSans, .em = 28});
    font.file.aux_block = {'A', 'U', 'X', ' ', 0, 1, 2, 3};
    for (const auto& [pair, kerning] : font.kerning) {
        if (pair.first != 'T') continue;
        font.file.word_table.push_back(static_cast<std::uint16_t>(static_cast<unsigned char>(pair.second)));
        font.file.word_table.push_back(static_cast<std::uint16_t>(kerning));
    }
    for (unsigned code = 0; code < files::kFontCharCount; ++code) {
        const auto metric = static_cast<std::uint8_t>(font.file.directory[code].glyph_metric);
        font.file.char_table_a.insert(font.file.char_table_a.end(), {0, metric});
        font.file.char_table_b.insert(font.file.char_table_b.end(), {static_cast<std::uint8_t>(code), 0});
    }
    return font;
}

/// font_flags 18: one sample block after the encoding data and a second one in the usual place.
DiskFont MakeSampleFirstFont() {
    const FaceChoice face{.family = kSerif, .em = 34, .slanted = true};
    DiskFont font = MakeDiskFont(
        {.number = 18, .name = "Harbour Slant 34", .id_text = "5032", .face = face, .flags = files::kSampleFirstFont});
    font.file.first_sample = MakeSampleBlock({.family = kSerif, .em = 20});
    font.file.sample = MakeSampleBlock(face);
    return font;
}

}  // namespace

std::vector<const DiskFont*> FontShelf::All() const {
    return {&lantern_bold_38, &lantern_28,     &lantern_shade_32, &harbour_bold_46, &lantern_shadow,
            &harbour_shadow,  &lantern_offset, &harbour_slant_34, &quay_bold_64,    &quay_30,
            &chrome_64,       &gold_52,        &dejavu_bold_34,   &artwork};
}

FontShelf MakeFontShelf() {
    const FaceChoice bold_44{.family = kSans, .bold = true, .em = 44};
    FontShelf shelf;
    shelf.lantern_bold_38 = MakeDiskFont(
        {.number = 1, .name = "Lantern Bold 38", .id_text = "5021", .face = {.family = kSans, .bold = true, .em = 38}});
    shelf.lantern_28 = MakeFullFont();
    shelf.lantern_shade_32 = MakeDiskFont({.number = 3,
                                           .name = "Lantern Shade 32",
                                           .id_text = "5021",
                                           .face = {.family = kSans, .bold = true, .em = 32},
                                           .edge = DropShadow(0, 3),
                                           .headroom = 2});
    shelf.harbour_bold_46 = MakeDiskFont({.number = 12,
                                          .name = "Harbour Bold 46",
                                          .id_text = "5031",
                                          .face = {.family = kSerif, .bold = true, .em = 46},
                                          .edge = Border(2)});
    shelf.lantern_shadow = MakeDiskFont(
        {.number = 14, .name = "Lantern Shadow", .id_text = "5021", .face = bold_44, .edge = DropShadow(0, 6)});
    shelf.harbour_shadow = MakeDiskFont({.number = 15,
                                         .name = "Harbour Shadow",
                                         .id_text = "5031",
                                         .face = {.family = kSerif, .bold = true, .em = 44},
                                         .edge = DropShadow(2, 4)});
    shelf.lantern_offset = MakeDiskFont({.number = 16,
                                         .name = "Lantern Offset",
                                         .id_text = "5021",
                                         .face = {.family = kSans, .bold = true, .em = 44, .width_percent = 86},
                                         .edge = Offset(0, 10)});
    shelf.harbour_slant_34 = MakeSampleFirstFont();
    shelf.quay_bold_64 = MakeDiskFont({.number = 20,
                                       .name = "Quay Bold 64",
                                       .id_text = "5041",
                                       .face = {.family = kMono, .bold = true, .em = 64},
                                       .edge = Border(1)});
    shelf.quay_30 = MakeDiskFont({.number = 21,
                                  .name = "Quay 30",
                                  .id_text = "5040",
                                  .face = {.family = kMono, .bold = true, .em = 30},
                                  .edge = DropShadow(1, 2)});
    shelf.chrome_64 = MakeDiskFont({.number = 31,
                                    .name = "Chrome 64",
                                    .id_text = "0031",
                                    .face = {.family = kSerif, .bold = true, .em = 64},
                                    .finish = Finish::kChrome});
    shelf.gold_52 = MakeDiskFont({.number = 32,
                                  .name = "Gold 52",
                                  .id_text = "0032",
                                  .face = {.family = kSans, .bold = true, .em = 52},
                                  .finish = Finish::kGold});
    shelf.dejavu_bold_34 = MakeDiskFont({.number = 40,
                                         .name = "TT DejaVu Sans Bold",
                                         .id_text = "0040",
                                         .face = {.family = kSans, .bold = true, .em = 34}});
    shelf.artwork = MakeArtworkFont(60);
    return shelf;
}

BitstreamList MakeBitstreamList() {
    BitstreamList list;
    list.Family("Lantern 20", "a plain sans serif").Style("roman", 20).Style("bold", 21).Style("italic", 22);
    list.Family("Harbour 30", "a bookish serif").Style("roman", 30).Style("bold", 31).Style("italic", 32);
    list.Family("Quay Monospaced").Style("roman", 40).Style("bold", 41);
    list.Plain("Gold 52", 52, "set from the sans serif");
    list.Plain("Chrome 64", 64, "set from the serif");
    return list;
}

TypefaceList MakeTypefaceList() {
    TypefaceList list;
    for (const char* style : {"roman", "bold", "italic"}) {
        list.Typeface(kSans, std::string("Lantern 20 ") + style + " BT");
        list.Typeface(kSerif, std::string("Harbour 30 ") + style + " BT");
    }
    list.Typeface(kMono, "Quay Monospaced roman BT").Typeface(kMono, "Quay Monospaced bold BT");
    list.Typeface(kSans, "Gold 52 BT").Typeface(kSerif, "Chrome 64 BT");
    return list;
}

}  // namespace zel::samples
