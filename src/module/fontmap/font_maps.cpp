#include <algorithm>

#include "module/contract/zel_trans_dlg.h"
#include "module/fontmap/format/name_lists.h"
#include "module/fontmap/format/text_lines.h"
#include "module/fontmap/read_name_list.h"
#include "module/state/module_state.h"

using namespace zel;

namespace {

/// Estimates the number of entries from the size of the list. The lines of real lists are longer than kShortLine.
std::size_t LikelyEntries(const NameText& text) {
    constexpr std::size_t kShortLine = 32, kMaxEstimate = 65536;
    return std::min(text.List().size() / kShortLine, kMaxEstimate);
}

NameParts PartsOf(const fontmap::BitstreamEntry& entry, const NameText& text) {
    if (!entry.indented) return {NameParts::Form::kPlain, text.SliceOf(entry.name)};
    return {NameParts::Form::kStyled, text.SliceOf(entry.family), text.SliceOf(entry.name)};
}

}  // namespace

bool CZelTransDlg::MapBitStreamFont() {
    std::string path;
    const std::shared_ptr<NameText> text = fontmap::ReadNameList("bitstream_fontlist.txt", path);
    if (!text) {
        CString complaint;
        complaint.Format("Couldn't Open BitStream Font Mapping File: %s", path.c_str());
        if (m_bImportSkip == 0) ReportError(complaint);
        return false;
    }
    m_mapBitStreamId.UseText(text, LikelyEntries(*text));
    m_mapBitStreamFamily.UseText(text, LikelyEntries(*text) / 4);  // a family has several styles
    fontmap::TextLines lines(text->List());
    lines.SkipHeadings();
    fontmap::BitstreamLineReader reader;
    fontmap::BitstreamEntry entry;
    std::string_view last_word;
    while (const auto line = lines.Next()) {
        if (!reader.Read(*line, entry)) continue;
        const NameParts name = PartsOf(entry, *text);
        m_mapBitStreamId.Add(entry.number, name);
        // A family maps to its first entry. Successive entries of a family share the text of its heading.
        const std::string_view word = entry.FirstWord();
        if (word.data() == last_word.data() && !word.empty()) continue;
        m_mapBitStreamFamily.Add(text->SliceOf(word), name, NamedNames::IfPresent::kKeep);
        last_word = word;
    }
    return true;
}

bool CZelTransDlg::MapTypeFace() {
    std::string path;
    const std::shared_ptr<NameText> text = fontmap::ReadNameList("typeface_list.txt", path);
    if (!text) {
        CString complaint;
        complaint.Format("Couldn't Find Typeface Mapping File: %s", path.c_str());
        if (!IgnoreZelFontErrors()) ReportError(complaint);
        return false;
    }
    m_mapTypeFace.UseText(text, LikelyEntries(*text));
    fontmap::TextLines lines(text->List());
    lines.SkipHeadings();
    while (const auto line = lines.Next()) {
        const std::optional<fontmap::TypefaceEntry> entry = fontmap::ReadTypefaceLine(*line);
        if (!entry) continue;
        m_mapTypeFace.Add(text->SliceOf(entry->bitstream_name),
                          {NameParts::Form::kWhole, text->SliceOf(entry->typeface)}, NamedNames::IfPresent::kReplace);
    }
    return true;
}
