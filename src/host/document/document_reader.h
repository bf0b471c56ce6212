#pragma once

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace zel::document {

// The reader of the documents that MessageDocument writes. Positions and sizes are in pixels of the picture. Texts are
// UTF-8, colours "#RRGGBB". A member that is missing or has the wrong type gives 0 or an empty text.

/// Height of a lower row when it is shown, and when the widths of its characters are found.
inline constexpr int kLeastRowHeight = 4;

struct DocumentRow {
    int top = 0;
    int height = 0;
    std::string text;
};

struct DocumentCharacter {
    std::string text;
    int code = 0;
    /// Index in DocumentContents::rows.
    std::size_t row = 0;
    int x = 0;
    /// Distance to the next character of the row, but at most the height of the row or the character's own step,
    /// whichever is greater: a row may continue after a gap. The last character of a row, and one that the next does
    /// not follow to the right, has its own step. A character in text form has none; its width is half the row's
    /// height.
    int width = 0;
    /// In bitmap form; false: in text form.
    bool bitmap = true;
    int font_number = 0;
    std::string font_name;
    /// Of a character in text form.
    std::string typeface;
    std::string face_colour;
};

struct DocumentFont {
    int slot = 0;
    int number = 0;
    std::string name;
    int height = 0;
    /// This system's path.
    std::string file;
};

struct DocumentField {
    std::string name;
    int row = 0;
    int left = 0, top = 0, right = 0, bottom = 0;
    std::string colour;
};

struct DocumentContents {
    /// By number.
    std::vector<DocumentRow> rows;
    /// In reading order. One without a text, or without one of the rows, is left out.
    std::vector<DocumentCharacter> characters;
    std::vector<DocumentFont> fonts;
    std::vector<DocumentField> fields;
    std::vector<std::vector<std::string>> palette;
};

/// Parses a stored document.
/// @return null for an empty text, which an RGBA file may have.
/// @throws std::runtime_error with the reason for a text that is not a JSON object, or one beyond the limits of
/// JsonExcess.
nlohmann::ordered_json ParseDocument(const std::string& text);

/// Reads what is readable of a document; empty for any other value.
DocumentContents ReadDocument(const nlohmann::ordered_json& document);
/// As above, of a text; empty for one that ParseDocument rejects.
DocumentContents ReadDocumentText(const std::string& text);

}  // namespace zel::document
