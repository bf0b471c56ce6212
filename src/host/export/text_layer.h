#pragma once

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace zel::exporter {

/// A character in its place on the frame: left edge and width in pixels.
struct PlacedCharacter {
    std::string text;  ///< UTF-8, valid.
    int x = 0;
    int width = 0;
};

/// A row in its place on the frame: upper edge and height in lines. The characters stand in reading order.
struct PlacedRow {
    int top = 0;
    int height = 0;
    std::vector<PlacedCharacter> characters;
};

/// The rows of a message's document that have characters, from the first on. A character is as wide as the step to the
/// next one, but not wider than its row is high: a row may go on behind a gap. What is out of any frame or of another
/// type than a message's is left out or made small; nothing is thrown for it.
/// @param document  of a message, see MessageDocument; also of anything else, which has no rows.
std::vector<PlacedRow> TextLayer(const nlohmann::ordered_json& document);

}  // namespace zel::exporter
