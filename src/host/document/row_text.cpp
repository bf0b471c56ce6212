#include "host/document/row_text.h"

#include "base/word_gap.h"

namespace zel::document {

void FillRowTexts(MessageRecord& message) {
    for (RowRecord& row : message.rows) row.text.clear();
    int last_x = 0;
    for (const CharacterRecord& character : message.characters) {
        const auto index = static_cast<std::size_t>(character.info.row_index);
        if (index >= message.rows.size()) continue;
        RowRecord& row = message.rows[index];
        const bool continues = !row.text.empty() && row.text.back() != ' ';
        if (continues && base::IsWordGap(row.bottom - row.top, last_x, character.info.x)) row.text += ' ';
        row.text += static_cast<char>(character.character);
        last_x = character.info.x;
    }
}

}  // namespace zel::document
