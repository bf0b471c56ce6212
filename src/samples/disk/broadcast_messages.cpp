#include "samples/disk/broadcast_messages.h"

#include <array>
#include <string>

#include "samples/disk/artwork.h"
#include "samples/disk/house_style.h"
#include "samples/disk/page.h"

namespace zel::samples {
namespace {

/// The colour sets of the house palette.
constexpr unsigned kWhite = 0, kYellow = 1, kSky = 2, kMint = 3, kCoral = 4, kAmber = 5, kSteel = 6, kLight = 7;

/// A picture of the artwork font; `top` is the line of its upper edge.
void Picture(Page& page, const FontShelf& fonts, Artwork which, int left, int top) {
    page.Line(top, fonts.artwork, kLight, left, std::string(1, static_cast<char>(which)));
}

files::MessageFile LowerThird(const FontShelf& fonts) {
    Page page;
    Picture(page, fonts, Artwork::kLowerThird, kSafeLeft, 344);
    page.Line(386, fonts.lantern_bold_38, kWhite, 98, "Margit Alden");
    page.Line(421, fonts.lantern_28, kYellow, 99, "Harbour master, Port Ellery", Align::kLeft, 1);
    return Styled(page);
}

files::MessageFile FullScreenList(const FontShelf& fonts) {
    constexpr std::array<const char*, 6> kPoints{"Ferry fares frozen until spring",   "New lifeboat named at Ellery",
                                                 "Orchard growers expect late frost", "Library opens on Sundays",
                                                 "Bridge works: one lane to Friday",  "Choir wins the northern cup"};
    Page page;
    page.Line(96, fonts.harbour_bold_46, kWhite, kSafeLeft, "Tonight's headlines");
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 114);
    int baseline = 164;
    for (std::size_t n = 0; n < kPoints.size(); ++n, baseline += 50) {
        page.Row(baseline, fonts.lantern_shade_32);
        page.Text(fonts.lantern_shade_32, kAmber, 106, std::to_string(n + 1), Align::kRight);
        page.Text(fonts.lantern_28, kWhite, 128, kPoints[n]);
    }
    return Styled(page);
}

files::MessageFile Score(const FontShelf& fonts) {
    Page page;
    page.Line(92, fonts.lantern_shade_32, kAmber, kScreenCentre, "NORTHERN CUP", Align::kCentre, 5);
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 108);
    Picture(page, fonts, Artwork::kStrip, kSafeLeft, 154);
    page.Row(184, fonts.lantern_shade_32).Text(fonts.lantern_shade_32, kWhite, 92, "ELLERY ROVERS");
    page.Line(192, fonts.gold_52, kLight, 630, "3", Align::kRight);
    Picture(page, fonts, Artwork::kDarkStrip, kSafeLeft, 220);
    page.Row(250, fonts.lantern_shade_32).Text(fonts.lantern_shade_32, kWhite, 92, "HALDEN TOWN");
    page.Line(258, fonts.gold_52, kLight, 630, "1", Align::kRight);
    page.Line(324, fonts.lantern_28, kSteel, 92, "Lund 12', 57'   Farrow 71'");
    page.Line(364, fonts.lantern_28, kSteel, 92, "Osei 80' (pen)");
    page.Line(424, fonts.quay_30, kYellow, 630, "FULL TIME", Align::kRight, 2);
    return Styled(page);
}

files::MessageFile Credits(const FontShelf& fonts) {
    struct Credit {
        const char* role;
        const char* name;
    };
    constexpr std::array<Credit, 4> kCredits{{{"Script", "JONAS WERRING"},
                                              {"Camera", "ADA TOLLEY"},
                                              {"Sound", "PER LINDQUIST"},
                                              {"Director", "HELEN MARSH"}}};
    Page page;
    int baseline = 98;
    for (const auto& credit : kCredits) {
        page.Line(baseline, fonts.lantern_28, kSteel, kScreenCentre, credit.role, Align::kCentre, 1);
        page.Line(baseline + 38, fonts.lantern_shade_32, kWhite, kScreenCentre, credit.name, Align::kCentre, 3);
        baseline += 96;
    }
    return Styled(page);
}

files::MessageFile Clock(const FontShelf& fonts) {
    Page page;
    page.Line(188, fonts.lantern_28, kSteel, kScreenCentre, "THE NEWS FOLLOWS AT NINE", Align::kCentre, 4);
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 208);
    page.Line(278, fonts.quay_bold_64, kWhite, kScreenCentre, "20:59:48", Align::kCentre, 6);
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 300);
    page.Line(344, fonts.lantern_shade_32, kAmber, kScreenCentre, "Saturday 14 March", Align::kCentre);
    return Styled(page);
}

