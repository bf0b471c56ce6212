#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/message_writer.h"
#include "fill/font_metrics.h"

namespace zel::fill {

/// A tab field that an import keeps. Positions are the file's: the first character has tab_start + 7.
struct Field {
    /// UTF-8, up to the first NUL; empty for "un-named".
    std::string name;
    /// What names the field in a table: the name, or "f" and the field's number if it has none of its own.
    std::string address;
    unsigned row = 0;
    /// In pixels; a character whose char_x is from start to end belongs to the field.
    unsigned start = 0, end = 0;
    /// Slot of its characters; from kFontSlots up there is none.
    unsigned slot = 0;
    unsigned colour_set = 0;

    /// In pixels, for the advances of its characters.
    int Room() const noexcept { return static_cast<int>(end - start); }
    bool Contains(const files::CharCell& cell) const noexcept { return cell.char_x >= start && cell.char_x <= end; }
};

/// A message whose fields can be filled.
struct Form {
    files::MessageFile message;
    FontSet fonts;
    /// The fields in the table's order.
    std::vector<Field> fields;
    /// Where the fonts were searched for, for texts; may be empty.
    std::string font_directory{};
};

/// Finds the fields of a message and the font of each: its own slot; without one, that of the first font whose limits
/// the row has, or of the last font that an earlier field has found.
/// @param fonts  as an import finds them.
Form MakeForm(files::MessageFile message, FontSet fonts);

/// The field that a column names: by its name, by its name without regard to case and surrounding blanks, or by its
/// number as f0, f1 and so on. Empty if there is none or more than one.
std::optional<std::size_t> FindField(const Form& form, std::string_view column);

/// The number that an address such as "f12" has; empty for another text.
std::optional<std::size_t> FieldNumber(std::string_view address);

/// Whether a gap between words that has no blank gets one in a text.
enum class Gaps { kAsBlanks, kIgnored };

/// The text in a field, UTF-8, in reading order.
std::string PresentText(const files::MessageFile& message, const Field& field, Gaps gaps = Gaps::kAsBlanks);
/// Likewise, with gaps as blanks. Where the font is known, the next character's usual place is no gap, however wide the
/// character is.
std::string PresentText(const Form& form, const Field& field);

/// Why there can be no text in the font of a field, such as 'font 12 was not found in DIR'; empty if there can.
std::string FontFault(const Form& form, const Field& field);

/// The records of a row in reading order; empty if its chain doesn't lead to each of them once.
std::optional<std::vector<unsigned>> ChainOf(const files::RowText& row);

/// A column's name for comparing it: without surrounding blanks, letters of Latin-1 in lower case.
std::string FoldedName(std::string_view name);

}  // namespace zel::fill
