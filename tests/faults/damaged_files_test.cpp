// Small files of every section, cut at every byte and with every bit flipped. The readers say what the format says, and
// `inspect` gives the verdict that goes with it.
#include <map>

#include <gmock/gmock.h>

#include "faults/failing.h"
#include "inspect/inspect.h"
#include "module/font/format/font_loader.h"
#include "module/message/format/message_loader.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using Bytes = std::span<const std::uint8_t>;

struct Section {
    std::string name;
    std::uint64_t start, end;
};

struct SectionList : message::SectionObserver {
    void OnSection(const char* name, std::uint64_t offset, std::uint64_t size, std::uint64_t) override {
        list.push_back({name, offset, offset + size});
    }
    std::vector<Section> list;
};

std::string Outcome(message::MessageOutcome outcome) {
    return "message " + std::to_string(static_cast<int>(outcome));
}
std::string Outcome(font::FontOutcome outcome) {
    return "font " + std::to_string(static_cast<int>(outcome));
}

/// Reads a message or a font and lets it go.
std::string Read(bool font, Bytes file, message::SectionObserver* observer = nullptr) {
    if (font) {
        font::LoadedFont loaded;
        return Outcome(font::LoadFont(file, loaded, observer));
    }
    message::LoadedMessage loaded;
    return Outcome(message::LoadMessage(file, loaded, observer));
}

/// What the format requires of a file that ends in this section: a failure, or nothing where the section is optional:
/// the rows, the header before them, the records of a tab table, the pixels of a glyph.
std::string WhenCutIn(const Section& section, std::size_t end, bool font, bool font_leads, bool first_sample) {
    static const std::map<std::string, std::string> kMissing = {
        {"section flags", Outcome(message::MessageOutcome::kShortFlags)},
        {"palette", Outcome(message::MessageOutcome::kShortPalette)},
        {"font header", Outcome(font::FontOutcome::kShortFontHeader)},
        {"character directory", Outcome(font::FontOutcome::kShortDirectory)},
        {"auxiliary block", Outcome(font::FontOutcome::kShortBlock)},
        {"word table", Outcome(font::FontOutcome::kShortBlock)},
        {"character table a", Outcome(font::FontOutcome::kShortBlock)},
        {"character table b", Outcome(font::FontOutcome::kShortBlock)},
    };
    const auto cut_before = [&](std::uint64_t size) { return section.start + size > end; };
    if (section.name == "Psos file header")
        return font ? Outcome(font::FontOutcome::kShortPsosHeader) : Outcome(message::MessageOutcome::kShortFileHeader);
    if (section.name == "encoding data")
        return Outcome(font_leads ? font::FontOutcome::kShortLeadingEncoding : font::FontOutcome::kShortEncoding);
    if (section.name == "sample block" && !cut_before(10)) return Outcome(font::FontOutcome::kShortSampleRow);
    if (section.name == "sample block")
        return Outcome(font_leads && first_sample ? font::FontOutcome::kShortLeadingSample
                                                  : font::FontOutcome::kShortBlock);
    if (section.name == "stored glyph") return cut_before(4) ? Outcome(font::FontOutcome::kShortBlock) : "";
    if (section.name == "background")
        return Outcome(cut_before(2) ? message::MessageOutcome::kUnknownBackground
                                     : message::MessageOutcome::kShortBackground);
    if (section.name == "tab table") return cut_before(2) ? Outcome(message::MessageOutcome::kTabVersionBelow2) : "";
    const auto missing = kMissing.find(section.name);
    return missing != kMissing.end() ? missing->second : "";
}

bool IsRead(const std::string& outcome) {
    return outcome.ends_with(" 0");
}

/// `info` calls a file broken when the import refuses it, and only then. A file that was cut is never whole.
void CheckVerdict(Bytes file, const std::string& outcome, bool cut) {
    if (file.size() < 4) return;
    const inspect::FileReport report = inspect::InspectBytes(file, ".0001");
    if (cut) {
        ASSERT_NE(report.verdict, inspect::Verdict::kWhole) << file.size();
    }
    if (report.kind != inspect::FileKind::kMessage && report.kind != inspect::FileKind::kFont) return;
    ASSERT_EQ(report.verdict != inspect::Verdict::kBroken, IsRead(outcome)) << report.reason;
}

void CheckCuts(bool font, Bytes file) {
    SectionList sections;
    const std::string whole = Read(font, file, &sections);
    if (!IsRead(whole)) sections.list.push_back({"section flags", 136, 152});  // not reported for a picture
    const bool font_leads = font && file[240] == 0 && file[241] == kFontFlagsLeadingSample;
    auto section = sections.list.begin();
    bool first_sample = true;
    for (std::size_t end = 0; end < file.size(); ++end) {
        for (; section != sections.list.end() && section->end <= end; ++section) {
            first_sample = first_sample && section->name != "sample block";
        }
        const std::int64_t blocks = failing::LiveBlocks();
        const std::string outcome = Read(font, file.first(end));
        ASSERT_EQ(failing::LiveBlocks(), blocks) << end;
        std::string expected;
        for (auto next = section; expected.empty() && next != sections.list.end(); ++next) {
            expected = WhenCutIn(*next, end, font, font_leads, first_sample);
        }
        ASSERT_EQ(outcome, expected.empty() ? whole : expected) << end;
        CheckVerdict(file.first(end), outcome, true);
    }
    EXPECT_EQ(Read(font, file), whole);
}

void CheckBits(bool font, Bytes file) {
    std::vector<std::uint8_t> damaged(file.begin(), file.end());
    for (std::size_t bit = 0; bit < file.size() * 8; ++bit) {
        SCOPED_TRACE(bit);
        const auto mask = static_cast<std::uint8_t>(0x80 >> bit % 8);
        damaged[bit / 8] ^= mask;
        const std::int64_t blocks = failing::LiveBlocks();
        const std::string outcome = Read(font, damaged);
        ASSERT_EQ(failing::LiveBlocks(), blocks);
        CheckVerdict(damaged, outcome, false);
        damaged[bit / 8] ^= mask;
    }
}

/// A font whose first sample block is in front of the others.
files::FontFile LeadingSampleFont() {
    files::FontFile font = GoodFont();
    font.header.font_flags = kFontFlagsLeadingSample;
    font.first_sample = font.sample;
    return font;
}

TEST(SmallFiles, AreReportedWhereverTheyAreCut) {
    files::MessageFile ends_with_rows{.rows = GoodMessage().rows};
    ends_with_rows.flash_font.emplace().encoding_size = 40;
    CheckCuts(false, files::WriteMessage(ends_with_rows));
    CheckCuts(false, files::WriteMessage(GoodMessage()));
    CheckCuts(false, files::WriteRgbaFile(714, {.width = 1, .height = 1, .pixels = files::Bytes(4, 9)}));
    CheckCuts(true, files::WriteFont(GoodFont()));
    CheckCuts(true, files::WriteFont(LeadingSampleFont()));
}

TEST(SmallFiles, AreReportedWhicheverBitIsFlipped) {
    files::MessageFile message = GoodMessage();
    message.background.reset();
    message.palette->entries.resize(2);
    CheckBits(false, files::WriteMessage(message));
    CheckBits(true, files::WriteFont(GoodFont()));
}

}  // namespace

}  // namespace zel::test
