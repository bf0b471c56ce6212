// The verdicts of an inspection and what an import makes of the same file, held to each other over changed and cut
// files.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <set>

#include <gmock/gmock.h>

#include "inspect/inspect.h"
#include "inspect/verify_text.h"
#include "module/contract/zel_message.h"
#include "module/font/format/font_loader.h"
#include "module/message/format/convert_tab_field.h"
#include "module/message/format/message_loader.h"
#include "module/state/module_state.h"
#include "platform/framework/exceptions.h"
#include "samples/name_lists.h"
#include "support/module_fixture.h"
#include "support/sample_files.h"

#ifdef ZELTRANS_HAS_PICTURE
#include "host/picture/rgba_file.h"
#endif

namespace zel::test {

namespace {

using files::Bytes;
using inspect::FileKind;
using inspect::FileReport;
using inspect::Finding;
using inspect::Place;
using inspect::Rule;
using inspect::Severity;
using inspect::Verdict;

using Random = std::minstd_rand;

bool Has(const FileReport& report, Rule rule) {
    return std::ranges::any_of(report.findings, [=](const Finding& finding) { return finding.rule == rule; });
}

/// The places of a rule.
std::vector<Place> PlacesOf(const FileReport& report, Rule rule) {
    std::vector<Place> places;
    for (const Finding& finding : report.findings) {
        if (finding.rule != rule) continue;
        EXPECT_EQ(finding.count, finding.places.size());
        places.insert(places.end(), finding.places.begin(), finding.places.end());
    }
    return places;
}

/// The sections of a file, for changes within one.
struct Sections : message::SectionObserver {
    void OnSection(const char* name, std::uint64_t offset, std::uint64_t size, std::uint64_t present) override {
        if (present != 0) list.push_back({name, offset, size, present});
    }
    std::vector<inspect::Section> list;
};

/// Changes some bytes of one section to values at the limits of fields, flips bits, or cuts the file in it.
Bytes Changed(Bytes bytes, const std::vector<inspect::Section>& sections, Random& random) {
    constexpr unsigned kValues[] = {0, 1, 2, 16, 18, 26, 63, 64, 170, 192, 200, 255, 0x4000, 0x8000, 65535};
    const auto below = [&](std::size_t end) { return random() % end; };
    for (std::size_t changes = 1 + below(4); changes-- > 0 && !bytes.empty();) {
        inspect::Section section{"", 0, bytes.size(), bytes.size()};
        if (!sections.empty() && below(8) != 0) section = sections[below(sections.size())];
        if (section.offset >= bytes.size()) continue;
        const auto start = static_cast<std::size_t>(section.offset);
        const std::size_t present = std::min(static_cast<std::size_t>(section.present), bytes.size() - start);
        // Most heads are short, and most faults in them.
        const std::size_t at = start + below(below(2) == 0 ? std::min<std::size_t>(present, 24) : present);
        if (below(16) == 0) {
            bytes.resize(at);
        } else if (below(3) == 0) {
            bytes[at] ^= static_cast<std::uint8_t>(1U << below(8));
        } else {
            const unsigned value = kValues[below(std::size(kValues))];
            bytes[at] = static_cast<std::uint8_t>(value);
            if (value > 255 && at > 0) bytes[at - 1] = static_cast<std::uint8_t>(value >> 8);
        }
    }
    return bytes;
}

std::vector<Bytes> Corpus(const std::string& folder) {
    std::vector<Bytes> corpus;
    for (const auto& entry : std::filesystem::directory_iterator(ZELTRANS_FUZZ_CORPUS "/" + folder)) {
        const std::string text = samples_test::ReadAll(entry.path());
        corpus.emplace_back(text.begin(), text.end());
    }
    std::ranges::sort(corpus);  // the order of a directory is any
    EXPECT_FALSE(corpus.empty());
    return corpus;
}

class Agreement : public module_test::ModuleTest {
  protected:
    /// Both depths give the same faults, and the verdict follows from them.
    static FileReport Inspect(const Bytes& bytes, const std::string& name) {
        FileReport report = inspect::InspectBytes(bytes, name, inspect::Depth::kEveryByte);
        const FileReport brief = inspect::InspectBytes(bytes, name);
        EXPECT_EQ(brief.verdict, report.verdict);
        EXPECT_EQ(brief.defects, report.defects);
        const auto faults = inspect::CountFindings(report).faults;
        EXPECT_EQ(faults, inspect::CountFindings(brief).faults);
        EXPECT_EQ(faults == 0, report.verdict == Verdict::kWhole);
        EXPECT_EQ(report.defects.empty() && report.reason.empty(), report.verdict == Verdict::kWhole);
        const bool refuses = std::ranges::any_of(report.findings, [](const Finding& finding) {
            return std::string_view(inspect::TextOf(finding.rule).effect) == "refuses the file";
        });
        EXPECT_EQ(refuses, report.verdict == Verdict::kBroken || report.verdict == Verdict::kForeign) << report.reason;
        for (const Finding& finding : report.findings) {
            EXPECT_FALSE(finding.places.empty());
            // What is missing may begin anywhere after the file's end; a field, after it within its record.
            const bool is_missing = finding.rule == Rule::kSectionPresent || finding.rule == Rule::kSectionNeeded ||
                                    finding.rule == Rule::kTabPresent;
            for (const Place& place : finding.places)
                EXPECT_TRUE(is_missing || place.offset <= report.size + message::kTabRecordSize)
                    << inspect::TextOf(finding.rule).name << " at " << place.offset;
        }
        EXPECT_FALSE(inspect::VerifyText(report, true).empty());
        return report;
    }

