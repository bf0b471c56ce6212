#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::base {

/// Number of characters in a UTF-8 text, each of which takes one column of a terminal.
std::size_t CharacterCount(std::string_view text);

enum class Align { kLeft, kRight };

/// A text filled with blanks up to a width in characters; a longer one is unchanged.
std::string Padded(std::string_view text, std::size_t width, Align align = Align::kLeft);

/// How a table's column is laid out.
struct ColumnStyle {
    Align align = Align::kLeft;
    /// A column that is empty in every line takes no room.
    bool drop_empty = false;
};

/// Lines of cells as a table: each column as wide as its widest cell, with two blanks before it, and none at a line's
/// end.
/// @param lines  with as many cells in each as there are columns.
std::string TableText(std::span<const std::vector<std::string>> lines, std::span<const ColumnStyle> columns);

}  // namespace zel::base