files::MessageFile Weather(const FontShelf& fonts) {
    struct Town {
        const char* name;
        Artwork sky;
        const char* high;
        const char* low;
    };
    constexpr std::array<Town, 5> kTowns{{{"Port Ellery", Artwork::kSun, "18\xB0", "11\xB0"},
                                          {"Halden", Artwork::kCloud, "15\xB0", "9\xB0"},
                                          {"Marsh End", Artwork::kRain, "13\xB0", "8\xB0"},
                                          {"Tolley Down", Artwork::kRain, "12\xB0", "6\xB0"},
                                          {"Cape Farrow", Artwork::kSun, "19\xB0", "12\xB0"}}};
    Page page;
    page.Line(96, fonts.harbour_bold_46, kWhite, kSafeLeft, "Tomorrow");
    page.Row(146, fonts.lantern_28).Text(fonts.lantern_28, kSteel, 520, "High", Align::kRight);
    page.Text(fonts.lantern_28, kSteel, 624, "Low", Align::kRight);
    int top = 164;
    for (const auto& town : kTowns) {
        Picture(page, fonts, Artwork::kStrip, kSafeLeft, top);
        Picture(page, fonts, town.sky, 348, top - 1);
        page.Row(top + 30, fonts.lantern_28).Text(fonts.lantern_28, kWhite, 92, town.name);
        page.Text(fonts.lantern_shade_32, kAmber, 528, town.high, Align::kRight);
        page.Text(fonts.lantern_shade_32, kSky, 632, town.low, Align::kRight);
        top += 52;
    }
    return Styled(page);
}

files::MessageFile Prices(const FontShelf& fonts) {
    struct Share {
        const char* name;
        const char* price;
        const char* change;
        unsigned colour_set;
    };
    constexpr std::array<Share, 6> kShares{{{"Alden Line", "412.50", "+6.25", kMint},
                                            {"Cardew Paper", "98.75", "-1.50", kCoral},
                                            {"Ellery Docks", "1204.00", "+18.00", kMint},
                                            {"Halden Steel", "265.25", "-0.75", kCoral},
                                            {"Lund & Osei", "77.00", "0.00", kSteel},
                                            {"Tolley Foods", "531.50", "+2.00", kMint}}};
    Page page;
    page.Row(92, fonts.lantern_bold_38).Text(fonts.lantern_bold_38, kWhite, kSafeLeft, "Closing prices");
    page.Text(fonts.lantern_28, kSteel, 640, "pence", Align::kRight);
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 106);
    int top = 126;
    for (std::size_t n = 0; n < kShares.size(); ++n, top += 50) {
        Picture(page, fonts, n % 2 == 0 ? Artwork::kStrip : Artwork::kDarkStrip, kSafeLeft, top);
        page.Row(top + 29, fonts.lantern_28).Text(fonts.lantern_28, kWhite, 92, kShares[n].name);
        page.Text(fonts.quay_30, kYellow, 480, kShares[n].price, Align::kRight);
        page.Text(fonts.quay_30, kShares[n].colour_set, 632, kShares[n].change, Align::kRight);
    }
    return Styled(page);
}

files::MessageFile Ident(const FontShelf& fonts) {
    Page page;
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 182);
    page.Line(260, fonts.chrome_64, kLight, kScreenCentre, "Coastal Nine", Align::kCentre, 2);
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 288);
    page.Line(344, fonts.harbour_shadow, kSky, kScreenCentre, "Close to home", Align::kCentre);
    return Styled(page);
}

files::MessageFile PalProgramme(const FontShelf& fonts) {
    struct Programme {
        const char* time;
        const char* name;
    };
    constexpr std::array<Programme, 5> kEvening{{{"18.30", "Harbour Watch"},
                                                 {"19.00", "The Orchard House"},
                                                 {"20.15", "Quiz of the Coast"},
                                                 {"21.00", "The News at Nine"},
                                                 {"21.30", "Film: The Last Ferry"}}};
    Page page(kPal);
    page.Line(112, fonts.harbour_bold_46, kYellow, kSafeLeft, "This evening");
    Picture(page, fonts, Artwork::kRule, kSafeLeft, 132);
    int baseline = 200;
    for (const auto& programme : kEvening) {
        page.Row(baseline, fonts.lantern_shade_32);
        page.Text(fonts.quay_30, kAmber, kSafeLeft, programme.time);
        page.Text(fonts.lantern_shade_32, kWhite, 190, programme.name);
        baseline += 62;
    }
    page.Line(512, fonts.lantern_28, kSteel, kSafeRight, "All times local", Align::kRight);
    return Styled(page);
}

}  // namespace

std::vector<DiskMessage> MakeBroadcastMessages(const FontShelf& fonts) {
    return {{1, "lower third with name and title", files::WriteMessage(LowerThird(fonts))},
            {2, "full-screen list", files::WriteMessage(FullScreenList(fonts))},
            {3, "score", files::WriteMessage(Score(fonts))},
            {4, "centred credits", files::WriteMessage(Credits(fonts))},
            {5, "clock", files::WriteMessage(Clock(fonts))},
            {6, "weather board", files::WriteMessage(Weather(fonts))},
            {7, "price table", files::WriteMessage(Prices(fonts))},
            {8, "station name in stored colour glyphs", files::WriteMessage(Ident(fonts))},
            {9, "PAL programme list", files::WriteMessage(PalProgramme(fonts))}};
}

}  // namespace zel::samples
