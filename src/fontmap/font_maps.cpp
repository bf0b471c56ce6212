#include <algorithm>

#include "dialog/zel_trans_dlg.h"
#include "fontmap/name_lists.h"
#include "fontmap/text_lines.h"
#include "pipeline/module_state.h"

namespace {

// Buckets for a list of so many bytes: the lines of real lists are longer than this.
UINT BucketsFor(const std::string& text) {
    constexpr std::size_t kShortLine = 24, kMost = 65536;
    return static_cast<UINT>(std::min(text.size() / kShortLine, kMost) | 1);
}

CString Text(std::string_view text) {
    return CString(text.data(), static_cast<int>(text.size()));
}

}  // namespace

bool CZelTransDlg::MapBitStreamFont() {
    std::string path;
    const std::optional<std::string> text = ReadNameList("bitstream_fontlist.txt", path);
    if (!text) {
        CString complaint;
        complaint.Format("Couldn't Open BitStream Font Mapping File: %s", path.c_str());
        if (m_bImportSkip == 0) ReportError(complaint);
        return false;
    }
    m_mapBitStreamId.InitHashTable(BucketsFor(*text));
    m_mapBitStreamFamily.InitHashTable(BucketsFor(*text));
    TextLines lines(*text);
    lines.SkipHeadings();
    BitstreamLineReader reader;
    std::string word;
    CString family;
    while (const auto line = lines.Next()) {
        const std::optional<BitstreamEntry> entry = reader.Read(*line);
        if (!entry) continue;
        const CString name = Text(entry->name);
        word = entry->FirstWord();
        m_mapBitStreamId.SetAt(entry->number, name);
        // The first entry of a family stands for it.
        if (!m_mapBitStreamFamily.Lookup(word.c_str(), family)) m_mapBitStreamFamily.SetAt(word.c_str(), name);
    }
    return true;
}

bool CZelTransDlg::MapTypeFace() {
    std::string path;
    const std::optional<std::string> text = ReadNameList("typeface_list.txt", path);
    if (!text) {
        CString complaint;
        complaint.Format("Couldn't Find Typeface Mapping File: %s", path.c_str());
        if (!IgnoreZelFontErrors()) ReportError(complaint);
        return false;
    }
    m_mapTypeFace.InitHashTable(BucketsFor(*text));
    TextLines lines(*text);
    lines.SkipHeadings();
    while (const auto line = lines.Next()) {
        if (const auto entry = ReadTypefaceLine(*line))
            m_mapTypeFace.SetAt(Text(entry->bitstream_name), Text(entry->typeface));
    }
    return true;
}
