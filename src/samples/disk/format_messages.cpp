#include "samples/disk/format_messages.h"

#include <array>
#include <numeric>
#include <string>

#include "samples/disk/artwork.h"
#include "samples/disk/house_style.h"
#include "samples/disk/page.h"

namespace zel::samples {
namespace {

/// A number that no font of the disk has.
constexpr unsigned kMissingFont = 99;

void Title(Page& page, const FontShelf& fonts, const char* title) {
    page.Line(92, fonts.lantern_28, 6, kSafeLeft, title);
}

files::MessageFile MixedFonts(const FontShelf& fonts) {
    Page page;
    Title(page, fonts, "Fonts and colours in one row");
    const auto append = [&page](const DiskFont& font, unsigned colour_set, int x, std::string_view text) {
        page.Text(font, colour_set, x, text);
        return x + TextWidth(font, text);
    };
    page.Row(190, fonts.harbour_bold_46);
    int x = append(fonts.harbour_bold_46, 1, kSafeLeft, "Ferry ");
    x = append(fonts.lantern_bold_38, 0, x, "to ");
    x = append(fonts.lantern_shadow, 2, x, "Halden ");
    append(fonts.quay_30, 4, x, "delayed");
    page.Row(270, fonts.lantern_bold_38);
    x = kSafeLeft;
    unsigned colour_set = 0;
    for (const char* word : {"A ", "row ", "in ", "eight ", "sets ", "of ", "two ", "..."}) {
        x = append(fonts.lantern_shade_32, colour_set++, x, word);
    }
    page.Row(350, fonts.lantern_28);
    x = append(fonts.lantern_28, 3, kSafeLeft, "Small on ");
    x = append(fonts.gold_52, 7, x, "gold ");
    append(fonts.harbour_slant_34, 5, x, "and slanted serif");
    return Styled(page);
}

files::MessageFile Edges(const FontShelf& fonts) {
    Page page;
    Title(page, fonts, "Edges");
    struct Style {
        const DiskFont& font;
        unsigned colour_set;
        const char* text;
    };
    int baseline = 160;
    for (const Style& sample :
         {Style{fonts.lantern_bold_38, 0, "No edge"}, Style{fonts.harbour_bold_46, 1, "Border"},
          Style{fonts.lantern_shadow, 5, "Drop shadow"}, Style{fonts.harbour_shadow, 2, "Shadow to the left"},
          Style{fonts.lantern_offset, 4, "Offset"}}) {
        page.Line(baseline, sample.font, sample.colour_set, kSafeLeft, sample.text);
        baseline += 66;
    }
    return Styled(page);
}

/// Rearranges the records of a row: each moves by the same step, which must not divide their number.
void Scatter(files::RowText& row, unsigned step) {
    const auto count = static_cast<unsigned>(row.cells.size());
    if (std::gcd(count, step) != 1) ++step;
    std::vector<unsigned> places;
    for (unsigned k = 0; k < count; ++k) places.push_back((k * step + 3) % count);
    files::ShuffleRecords(row, places);
}

files::MessageFile Scattered(const FontShelf& fonts) {
    Page page;
    Title(page, fonts, "Records out of order, chained");
    page.Line(200, fonts.lantern_shadow, 5, kSafeLeft, "ALL IN GOOD ORDER");
    page.Line(270, fonts.lantern_shade_32, 0, kSafeLeft, "whatever the file says");
    files::MessageFile message = Styled(page);
    Scatter(message.rows[1], 5);
    Scatter(message.rows[2], 7);
    return message;
}

files::MessageFile TabFields(const FontShelf& fonts) {
    Page page;
    files::TabTable tabs;
    Title(page, fonts, "A form with tab fields");
    page.Row(170, fonts.lantern_28).Text(fonts.lantern_28, 6, kSafeLeft, "Name");
    page.Text(fonts.lantern_shade_32, 0, 200, "Ada Tolley");
    tabs.fields.push_back(page.Tab("NAME", 200, 420, fonts.lantern_shade_32, 0));
    tabs.fields.push_back(page.Tab("WHOLE LINE", 200, 640, fonts.lantern_shade_32, 1));  // overlaps NAME
    page.Row(230, fonts.lantern_28).Text(fonts.lantern_28, 6, kSafeLeft, "Town");
    tabs.fields.push_back(page.Tab("TOWN", 200, 420, fonts.lantern_shade_32, 2));
    tabs.fields.push_back(page.Tab("un-named", 440, 640, fonts.lantern_shade_32, 3));
    page.BlankRow(290, fonts.lantern_shade_32);
    tabs.fields.push_back(page.Tab("17 CHARACTERS LON", 72, 640, fonts.lantern_shade_32, 4));
    page.Row(350, fonts.lantern_28).Text(fonts.lantern_28, 6, kSafeLeft, "Font by the row");
    files::TabField by_row = page.Tab("ANY FONT", 400, 640, fonts.lantern_28, 5);
    by_row.tab_font = 20;
    tabs.fields.push_back(by_row);
    files::TabField backwards = page.Tab("BACKWARDS", 300, 500, fonts.lantern_28, 5);
    std::swap(backwards.tab_start, backwards.tab_end);
    tabs.fields.push_back(backwards);
    files::TabField no_row = page.Tab("NO SUCH ROW", 300, 500, fonts.lantern_28, 5);
    no_row.tab_row = 40;
    tabs.fields.push_back(no_row);
    page.File().tabs = tabs;
    return Styled(page);
}

files::MessageFile MissingFont(const FontShelf& fonts) {
    DiskFont missing = fonts.lantern_28;
    missing.number = kMissingFont;
    Page page;
    Title(page, fonts, "A font that isn't on the disk");
    page.Line(200, fonts.lantern_shade_32, 0, kSafeLeft, "This row is whole");
    page.Row(270, fonts.lantern_shade_32).Text(fonts.lantern_shade_32, 5, kSafeLeft, "This row ends here:");
    page.Text(missing, 4, 420, "the rest is lost");
    page.Line(340, fonts.lantern_shade_32, 0, kSafeLeft, "And the next one is whole");
    return Styled(page);
}

files::MessageFile DefaultPalette(const FontShelf& fonts) {
    constexpr std::array<const char*, 8> kNames{"Black", "Green", "Blue", "Cyan", "Red", "Yellow", "Magenta", "Grey"};
    Page page;
    page.Line(92, fonts.lantern_28, 7, kSafeLeft, "Without a palette of its own");
    for (unsigned set = 0; set < kNames.size(); ++set) {
        page.Line(168 + 72 * static_cast<int>(set % 4), fonts.harbour_bold_46, set, set < 4 ? kSafeLeft : 380,
                  kNames[set]);
    }
    return page.Finish();
}

files::MessageFile OwnPalette(const FontShelf& fonts) {
    constexpr std::array<const char*, 8> kNames{"Dawn", "Tide", "Moss", "Clay", "Plum", "Wheat", "Slate", "Snow"};
    Page page;
    Title(page, fonts, "Eight colour sets of its own");
    for (unsigned set = 0; set < kNames.size(); ++set) {
        page.Line(168 + 72 * static_cast<int>(set % 4), fonts.lantern_shadow, set, set < 4 ? kSafeLeft : 380,
                  kNames[set]);
    }
    page.File().palette = MakePalette({{{0xFFB4A0, 0x6A2440},
                                        {0x66D2D6, 0x0B4A5A},
                                        {0xA9C46C, 0x2C4418},
                                        {0xD98E5F, 0x54260C},
                                        {0xC8A2E0, 0x3C1E5A},
                                        {0xF3DC94, 0x6E5414},
                                        {0xA8B4C4, 0x26303E},
                                        {0xFAFCFF, 0x4A6A8A}}});
    return page.Finish();
}

files::MessageFile WithBackground(const FontShelf& fonts) {
    Page page;
    Title(page, fonts, "A background section, a tab field");
    page.Line(230, fonts.harbour_bold_46, 0, kScreenCentre, "Please stand by", Align::kCentre, 1);
    page.File().background = files::BackgroundBlock{.tag = 0xBBBC, .words = {}, .value = 0x1234};
    page.File().tabs = files::TabTable{.fields = {page.Tab("NOTICE", 120, 600, fonts.harbour_bold_46, 0)}};
    return Styled(page);
}

files::MessageFile FontForms(const FontShelf& fonts) {
    Page page;
    Title(page, fonts, "Fonts of several forms");
    page.Line(190, fonts.dejavu_bold_34, 1, kSafeLeft, "Named after a TrueType face");
    page.Line(260, fonts.lantern_28, 0, kSafeLeft, "With tables and a sample block");
    page.Line(330, fonts.harbour_slant_34, 3, kSafeLeft, "Sample block behind the codes");
    return Styled(page);
}

files::MessageFile FlashFontMessage(const FontShelf& fonts) {
    Page page;
    Title(page, fonts, "Behind a flash font");
    page.Line(230, fonts.lantern_bold_38, 5, kSafeLeft, "Newsflash");
    page.BlankRow(290, fonts.lantern_28);
    page.Line(350, fonts.lantern_28, 0, kSafeLeft, "More at nine");
    page.File().flash_font = files::FlashFont{.encoding_size = 300, .word_table_size = 40};
    return Styled(page);
}

}  // namespace

std::vector<DiskMessage> MakeFormatMessages(const FontShelf& fonts) {
    return {{10, "several fonts and colour sets in a row", files::WriteMessage(MixedFonts(fonts))},
            {11, "edges of each type", files::WriteMessage(Edges(fonts))},
            {12, "records out of order", files::WriteMessage(Scattered(fonts))},
            {13, "tab fields", files::WriteMessage(TabFields(fonts))},
            {14, "a missing font", files::WriteMessage(MissingFont(fonts))},
            {15, "the default palette", files::WriteMessage(DefaultPalette(fonts))},
            {16, "eight colour sets of its own", files::WriteMessage(OwnPalette(fonts))},
            {17, "a background section", files::WriteMessage(WithBackground(fonts))},
            {18, "fonts of every form", files::WriteMessage(FontForms(fonts))},
            {19, "a flash font", files::WriteMessage(FlashFontMessage(fonts))},
            {20, "RGBA file of type 714, a station mark", files::WriteRgbaFile(714, PaintStationMark())},
            {21, "RGBA file of type 717, a background", files::WriteRgbaFile(717, PaintBackdrop())}};
}

}  // namespace zel::samples
