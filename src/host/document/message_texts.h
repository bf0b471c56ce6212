#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/document/document_reader.h"

namespace zel::document {

/// A text of a message that a person may want to change or search.
struct MessageText {
    /// Number of the row, from 0.
    int row = 0;
    /// Number of the tab field that contains it, among those of the document, from 0; empty for a row's text outside
    /// its fields.
    std::optional<int> field{};
    /// Of the field; may be empty.
    std::string name{};
    /// UTF-8, with a blank in each gap between words that has none; empty for a field with blanks alone, such as the
    /// one that an import puts into an empty field.
    std::string text{};
};

/// The texts of a message by rows: what is outside the row's fields, unless it is empty or blank, then each field from
/// left to right as in the document. A character belongs to each field of its row whose ends are not to its right and
/// not to its left. Fields of a row that doesn't exist are last.
std::vector<MessageText> TextsOf(const DocumentContents& contents);

}  // namespace zel::document
