#include "module/translate/font_face.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

#include "module/contract/records/edge.h"
#include "module/contract/zel_trans_dlg.h"

namespace zel::translate {

namespace {

constexpr std::string_view kTrueTypePrefix = "TT ";
constexpr int kBoldWeight = 700;
// A font number above this is a Bitstream number plus this.
constexpr int kBitstreamIdOffset = 5000;

void WriteFace(LOGFONT& lf, std::string_view face) noexcept {
    const std::size_t length = std::min(face.size(), sizeof lf.lfFaceName - 1);
    std::memset(lf.lfFaceName, 0, sizeof lf.lfFaceName);
    std::memcpy(lf.lfFaceName, face.data(), length);
}

bool Contains(std::string_view text, std::string_view part) noexcept {
    return text.find(part) != std::string_view::npos;
}

// The low 16 bits of font_id_text as a number.
std::uint16_t FontNumber(const tag_font_header& header) noexcept {
    char digits[sizeof header.font_id_text + 1] = {};
    header.IdText().copy(digits, sizeof header.font_id_text);
    return static_cast<std::uint16_t>(std::strtol(digits, nullptr, 10));
}

bool FaceByNumber(const tag_font_header& header, CZelTransDlg& owner, CString& found, LOGFONT& lf) {
    const std::uint16_t number = FontNumber(header);
    CString typeface;
    if (number <= kBitstreamIdOffset ||
        !owner.m_mapBitStreamId.Lookup(static_cast<WORD>(number - kBitstreamIdOffset), found) ||
        !owner.m_mapTypeFace.Lookup(found, typeface)) {
        return false;
    }
    // Right-justified, as the host expects it.
    char face[sizeof lf.lfFaceName - 1];
    const std::string_view name = std::string_view(typeface).substr(0, sizeof face);
    std::memset(face, ' ', sizeof face);
    name.copy(face + sizeof face - name.size(), name.size());
    WriteFace(lf, {face, sizeof face});
    return true;
}

void FaceByName(const tag_font_header& header, CZelTransDlg& owner, CString& found, LOGFONT& lf) {
    const std::string_view name = header.Name();
    char word[sizeof header.font_name + 1] = {};
    name.substr(0, name.find(' ')).copy(word, sizeof header.font_name);
    CString typeface;
    if (owner.m_mapBitStreamFamily.Lookup(word, found) && owner.m_mapTypeFace.Lookup(found, typeface)) {
        WriteFace(lf, static_cast<const char*>(typeface));
    }
}

}  // namespace

void InitLogFont(LOGFONT* lf) {
    *lf = LOGFONT();
    lf->lfHeight = 50;
    lf->lfWeight = 400;
    lf->lfOutPrecision = 3;
    lf->lfClipPrecision = 2;
    lf->lfQuality = 4;
    lf->lfPitchAndFamily = 34;
    WriteFace(*lf, "Arial");
}

bool IsTrueTypeName(std::string_view font_name) noexcept {
    return font_name.substr(0, kTrueTypePrefix.size()) == kTrueTypePrefix;
}

void ApplyTrueTypeName(std::string_view font_name, LOGFONT& lf) noexcept {
    std::size_t style = font_name.find(" Bold");
    if (style == std::string_view::npos) style = font_name.find(" Italic");
    const std::size_t end = std::min(style, font_name.size());
    // In "TT Bold" the blank of the prefix belongs to the style: the name has no face, and the default one remains.
    if (end >= kTrueTypePrefix.size())
        WriteFace(lf, font_name.substr(kTrueTypePrefix.size(), end - kTrueTypePrefix.size()));
    if (Contains(font_name, " Bold")) lf.lfWeight = kBoldWeight;
    if (Contains(font_name, " Italic")) lf.lfItalic = 1;
}

void ApplyFontMaps(const tag_font_header& header, CZelTransDlg& owner, CString& found, LOGFONT& lf) {
    if (!FaceByNumber(header, owner, found, lf)) FaceByName(header, owner, found, lf);
    const std::string_view style = static_cast<const char*>(found);
    if (Contains(style, " bold ")) lf.lfWeight = kBoldWeight;
    if (Contains(style, " italic ")) lf.lfItalic = 1;
}

void ApplyFontHeight(const tag_font_header& header, LOGFONT& lf) noexcept {
    const int height = header.font_height - EdgeHeight(header.EdgeType(), header.edge_size);
    lf.lfHeight = static_cast<LONG>(height * 1.18 + 0.5);
}

void WriteLegacyFace(LOGFONT& lf, int slot, std::string_view font_name) noexcept {
    constexpr std::string_view kMark = "Zelmara! (", kAfterNumber = ") ";
    constexpr std::size_t kMaxName = 14, kMaxIntDigits = 11;
    char face[kMark.size() + kMaxIntDigits + kAfterNumber.size() + kMaxName];
    char* end = face + kMark.copy(face, kMark.size());
    end = std::to_chars(end, end + kMaxIntDigits, slot).ptr;
    end += kAfterNumber.copy(end, kAfterNumber.size());
    end += font_name.copy(end, kMaxName);
    WriteFace(lf, {face, end});
}

}  // namespace zel::translate
