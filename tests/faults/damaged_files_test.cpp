// Files of the demonstration disk, and small ones of every section, cut at every byte; the small ones with every bit
// flipped. The readers say what the format says, and `inspect` gives the verdict that goes with it.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include <gmock/gmock.h>

#include "faults/failing.h"
#include "inspect/inspect.h"
#include "inspect/sample_files.h"
#include "module/font/format/font_loader.h"
#include "module/message/format/message_loader.h"

#if defined(ZELTRANS_SAMPLE_DISK)
#include "samples/disk/demo_disk.h"
#endif

namespace zel::test {

namespace {

using Bytes = std::span<const std::uint8_t>;

#if defined(ZELTRANS_SANITIZED)
constexpr std::size_t kFontStride = 61;  // bytes between the cuts of a disk's font, away from where a section begins
#else
constexpr std::size_t kFontStride = 1;
#endif
constexpr std::size_t kInspectStride = 509;  // between the cuts of a disk's font that are inspected too

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

/// `info` calls a file broken when the import refuses it, and only then.
void CheckVerdict(Bytes file, const std::string& outcome) {
    if (file.size() < 4) return;
    const inspect::FileReport report = inspect::InspectBytes(file, ".0001");
    if (report.kind != inspect::FileKind::kMessage && report.kind != inspect::FileKind::kFont) return;
    ASSERT_EQ(report.verdict != inspect::Verdict::kBroken, IsRead(outcome)) << report.reason;
}

void CheckCuts(bool font, Bytes file, std::size_t stride, std::size_t inspect_stride) {
    SectionList sections;
    const std::string whole = Read(font, file, &sections);
    if (!IsRead(whole)) sections.list.push_back({"section flags", 136, 152});  // not reported for a picture
    const bool font_leads = file[240] == 0 && file[241] == kFontFlagsLeadingSample;
    auto section = sections.list.begin();
    bool first_sample = true;
    for (std::size_t end = 0; end < file.size(); ++end) {
        for (; section != sections.list.end() && section->end <= end; ++section) {
            first_sample = first_sample && section->name != "sample block";
        }
        const bool edge = section != sections.list.end() && (end < section->start + 12 || end + 1 == section->end);
        if (end % stride != 0 && !edge) continue;
        const std::int64_t blocks = failing::LiveBlocks();
        const std::string outcome = Read(font, file.first(end));
        ASSERT_EQ(failing::LiveBlocks(), blocks) << end;
        std::string expected;
        for (auto next = section; expected.empty() && next != sections.list.end(); ++next) {
            expected = WhenCutIn(*next, end, font, font_leads, first_sample);
        }
        ASSERT_EQ(outcome, expected.empty() ? whole : expected) << end;
        if (end % inspect_stride == 0 || edge) CheckVerdict(file.first(end), outcome);
    }
    EXPECT_EQ(Read(font, file), whole);
}

void CheckBits(bool font, Bytes file, std::size_t bytes) {
    std::vector<std::uint8_t> damaged(file.begin(), file.end());
    for (std::size_t bit = 0; bit < bytes * 8; ++bit) {
        SCOPED_TRACE(bit);
        const auto mask = static_cast<std::uint8_t>(0x80 >> bit % 8);
        damaged[bit / 8] ^= mask;
        const std::int64_t blocks = failing::LiveBlocks();
        const std::string outcome = Read(font, damaged);
        ASSERT_EQ(failing::LiveBlocks(), blocks);
        CheckVerdict(damaged, outcome);
        damaged[bit / 8] ^= mask;
    }
}

TEST(SmallFiles, AreReportedWhereverTheyAreCut) {
    CheckCuts(false, samples::WriteMessage(GoodMessage()), 1, 1);
    CheckCuts(true, samples::WriteFont(GoodFont()), 1, 1);
}

TEST(SmallFiles, AreReportedWhicheverBitIsFlipped) {
    samples::MessageFile message = GoodMessage();
    message.background.reset();
    message.palette->entries.resize(2);
    const samples::Bytes bytes = samples::WriteMessage(message);
    CheckBits(false, bytes, bytes.size());
    const samples::Bytes font = samples::WriteFont(GoodFont());
    CheckBits(true, font, font.size());
}

#if defined(ZELTRANS_SAMPLE_DISK)
struct DemonstrationDisk : testing::Test {
    static void SetUpTestSuite() { samples::WriteDemonstrationDisk(Directory()); }
    static void TearDownTestSuite() { std::filesystem::remove_all(Directory()); }
    static std::filesystem::path Directory() {
        return std::filesystem::temp_directory_path() / ("zel-faults-" + std::to_string(::getpid()));
    }
    template <typename Check>
    static void ForEach(const char* directory, Check&& check) {
        for (const auto& entry : std::filesystem::directory_iterator(Directory() / directory)) {
            SCOPED_TRACE(entry.path());
            std::ifstream in(entry.path(), std::ios::binary);
            const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
            ASSERT_FALSE(bytes.empty());
            check(Bytes(bytes));
        }
    }
};

TEST_F(DemonstrationDisk, ReportsEveryCutInAMessage) {
    ForEach("MESSAGES", [](Bytes file) { CheckCuts(false, file, file.size() < 10000 ? 1 : kFontStride, 1); });
}

TEST_F(DemonstrationDisk, ReportsEveryCutInAFont) {
    ForEach("MACHINE", [](Bytes file) { CheckCuts(true, file, kFontStride, kInspectStride); });
}

TEST_F(DemonstrationDisk, ReportsEveryFlippedBitInAMessage) {
    ForEach("MESSAGES", [](Bytes file) { CheckBits(false, file, file.size() < 1600 ? file.size() : 152 + 52); });
}
#endif

}  // namespace

}  // namespace zel::test
