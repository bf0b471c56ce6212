#include "inspect/glyph_check.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "inspect/findings.h"
#include "inspect/unread_fields.h"
#include "inspect/words.h"
#include "module/contract/records/psos_header.h"
#include "module/font/format/measure_run_codes.h"

namespace zel::inspect {

namespace {

/// What is wrong with a glyph. Defects are reported in this order.
enum class GlyphFault {
    kNone,
    kNoEncodingData,
    kOutsideEncoding,
    kRunsPastEncoding,
    kNeverEnds,
    kHeadCutShort,
    kNoPixels,
    kTooSmall,
    kPixelsCutShort,
};

/// How a fault is reported, for one glyph and for several.
struct FaultText {
    Rule rule;
    const char* one;
    const char* several;
};

/// In the order of GlyphFault, without kNone.
constexpr FaultText kFaultTexts[] = {
    {Rule::kRunCodesRead, "run-coded glyph has no pixels, as no encoding data are read",
     "run-coded glyphs have no pixels, as no encoding data are read"},
    {Rule::kRunCodesBegin, "run-coded glyph begins after the encoding data",
     "run-coded glyphs begin after the encoding data"},
    {Rule::kRunCodesEnd, "run-coded glyph runs past the end of the encoding data",
     "run-coded glyphs run past the end of the encoding data"},
    {Rule::kRunCodesLimit,
     "run-coded glyph continues past 500 lines, 500 runs in a line or 262,144 codes, and is cut there",
     "run-coded glyphs continue past 500 lines, 500 runs in a line or 262,144 codes, and are cut there"},
    {Rule::kGlyphHead, "stored glyph ends with the file before its size",
     "stored glyphs end with the file before their size"},
    {Rule::kGlyphSize, "stored glyph has a size without pixels", "stored glyphs have a size without pixels"},
    {Rule::kGlyphRecord, "stored glyph's record is too small for its pixels",
     "stored glyphs' records are too small for their pixels"},
    {Rule::kGlyphPixels, "stored glyph is cut short by the file's end",
     "stored glyphs are cut short by the file's end"},
};
static_assert(std::size(kFaultTexts) == static_cast<std::size_t>(GlyphFault::kPixelsCutShort));

/// Follows a glyph's codes as far as drawing and measuring do.
/// @param used  receives the number of bytes from the first code to the last one.
GlyphFault CheckRunCodes(std::span<const std::uint8_t> encoding, std::uint32_t offset, std::size_t& used) {
    if (offset >= encoding.size()) return GlyphFault::kOutsideEncoding;
    font::RunCodeReader codes(encoding, offset);
    const std::size_t all = codes.Left();
    const bool has_more = all < (encoding.size() - offset) / 4;
    for (int lines = 0, runs = 0; lines < font::kMaxGlyphLines && runs < font::kMaxLineRuns;) {
        if (codes.Left() == 0) {
            used = has_more ? all * 4 : encoding.size() - offset;
            return has_more ? GlyphFault::kNeverEnds : GlyphFault::kRunsPastEncoding;
        }
        const font::RunCode code = codes.Next();
        used = (all - codes.Left()) * 4;
        if (code.EndsGlyph()) return GlyphFault::kNone;
        if (code.Operation() == font::RunOperation::kEndOfLine) {
            ++lines;
            runs = 0;
        } else if (!code.Stay()) {
            ++runs;
        }
    }
    return GlyphFault::kNeverEnds;
}

GlyphFault FaultOf(font::StoredGlyphFault fault) {
    switch (fault) {
        case font::StoredGlyphFault::kNone:
            break;
        case font::StoredGlyphFault::kHeadCutShort:
            return GlyphFault::kHeadCutShort;
        case font::StoredGlyphFault::kNoPixels:
            return GlyphFault::kNoPixels;
        case font::StoredGlyphFault::kTooSmall:
            return GlyphFault::kTooSmall;
        case font::StoredGlyphFault::kPixelsCutShort:
            return GlyphFault::kPixelsCutShort;
    }
    return GlyphFault::kNone;
}

constexpr UnreadField kEntryFields[] = {{"byte 1", 1, 1, 0xFF}, {"glyph_bits_a, glyph_bits_b", 2, 2, 0xFFF0}};
/// Used by run-coded glyphs only; of stored ones it is replaced on loading.
constexpr UnreadField kOffsetField[] = {{"glyph_offset", 6, 4, 0xFFFFFFFF}};
constexpr UnreadField kRecordFields[] = {{"word at 4, other bits", 4, 2, 0x7FFF}, {"word at 6", 6, 2, 0xFFFF}};

class GlyphChecker {
  public:
    /// @param whole  whether the font was read to its end; otherwise stored glyphs aren't located, and a missing block
    ///               is not a fault of the glyphs.
    GlyphChecker(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, bool whole, FileReport& report)
        : m_bytes(bytes), m_whole(whole), m_report(report), m_font(*report.font) {
        if (slot.encoding_data == nullptr) return;
        m_encoding = {slot.encoding_data, slot.font_header->encoding_size};
        const auto section = std::ranges::find(report.sections, "encoding data", &Section::name);
        if (section != report.sections.end()) m_encoding_offset = section->offset;
    }

