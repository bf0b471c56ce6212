#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/system/c_runtime.h"

using namespace zel;

namespace {

/// A font file's path as ReadFont requires it.
struct FontPath {
    CString directory;
    /// 0 if the extension isn't a number.
    int number = 0;
};

FontPath SplitFontPath(const char* path) {
    char extension[MAX_PATH] = {};
    static_assert(sizeof extension >= crt::_MAX_EXT);
    crt::_splitpath(path, nullptr, nullptr, nullptr, extension);
    FontPath split{path, 0};
    if (extension[0] != '.') return split;
    // As in the legacy importer, the directory ends before the first occurrence of the extension's text, and without
    // the character before it, normally the backslash.
    const int position = split.directory.Find(extension);
    split.directory = split.directory.Left(position > 0 ? position - 1 : 0);
    char* end = nullptr;
    const char* const digits = extension + 1;
    const long number = std::strtol(digits, &end, 10);
    if (*end == '\0') split.number = static_cast<int>(std::clamp<long>(number, INT_MIN, INT_MAX));
    return split;
}

}  // namespace

void CZelTransDlg::MakeTavroFont(char* path, CZelFont* font) {
    CZelMessage palette_holder(nullptr, nullptr, nullptr, this);
    palette_holder.m_pPalette = new tag_palete();
    palette_holder.DefaultPalette();
    FontPath split = SplitFontPath(path);
    if (font->ReadFont(split.directory, split.number, 0, true) == 0) {
        CZelFont::ReleaseUnfinishedSlot(&font->m_Slots[0]);
        return;
    }
    static_assert(sizeof font->m_Palette == sizeof *palette_holder.m_pPalette);
    std::memcpy(font->m_Palette, palette_holder.m_pPalette, sizeof font->m_Palette);
}
