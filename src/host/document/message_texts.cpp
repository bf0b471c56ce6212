#include "host/document/message_texts.h"

#include <algorithm>

#include "base/word_gap.h"

namespace zel::document {

namespace {

/// Joins characters of one row.
class TextJoiner {
  public:
    explicit TextJoiner(int row_height) : m_row_height(row_height) {}

    void Add(const DocumentCharacter& character) {
        const bool continues = !m_text.empty() && m_text.back() != ' ';
        if (continues && base::IsWordGap(m_row_height, m_last_x, character.x)) m_text += ' ';
        m_text += character.text;
        m_last_x = character.x;
    }
    std::string Take() { return std::move(m_text); }

  private:
    int m_row_height;
    int m_last_x = 0;
    std::string m_text;
};

bool IsBlank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

bool Contains(const DocumentField& field, const DocumentCharacter& character) {
    return character.x >= field.left && character.x <= field.right;
}

}  // namespace

std::vector<MessageText> TextsOf(const DocumentContents& contents) {
    std::vector<std::vector<const DocumentCharacter*>> rows(contents.rows.size());
    for (const DocumentCharacter& character : contents.characters) rows[character.row].push_back(&character);
    std::vector<std::vector<int>> fields(contents.rows.size() + 1);
    for (std::size_t i = 0; i < contents.fields.size(); ++i) {
        const auto row = static_cast<std::size_t>(contents.fields[i].row);
        fields[std::min(row, contents.rows.size())].push_back(static_cast<int>(i));
    }
    std::vector<MessageText> texts;
    for (std::size_t row = 0; row < fields.size(); ++row) {
        const bool exists = row < rows.size();
        const int height = exists ? contents.rows[row].height : 0;
        TextJoiner outside(height);
        for (const DocumentCharacter* character : exists ? rows[row] : decltype(rows)::value_type()) {
            const bool in_field = std::ranges::any_of(fields[row], [&](int field) {
                return Contains(contents.fields[static_cast<std::size_t>(field)], *character);
            });
            if (!in_field) outside.Add(*character);
        }
        std::string text = outside.Take();
        if (!IsBlank(text)) texts.push_back({static_cast<int>(row), {}, {}, std::move(text)});
        for (const int index : fields[row]) {
            const DocumentField& field = contents.fields[static_cast<std::size_t>(index)];
            TextJoiner inside(height);
            for (const DocumentCharacter* character : exists ? rows[row] : decltype(rows)::value_type()) {
                if (Contains(field, *character)) inside.Add(*character);
            }
            std::string value = inside.Take();
            if (IsBlank(value)) value.clear();
            texts.push_back({field.row, index, field.name, std::move(value)});
        }
    }
    return texts;
}

}  // namespace zel::document
