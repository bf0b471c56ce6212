#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "files/message_writer.h"
#include "fill/form.h"
#include "fill/text_layout.h"

namespace zel::fill {

/// A text for a field.
struct FieldValue {
    std::size_t field = 0;
    /// UTF-8; empty: the field is emptied.
    std::string text;
};

/// What is said about a field.
struct FieldNote {
    std::size_t field = 0;
    std::string text;
};

/// A filled message.
struct Filled {
    files::MessageFile message;
    /// The texts that could not be set. With any, the message is not what was asked for.
    std::vector<FieldNote> faults;
    /// Texts that were cut, and texts of the same values that were replaced by those of overlapping fields.
    std::vector<FieldNote> notes;
};

/// The largest number of characters of a row.
inline constexpr std::size_t kMostCharacters = 63;

/// Sets texts into the fields of a form, in the order of the fields. All other fields stay as they are.
///
/// The characters of a field are replaced where they are, in the file's order and in the reading order. Without any,
/// the new ones come last in both. They have the field's font and colours, and the baseline of the characters that are
/// in the row.
/// @param values  one for a field at most.
Filled FillFields(const Form& form, std::span<const FieldValue> values, Overflow overflow);

}  // namespace zel::fill