    /// Faster than WriteFile, which waits for the disk.
    void Put(const char* name, const Bytes& bytes) const {
        std::ofstream(Native(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    void ExpectSameMessage(const Bytes& bytes);
    void ExpectSameFont(const Bytes& bytes);

    /// Holds a check to changes of each file, and to each of its beginnings.
    /// @param cuts  in bytes; every beginning that is a multiple of it.
    void OverChanges(const std::vector<Bytes>& sources, const std::function<Sections(const Bytes&)>& observe,
                     const std::function<void(const Bytes&)>& check, int count, std::size_t cuts) {
        Random random(20);
        for (std::size_t file = 0; file < sources.size(); ++file) {
            const Sections sections = observe(sources[file]);
            check(sources[file]);
            for (int i = 0; i < count && !HasFailure(); ++i) {
                SCOPED_TRACE("file " + std::to_string(file) + ", change " + std::to_string(i));
                check(Changed(sources[file], sections.list, random));
            }
            for (std::size_t size = 0; size < sources[file].size() && !HasFailure(); size += cuts) {
                SCOPED_TRACE("file " + std::to_string(file) + ", first " + std::to_string(size) + " bytes");
                check({sources[file].begin(), sources[file].begin() + static_cast<std::ptrdiff_t>(size)});
            }
        }
    }

    void ExpectSameRows(const CZelMessage& message, const FileReport& report, const Bytes& bytes);
    void ExpectSameFields(const CZelMessage& message, const FileReport& report);
};

void Agreement::ExpectSameMessage(const Bytes& bytes) {
    const FileReport report = Inspect(bytes, ".0001");
    if (report.message && report.message->row_count > 2000) return;  // too slow here, and nothing new
    Put("MESSAGES/.0001", bytes);
    module_test::OpenDialog dialog(nullptr);
    dialog.m_iLines = ActiveLines(report.message ? report.message->standard : VideoStandard::kNtsc);
    const std::size_t boxes_before = desktop.Boxes().size();
    CZelMessage message("", "D:\\MESSAGES", ".0001", &dialog);
    const bool is_read = message.ReadMessage(&dialog);
    std::string boxes;
    for (std::size_t i = boxes_before; i < desktop.Boxes().size(); ++i)
        boxes += desktop.Boxes()[i].caption + "|" + desktop.Boxes()[i].text + "\n";
    EXPECT_EQ(is_read, report.kind == FileKind::kMessage && report.verdict != Verdict::kBroken) << report.reason;
    if (report.verdict == Verdict::kWhole && report.kind == FileKind::kMessage) {
        EXPECT_EQ(boxes, "");
    }
    if (!is_read) return;
    EXPECT_EQ(boxes.find("Flash Font") != std::string::npos, Has(report, Rule::kFlashFont));
    EXPECT_EQ(boxes.find("Invalid Tab") != std::string::npos,
              Has(report, Rule::kTabRow) || Has(report, Rule::kTabEnds) || Has(report, Rule::kTabPresent))
        << boxes;
    ExpectSameFields(message, report);
    ExpectSameRows(message, report, bytes);
}

void Agreement::ExpectSameFields(const CZelMessage& message, const FileReport& report) {
    const int delivered = message.m_pTabs != nullptr ? message.m_nTabs : 0;
    EXPECT_EQ(report.message->delivery->tab_fields, delivered);
    if (message.m_pTabs == nullptr) return;
    const auto table = std::ranges::find(report.sections, "tab table", &inspect::Section::name);
    ASSERT_NE(table, report.sections.end());
    std::set<std::uint64_t> records;
    for (const Rule rule : {Rule::kTabRow, Rule::kTabEnds, Rule::kTabPresent}) {
        for (const Place& place : PlacesOf(report, rule)) records.insert((place.offset - table->offset - 6) / 26);
    }
    EXPECT_EQ(records.size() + static_cast<std::size_t>(delivered), (table->size - 6) / 26);
}

/// Every character of the file reaches the host, or has a fault with its place.
void Agreement::ExpectSameRows(const CZelMessage& message, const FileReport& report, const Bytes& bytes) {
    EXPECT_EQ(report.message->delivery->rows, message.m_pMsgHeader->RowCount());
    static tag_font_header header{};
    static tag_char_entry directory[kDirectoryEntries] = {};
    CZelFont fonts;
    for (int slot = 0; slot < kFontSlots; ++slot) {
        if (message.GetSlotFontID(slot) == kNoFont) continue;
        fonts.m_Slots[slot].font_header = &header;
        fonts.m_Slots[slot].char_directory = directory;
    }
    chars.clear();
    const_cast<CZelMessage&>(message).EmitCharacters(&Host(), &fonts, false, true);
    std::map<int, std::size_t> delivered;
    std::uint64_t all = 0;
    for (const module_test::CharCall& call : chars) {
        if (call.info.slot < 0) continue;  // a row without characters
        ++delivered[call.info.row_index];
        ++all;
    }
    EXPECT_EQ(report.message->delivery->characters, all);

    const auto rows = std::ranges::find(report.sections, "rows", &inspect::Section::name);
    std::map<int, std::set<std::uint64_t>> left_out;
    for (const Rule rule : {Rule::kCharacterReached, Rule::kSlotRange, Rule::kSlotFont, Rule::kRestOfRow}) {
        for (const Place& place : PlacesOf(report, rule))
            left_out[place.row].insert((place.offset - rows->offset) / sizeof(tag_msg_char));
    }
    std::uint64_t offset = rows->offset;
    for (int r = 0; r < message.m_pMsgHeader->RowCount(); ++r) {
        const tag_msg_row& row = message.m_pRows[r];
        const int records = row.Empty() ? 0 : row.CharCount();
        const std::uint64_t first = offset + 8, end = first + 8 * static_cast<std::uint64_t>(records);
        std::size_t present = 0;
        for (std::uint64_t at = first; at < end && at + 8 <= bytes.size(); at += 8) ++present;
        EXPECT_GE(delivered[r] + left_out[r].size(), present) << "row " << r;
        for (const std::uint64_t record : left_out[r]) {
            EXPECT_GE(record * 8 + rows->offset, first) << "row " << r;
            EXPECT_LT(record * 8 + rows->offset, end) << "row " << r;
        }
        offset = end;
    }
}

void Agreement::ExpectSameFont(const Bytes& bytes) {
    const FileReport report = Inspect(bytes, ".0001");
    Put("MACHINE/.0001", bytes);
    const std::size_t boxes_before = desktop.Boxes().size();
    module_test::FontSet fonts;
    CString path("D:\\MACHINE");
    const bool is_read = fonts.ReadFont(path, 1, 0, false) == 1;
    const std::size_t boxes = desktop.Boxes().size() - boxes_before;
    const bool tessor = boxes != 0 && desktop.Boxes().back().text.find("Tessor") != std::string::npos;
    EXPECT_EQ(is_read, report.kind == FileKind::kFont && report.verdict != Verdict::kBroken) << report.reason;
    if (is_read) {
        EXPECT_EQ(tessor, Has(report, Rule::kPlainFont));
        EXPECT_EQ(boxes, tessor ? 1U : 0U);
        std::set<int> without_head, without_pixels;
        for (const Place& place : PlacesOf(report, Rule::kGlyphHead)) without_head.insert(place.index);
        for (const Rule rule : {Rule::kGlyphSize, Rule::kRunCodesRead}) {
            for (const Place& place : PlacesOf(report, rule)) without_pixels.insert(place.index);
        }
        for (int code = 0; code < kDirectoryEntries; ++code) {
            if (!fonts.m_Slots[0].char_directory[code].HasGlyph()) continue;
            int top = 0;
            bool flag = false, throws = false;
            CRect rect;
            try {
                rect = fonts.GetMFRect(reinterpret_cast<FontAddress>(&fonts.m_Slots[0]), 0, static_cast<DWORD>(code),
                                       top, &flag);
            } catch (CFileException* cut_short) {
                cut_short->Delete();
                throws = true;
            }
            EXPECT_EQ(throws, without_head.contains(code)) << "code " << code;
            if (without_pixels.contains(code)) {
                EXPECT_TRUE(rect.right <= 0 || rect.bottom <= 0) << "code " << code;
            }
        }
    }
    // What a refused file leaves in the slot; FontSet releases a whole font.
    if (fonts.m_Slots[0].font_copy == nullptr) fonts.ReleaseFontData(&fonts.m_Slots[0]);
}

Sections MessageSections(const Bytes& bytes) {
    Sections sections;
    message::LoadedMessage loaded;
    message::LoadMessage(bytes, loaded, &sections);
    return sections;
}

Sections FontSections(const Bytes& bytes) {
    Sections sections;
    font::LoadedFont loaded;
    font::LoadFont(bytes, loaded, &sections);
    return sections;
}

/// Rows whose records are out of order, in several slots, of which one names no font.
files::MessageFile ManyRows() {
    files::MessageFile message = GoodMessage();
    message.header.font_numbers[15] = 40;
    for (unsigned r = 0; r < 20; ++r) {
        files::RowText row = files::RowFromText(40 + r, "several words", 10, 12, {.char_font = r % 3 == 0 ? 15U : 0U});
        const unsigned places[] = {12, 3, 0, 1, 2, 11, 10, 5, 4, 6, 9, 8, 7};
        files::ShuffleRecords(row, places);
        if (r == 7) row.cells[3].char_font = 5;
        message.rows.push_back(row);
    }
    message.background.reset();
    return message;
}

TEST_F(Agreement, HoldsForChangedAndCutMessages) {
    const auto check = [this](const Bytes& bytes) { ExpectSameMessage(bytes); };
    OverChanges({files::WriteMessage(GoodMessage())}, MessageSections, check, 800, 1);
    OverChanges({files::WriteMessage(ManyRows())}, MessageSections, check, 800, 5);
    OverChanges(Corpus("message"), MessageSections, check, 60, 7);
}

TEST_F(Agreement, HoldsForChangedAndCutFonts) {
    const auto check = [this](const Bytes& bytes) { ExpectSameFont(bytes); };
    files::FontFile leading = GoodFont();
    leading.header.font_flags = files::kSampleFirstFont;
    leading.first_sample = leading.sample;
    OverChanges({files::WriteFont(GoodFont()), files::WriteFont(leading)}, FontSections, check, 300, 7);
    OverChanges(Corpus("font"), FontSections, check, 30, 97);
}

TEST_F(Agreement, HoldsForNameLists) {
    std::string long_text = "one\r\ntwo\r\n";
    for (int i = 0; i < 30; ++i)
        long_text += "Family\r\n\tStyle\t\t" + std::to_string(i * 400) + "\r\nQuay\tQuay BT\r\n";
    std::vector<Bytes> sources = Corpus("bitstream_list");
    for (Bytes& list : Corpus("typeface_list")) sources.push_back(std::move(list));
    sources.emplace_back(long_text.begin(), long_text.end());
    const auto check = [this](const Bytes& bytes) {
        const FileReport numbers = Inspect(bytes, "bitstream_fontlist.txt"),
                         names = Inspect(bytes, "typeface_list.txt");
        Put("MAPS/bitstream_fontlist.txt", bytes);
        Put("MAPS/typeface_list.txt", bytes);
        module_test::OpenDialog dialog(nullptr);
        ASSERT_TRUE(dialog.MapBitStreamFont() && dialog.MapTypeFace());
        EXPECT_EQ(numbers.list->entries, static_cast<int>(dialog.m_mapBitStreamId.GetCount()));
        EXPECT_EQ(names.list->entries, static_cast<int>(dialog.m_mapTypeFace.GetCount()));
    };
    OverChanges(
        sources, [](const Bytes&) { return Sections(); }, check, 200, 3);
}

#ifdef ZELTRANS_HAS_PICTURE
TEST_F(Agreement, HoldsForPictures) {
    std::vector<Bytes> sources = Corpus("rgba");
    sources.push_back(files::WriteRgbaFile(714, {.width = 3, .height = 5, .pixels = Bytes(60, 7)}));
    const auto observe = [](const Bytes& bytes) {
        Sections sections;
        sections.list = {{"header", 0, 136, std::min<std::size_t>(bytes.size(), 136)}};
        if (bytes.size() > 136) sections.list.push_back({"picture", 136, bytes.size() - 136, bytes.size() - 136});
        return sections;
    };
    const auto check = [](const Bytes& bytes) {
        const FileReport report = Inspect(bytes, ".0020");
        const bool trails = Has(report, Rule::kNothingAfterEnd);
        EXPECT_EQ(picture::ConvertRgbaFile(bytes).picture.has_value(),
                  report.kind == FileKind::kRgba && (report.verdict == Verdict::kWhole || trails));
    };
    OverChanges(sources, observe, check, 200, 3);
}
#endif

TEST(VerifiedMessage, CountsEveryPlaceButKeepsABoundedNumber) {
    files::MessageFile message;
    for (int row = 0; row < 500; ++row) {
        message.rows.push_back(files::RowFromText(40, std::string(63, 'A'), 0, 10, {.b2_bit5 = true, .char_font = 20}));
    }
    const FileReport report = inspect::InspectBytes(files::WriteMessage(message), ".0001", inspect::Depth::kEveryByte);
    for (const Finding& finding : report.findings) {
        if (finding.rule != Rule::kSlotRange && finding.rule != Rule::kUnreadField) continue;
        EXPECT_EQ(finding.count, 500U * 63);
        EXPECT_EQ(finding.places.size(), Finding::kMostPlaces);
    }
    EXPECT_EQ(inspect::CountFindings(report).faults, 500U * 63);
}

}  // namespace

}  // namespace zel::test
