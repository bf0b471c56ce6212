#include "host/export/text_layer.h"

#include <algorithm>

#include "host/export/utf8.h"

namespace zel::exporter {

std::vector<PlacedRow> TextLayer(const document::DocumentContents& contents) {
    std::vector<PlacedRow> rows;
    for (const document::DocumentRow& row : contents.rows) {
        rows.push_back({row.top, std::max(row.height, document::kLeastRowHeight), {}});
    }
    for (const document::DocumentCharacter& character : contents.characters) {
        rows[character.row].characters.push_back({ValidUtf8(character.text), character.x, character.width});
    }
    std::erase_if(rows, [](const PlacedRow& row) { return row.characters.empty(); });
    return rows;
}

}  // namespace zel::exporter
