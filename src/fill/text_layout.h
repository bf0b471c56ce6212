#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "fill/form.h"

namespace zel::fill {

/// What happens to a text that is longer than its field.
enum class Overflow {
    /// It is a fault.
    kError,
    /// Characters at its end are left out.
    kCut,
    /// Its characters are set closer, at half of their distances at the closest.
    kSqueeze,
};

/// Positions of a text's characters.
struct TextLayout {
    /// char_x of each character that is set, in pixels.
    std::vector<unsigned> x;
    /// Why the text can't be set; empty if it can.
    std::string fault;
};

/// Lays a text out from the start of a field. The advances of all its characters must fit into the field's room, and
/// each character must begin in the field.
/// @param advances  of each character to the next, in pixels, not negative.
/// @param most      number of characters for which the row has room.
TextLayout LayOut(std::span<const int> advances, const Field& field, std::size_t most, Overflow overflow);

}  // namespace zel::fill
