#pragma once

#include <string_view>

#include "module/contract/records/font_header.h"
#include "platform/framework/cstring.h"
#include "platform/system/types.h"

class CZelTransDlg;

namespace zel::translate {

/// Sets the description to the module's defaults: "Arial", height 50, weight 400.
void InitLogFont(LOGFONT* lf);

/// True for a font that represents an installed TrueType face: its name begins with "TT ".
bool IsTrueTypeName(std::string_view font_name) noexcept;

/// Sets face, weight and italic of a "TT " font, from its name.
void ApplyTrueTypeName(std::string_view font_name, LOGFONT& lf) noexcept;

/// Sets face, weight and italic of any other font from the font name maps of `owner`: by its number, if that is above
/// 5000 and known, else by the first word of its name. For a font that is in no map, the face remains unchanged and the
/// style is that of `found`.
/// @param found  the Bitstream name of the last successful look-up, replaced by this one. The character walk passes the
///               same string for all its characters.
void ApplyFontMaps(const tag_font_header& header, CZelTransDlg& owner, CString& found, LOGFONT& lf);

/// Sets the height of the description from the height of the font without its edge.
void ApplyFontHeight(const tag_font_header& header, LOGFONT& lf) noexcept;

/// Sets the face name of a legacy font, such as "Zelmara! (3) Name", with the first 14 characters of the font's name.
void WriteLegacyFace(LOGFONT& lf, int slot, std::string_view font_name) noexcept;

}  // namespace zel::translate
