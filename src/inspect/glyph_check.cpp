#include "inspect/glyph_check.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "inspect/words.h"
#include "module/font/format/measure_run_codes.h"
#include "module/font/format/stored_glyph.h"

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

/// The text of a defect, for one glyph and for several.
struct FaultText {
    const char* one;
    const char* several;
};

/// In the order of GlyphFault, without kNone.
constexpr FaultText kFaultTexts[] = {
    {"run-coded glyph has no pixels, as no encoding data are read",
     "run-coded glyphs have no pixels, as no encoding data are read"},
    {"run-coded glyph begins after the encoding data", "run-coded glyphs begin after the encoding data"},
    {"run-coded glyph runs past the end of the encoding data",
     "run-coded glyphs run past the end of the encoding data"},
    {"run-coded glyph continues past 500 lines, 500 runs in a line or 262,144 codes, and is cut there",
     "run-coded glyphs continue past 500 lines, 500 runs in a line or 262,144 codes, and are cut there"},
    {"stored glyph ends with the file before its size", "stored glyphs end with the file before their size"},
    {"stored glyph has a size without pixels", "stored glyphs have a size without pixels"},
    {"stored glyph's record is too small for its pixels", "stored glyphs' records are too small for their pixels"},
    {"stored glyph is cut short by the file's end", "stored glyphs are cut short by the file's end"},
};
static_assert(std::size(kFaultTexts) == static_cast<std::size_t>(GlyphFault::kPixelsCutShort));

/// Follows a glyph's codes as far as drawing and measuring do.
GlyphFault CheckRunCodes(std::span<const std::uint8_t> encoding, std::uint32_t offset) {
    if (offset >= encoding.size()) return GlyphFault::kOutsideEncoding;
    font::RunCodeReader codes(encoding, offset);
    const bool has_more = codes.Left() < (encoding.size() - offset) / 4;
    for (int lines = 0, runs = 0; lines < font::kMaxGlyphLines && runs < font::kMaxLineRuns;) {
        if (codes.Left() == 0) return has_more ? GlyphFault::kNeverEnds : GlyphFault::kRunsPastEncoding;
        const font::RunCode code = codes.Next();
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

class GlyphChecker {
  public:
    /// @param whole  whether the font was read to its end; otherwise stored glyphs aren't located, and a missing block
    ///               is not a fault of the glyphs.
    GlyphChecker(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, bool whole, FontReport& font)
        : m_bytes(bytes), m_whole(whole), m_font(font) {
        if (slot.encoding_data != nullptr) m_encoding = {slot.encoding_data, slot.font_header->encoding_size};
    }

    void Check(int code, const tag_char_entry& entry);
    void ReportFaults(std::vector<std::string>& defects) const;

  private:
    void CheckRunCoded(int code, const tag_char_entry& entry);
    void CheckStored(int code, const tag_char_entry& entry);
    void Fault(int code, GlyphFault fault) {
        if (fault != GlyphFault::kNone) m_faults[fault].push_back(CodeName(code));
    }
    void Measured(int code, int width, int height);

    std::span<const std::uint8_t> m_bytes;
    const bool m_whole;
    FontReport& m_font;
    std::span<const std::uint8_t> m_encoding;
    std::map<GlyphFault, std::vector<std::string>> m_faults;
};

void GlyphChecker::Check(int code, const tag_char_entry& entry) {
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

void GlyphChecker::CheckRunCoded(int code, const tag_char_entry& entry) {
    if (m_encoding.empty()) {
        if (m_whole) Fault(code, GlyphFault::kNoEncodingData);
        return;
    }
    Fault(code, CheckRunCodes(m_encoding, entry.glyph_offset));
    const font::GlyphSize size = font::MeasureRunCodes(font::RunCodeReader(m_encoding, entry.glyph_offset));
    Measured(code, size.width, size.height);
}

void GlyphChecker::CheckStored(int code, const tag_char_entry& entry) {
    const std::size_t offset = std::min<std::size_t>(entry.glyph_offset, m_bytes.size());
    const auto record = m_bytes.subspan(offset);
    const font::StoredGlyphHead head =
        font::ConvertStoredGlyphHead(record.first(std::min(record.size(), font::kStoredGlyphHeadSize)));
    Fault(code, FaultOf(font::CheckStoredGlyph(head, record.size())));
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

void GlyphChecker::ReportFaults(std::vector<std::string>& defects) const {
    for (const auto& [fault, codes] : m_faults) {
        const FaultText& text = kFaultTexts[static_cast<std::size_t>(fault) - 1];
        defects.push_back(Count(codes.size(), text.one, text.several) + " (" +
                          (codes.size() == 1 ? "code " : "codes ") + Listed(codes) + ")");
    }
}

}  // namespace

void CheckGlyphs(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, font::FontOutcome outcome,
                 FileReport& report) {
    GlyphChecker checker(bytes, slot, outcome == font::FontOutcome::kRead, *report.font);
    for (int code = 0; code < kDirectoryEntries; ++code) checker.Check(code, slot.char_directory[code]);
    checker.ReportFaults(report.defects);
}

}  // namespace zel::inspect
