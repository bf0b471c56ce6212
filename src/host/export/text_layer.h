#pragma once

#include <string>
#include <vector>

#include "host/document/document_reader.h"

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

/// The rows of a message that have characters, from the first on.
std::vector<PlacedRow> TextLayer(const document::DocumentContents& contents);

}  // namespace zel::exporter
