#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "module/contract/zel_font.h"
#include "module/font/format/font_blocks.h"
#include "platform/framework/module_entry.h"
#include "platform/system/c_runtime.h"

using namespace zel;

int CZelFont::m_bIgnoreErrors = 0;
bool CZelFont::m_bCancelFontBrowse = false;
int CZelFont::m_iZelYOffset = 0;
ZEL_MODULE_STATIC CString CZelFont::m_SFontBrowseDir;

CZelFont::CZelFont()
    : m_Palette{},
      m_MessageBlock(nullptr),
      m_bSpareA(false),
      m_bSpareB(false),
      m_FaceColor(0xFFFFFF),
      m_EdgeColor(0),
      m_BackColor(0) {}

CZelFont::~CZelFont() = default;

CZelFont& CZelFont::operator=(const CZelFont& other) = default;

bool CZelFont::IsValidFontIndex(int index) {
    return static_cast<unsigned>(index) < static_cast<unsigned>(kFontSlots);
}

void CZelFont::ReleaseFontData(tag_font_memory* slot) {
    if (slot == nullptr) return;
    font::ReleaseFontBlocks(*slot);
    crt::_heapmin();
}

void CZelFont::ReleaseUnfinishedSlot(tag_font_memory* slot) {
    if (slot->font_copy == nullptr) {
        font::ReleaseFontBlocks(*slot);
        *slot = tag_font_memory();
    }
    slot->font_header = nullptr;
    slot->font_copy = nullptr;
}

namespace {

// The number in a face name such as "Zelmara! (3) Name"; -1 for any other name. Read as by scanf: the blank of the
// format stands for any number of blanks, also none, and blanks before the number are skipped.
int SlotOfLegacyFace(const LOGFONT& font) noexcept {
    constexpr std::string_view kMark = "Zelmara!";
    char face[sizeof font.lfFaceName + 1] = {};
    std::memcpy(face, font.lfFaceName, sizeof font.lfFaceName);
    if (std::strncmp(face, kMark.data(), kMark.size()) != 0) return -1;
    const char* const parenthesis = face + kMark.size() + std::strspn(face + kMark.size(), " \t\n\v\f\r");
    if (*parenthesis != '(') return -1;
    const char* const digits = parenthesis + 1;
    char* end = nullptr;
    const long index = std::strtol(digits, &end, 10);
    return end != digits && index >= INT_MIN && index <= INT_MAX ? static_cast<int>(index) : -1;
}

}  // namespace

int CZelFont::FindZelmaraFont(LOGFONT& font) {
    constexpr std::size_t kBeforeFace = offsetof(LOGFONT, lfFaceName);
    for (int i = 0; i < kFontSlots; ++i) {
        const LOGFONT* known = m_Slots[i].log_font;
        if (known == nullptr || std::memcmp(known, &font, kBeforeFace) != 0) continue;
        if (std::strncmp(known->lfFaceName, font.lfFaceName, sizeof font.lfFaceName) == 0) return i;
    }
    const int index = SlotOfLegacyFace(font);
    if (IsValidFontIndex(index) && m_Slots[index].log_font != nullptr) font = *m_Slots[index].log_font;
    return index;
}

bool IsZelmaraFont(LOGFONT& font) {
    return std::strncmp(font.lfFaceName, "Zelmara", 7) == 0;
}
