#include "module/font/glyph_file.h"

#include "module/contract/zel_font.h"
#include "platform/framework/cfile.h"
#include "platform/framework/message_box.h"

namespace zel::font {

bool OpenGlyphFile(CFile& file, const tag_font_memory& font) {
    if (file.Open(font.file_name, CFile::modeRead | CFile::shareDenyNone)) return true;
    if (CZelFont::m_bIgnoreErrors == 0) {
        CString text;
        text.Format("Couldn't Find Zelmara! Font File: %s", font.file_name);
        MessageBoxA(nullptr, text, "Couldn't Find Font File ", MB_OK | MB_ICONEXCLAMATION);
    }
    return false;
}

}  // namespace zel::font
