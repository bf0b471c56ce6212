#pragma once

#include <string_view>

#include "module/contract/records/font_header.h"
#include "platform/framework/cstring.h"
#include "platform/system/types.h"

class CZelTransDlg;

namespace zel::translate {

/// Clears the description and sets the module's defaults: "Arial", 50 high, weight 400.
void InitLogFont(LOGFONT* lf);

/// True when the font stands for an installed TrueType face: its name begins with "TT ".
bool IsTrueTypeName(std::string_view font_name) noexcept;

/// Face, weight and italic of a "TT " font, from its name alone.
void ApplyTrueTypeName(std::string_view font_name, LOGFONT& lf) noexcept;

/// Face, weight and italic of any other font by the font name maps of `owner`: by its number above 5000, else by the
/// first word of its name. A font that no map knows keeps the face; its style then goes by what `found` held before.
/// @param found  the last name that a look-up has found; in the character walk it lives on from character to character.
void ApplyFontMaps(const tag_font_header& header, CZelTransDlg& owner, CString& found, LOGFONT& lf);

/// Height of the description from the font's, its edge taken off.
void ApplyFontHeight(const tag_font_header& header, LOGFONT& lf) noexcept;

/// The face name that marks a legacy font: "Zelmara! (3) Name", the name cut to 14 characters.
void WriteLegacyFace(LOGFONT& lf, int slot, std::string_view font_name) noexcept;

}  // namespace zel::translate
