#pragma once

#include <string>
#include <vector>

#include "host/document/document_reader.h"

namespace zel::exporter {

/// A character on the frame: left edge and width in pixels.
struct PlacedCharacter {
    /// Valid UTF-8.
    std::string text;
    int x = 0;
    int width = 0;
};

/// A row on the frame: upper edge and height in pixels.
struct PlacedRow {
    int top = 0;
    int height = 0;
    /// In reading order.
    std::vector<PlacedCharacter> characters;
};

/// The rows of a message that have characters, in their order.
std::vector<PlacedRow> TextLayer(const document::DocumentContents& contents);

}  // namespace zel::exporter