    void Check(int code, const tag_char_entry& entry);
    void ReportFaults();
    void ReportUnread();

  private:
    void CheckRunCoded(int code, const tag_char_entry& entry);
    void CheckStored(int code, const tag_char_entry& entry);
    void Fault(int code, GlyphFault fault, Place place);
    void CheckEntryUnread(int code, const tag_char_entry& entry);
    void Measured(int code, int width, int height);

    static constexpr std::uint64_t EntryOffset(int code) {
        return sizeof(tag_psos_header) + sizeof(tag_font_header) +
               static_cast<std::uint64_t>(code) * sizeof(tag_char_entry);
    }
    bool IsThorough() const { return m_report.depth == Depth::kEveryByte; }

    std::span<const std::uint8_t> m_bytes;
    const bool m_whole;
    FileReport& m_report;
    FontReport& m_font;
    std::span<const std::uint8_t> m_encoding;
    std::uint64_t m_encoding_offset = 0;
    std::map<GlyphFault, Finding> m_faults;
    /// What is known of the codes at an offset of the encoding data, which several characters may share.
    struct RunCodedGlyph {
        GlyphFault fault = GlyphFault::kNone;
        std::size_t used = 0;
        font::GlyphSize size;
    };
    std::map<std::uint32_t, RunCodedGlyph> m_run_coded;
    /// Parts of the encoding data that glyphs use: begin and end.
    std::vector<std::pair<std::size_t, std::size_t>> m_used;
    Finding m_kinds;
    UnreadFields m_entry_fields{kEntryFields, RecordKind::kGlyph, "character directory"};
    UnreadFields m_offset_field{kOffsetField, RecordKind::kGlyph, "character directory"};
};

void GlyphChecker::Check(int code, const tag_char_entry& entry) {
    if (IsThorough()) CheckEntryUnread(code, entry);
    if (entry.IsStored()) {
        ++m_font.stored_glyphs;
        if (m_whole) CheckStored(code, entry);
    } else if (entry.IsRunCoded()) {
        ++m_font.run_coded_glyphs;
        CheckRunCoded(code, entry);
    } else {
        ++m_font.without_glyph;
    }
}

void GlyphChecker::CheckEntryUnread(int code, const tag_char_entry& entry) {
    const Place place{.offset = EntryOffset(code), .index = code};
    const auto bytes = m_bytes.subspan(static_cast<std::size_t>(place.offset), sizeof(tag_char_entry));
    m_entry_fields.Check(bytes, place);
    if (!entry.IsRunCoded()) m_offset_field.Check(bytes, place);
    if (entry.glyph_kind != 0 && !entry.HasGlyph())
        m_kinds.Add({.offset = place.offset, .size = 1, .value = entry.glyph_kind, .index = code});
}

void GlyphChecker::Fault(int code, GlyphFault fault, Place place) {
    if (fault == GlyphFault::kNone) return;
    place.index = code;
    m_faults[fault].Add(place);
}

void GlyphChecker::CheckRunCoded(int code, const tag_char_entry& entry) {
    constexpr std::uint64_t kOffsetAt = 6;
    const std::uint32_t offset = entry.glyph_offset;
    if (m_encoding.empty()) {
        if (m_whole) {
            Fault(code, GlyphFault::kNoEncodingData,
                  {.offset = EntryOffset(code), .size = 1, .value = entry.glyph_kind});
        }
        return;
    }
    const auto [known, is_new] = m_run_coded.try_emplace(offset);
    RunCodedGlyph& glyph = known->second;
    if (is_new) {
        glyph.fault = CheckRunCodes(m_encoding, offset, glyph.used);
        glyph.size = font::MeasureRunCodes(font::RunCodeReader(m_encoding, offset));
        if (glyph.used != 0) m_used.emplace_back(offset, offset + glyph.used);
    }
    Fault(code, glyph.fault, {.offset = EntryOffset(code) + kOffsetAt, .size = 4, .value = offset});
    Measured(code, glyph.size.width, glyph.size.height);
}

void GlyphChecker::CheckStored(int code, const tag_char_entry& entry) {
    constexpr std::uint64_t kSizeAt = 8;
    const std::size_t offset = std::min<std::size_t>(entry.glyph_offset, m_bytes.size());
    const auto record = m_bytes.subspan(offset);
    const font::StoredGlyphHead head =
        font::ConvertStoredGlyphHead(record.first(std::min(record.size(), font::kStoredGlyphHeadSize)));
    const GlyphFault fault = FaultOf(font::CheckStoredGlyph(head, record.size()));
    Place place{.offset = offset, .size = 4, .value = head.length};
    if (fault == GlyphFault::kNoPixels) place = {.offset = offset + kSizeAt, .size = 4};
    if (fault == GlyphFault::kHeadCutShort) place = {.offset = offset, .size = font::kStoredGlyphHeadSize};
    Fault(code, fault, place);
    if (IsThorough())
        CheckStoredGlyphUnread(record, head, {.offset = offset, .index = code}, RecordKind::kGlyph, m_report);
    if (record.size() >= font::kStoredGlyphHeadSize) Measured(code, head.width, head.height);
}

/// A glyph without pixels, such as a blank, doesn't count.
void GlyphChecker::Measured(int code, int width, int height) {
    if (width <= 0 || height <= 0) return;
    const GlyphReport glyph{code, width, height};
    const auto area = [](const GlyphReport& of) { return static_cast<std::int64_t>(of.width) * of.height; };
    if (!m_font.smallest || area(glyph) < area(*m_font.smallest)) m_font.smallest = glyph;
    if (!m_font.largest || area(glyph) > area(*m_font.largest)) m_font.largest = glyph;
}

void GlyphChecker::ReportFaults() {
    for (auto& [fault, finding] : m_faults) {
        const FaultText& text = kFaultTexts[static_cast<std::size_t>(fault) - 1];
        std::vector<std::string> codes;
        for (const Place& place : finding.places) codes.push_back(CodeName(place.index));
        finding.rule = text.rule;
        finding.record = RecordKind::kGlyph;
        AddFinding(m_report, std::move(finding),
                   Count(codes.size(), text.one, text.several) + " (" + (codes.size() == 1 ? "code " : "codes ") +
                       Listed(codes) + ")");
    }
}

/// Reports the unread fields of the directory, and the encoding data that no glyph uses.
void GlyphChecker::ReportUnread() {
    m_kinds.rule = Rule::kGlyphKind;
    m_kinds.record = RecordKind::kGlyph;
    AddFinding(m_report, std::move(m_kinds));
    m_entry_fields.Report(m_report);
    m_offset_field.Report(m_report);
    std::ranges::sort(m_used);
    Finding unused;
    unused.rule = Rule::kEncodingUsed;
    unused.section = "encoding data";
    std::size_t end = 0;
    const auto add_gap = [&](std::size_t next) {
        if (next > end) unused.Add({.offset = m_encoding_offset + end, .size = next - end});
    };
    for (const auto& [begin, used_end] : m_used) {
        add_gap(begin);
        end = std::max(end, used_end);
    }
    add_gap(m_encoding.size());
    AddFinding(m_report, std::move(unused));
}

}  // namespace

void CheckGlyphs(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, font::FontOutcome outcome,
                 FileReport& report) {
    GlyphChecker checker(bytes, slot, outcome == font::FontOutcome::kRead, report);
    for (int code = 0; code < kDirectoryEntries; ++code) checker.Check(code, slot.char_directory[code]);
    checker.ReportFaults();
    if (report.depth == Depth::kEveryByte) checker.ReportUnread();
}

void CheckStoredGlyphUnread(std::span<const std::uint8_t> record, const font::StoredGlyphHead& head, Place place,
                            RecordKind kind, FileReport& report) {
    UnreadFields fields(kRecordFields, kind, kind == RecordKind::kGlyph ? "stored glyphs" : "picture");
    fields.Check(record, place);
    fields.Report(report);
    if (font::CheckStoredGlyph(head, record.size()) != font::StoredGlyphFault::kNone) return;
    const std::uint64_t used = font::kStoredGlyphHeadSize +
                               static_cast<std::uint64_t>(head.width) * static_cast<std::uint64_t>(head.height) * 4;
    if (head.length <= used) return;
    place.offset += used;
    place.size = head.length - used;
    AddFinding(report, Rule::kGlyphRest, place, kind);
}

}  // namespace zel::inspect
