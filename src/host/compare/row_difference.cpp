#include "host/compare/row_difference.h"

#include <algorithm>
#include <cstdio>

#include "base/word_gap.h"
#include "host/compare/align.h"
#include "module/contract/records/palette.h"

namespace zel::compare {

namespace {

using Json = nlohmann::ordered_json;

/// Characters from `from` up to but not including `to`.
struct Range {
    std::size_t from = 0, to = 0;

    std::size_t Count() const noexcept { return to - from; }
    DifferenceSide::Run AsRun() const noexcept { return {static_cast<int>(from), static_cast<int>(Count())}; }
};

/// Characters of A that those of B replace; either may be none.
struct TextChange {
    Range a, b;
};

/// Two characters that are compared with each other.
struct CharacterPair {
    std::size_t a, b;
    /// They stand for each other in their texts, so that their places are compared, too.
    bool has_place;
};

/// Whether a word ends before the character.
bool BeginsWord(const ContentRow& row, std::size_t index) {
    if (index == 0 || index >= row.characters.size()) return true;
    const ContentCharacter& before = row.characters[index - 1];
    const ContentCharacter& here = row.characters[index];
    return before.code == ' ' || here.code == ' ' || base::IsWordGap(row.bottom - row.top, before.x, here.x);
}

class RowComparison {
  public:
    RowComparison(const MessageContents& a, const MessageContents& b, std::size_t row_a, std::size_t row_b,
                  bool swapped, Differences& differences)
        : m_contents_a(a),
          m_contents_b(b),
          m_a(a.rows[row_a]),
          m_b(b.rows[row_b]),
          m_index_a(static_cast<int>(row_a)),
          m_index_b(static_cast<int>(row_b)),
          m_swapped(swapped),
          m_differences(differences) {}

    void Compare() {
        Head();
        FindTextChanges();
        for (const TextChange& change : m_changes) Text(change);
        FindPairs();
        Places();
        Runs("font", [this](const auto& a, const auto& b) { return FontValues(a, b); });
        Runs("colour", [this](const auto& a, const auto& b) { return ColourValues(a, b); });
        Runs("edge colour", [](const auto& a, const auto& b) { return EdgeValues(a, b); });
        Runs("form", [](const auto& a, const auto& b) { return std::pair<Json, Json>(a.form, b.form); });
        Runs("place flag",
             [](const auto& a, const auto& b) { return std::pair<Json, Json>(a.place_flag, b.place_flag); });
    }

  private:
    using Values = std::pair<Json, Json>;

    void Add(const char* property, Json a, Json b) {
        if (a == b) return;
        m_differences.push_back({"row", property, {m_index_a, {}, std::move(a)}, {m_index_b, {}, std::move(b)}});
    }
    void Head() {
        Add("y", m_a.y, m_b.y);
        Add("top", m_a.top, m_b.top);
        Add("bottom", m_a.bottom, m_b.bottom);
        Add("empty", m_a.empty, m_b.empty);
    }
    void FindTextChanges();
    bool HasWordEnd(const Range& a, const Range& b) const;
    void Text(const TextChange& change);
    void FindPairs();
    void Places();
    template <typename ValuesOf>
    void Runs(const char* property, const ValuesOf& values_of);
    void AddRun(const char* property, const Range& a, const Range& b, Values values);
    Values FontValues(const ContentCharacter& a, const ContentCharacter& b) const;
    Values ColourValues(const ContentCharacter& a, const ContentCharacter& b) const;
    static Values EdgeValues(const ContentCharacter& a, const ContentCharacter& b);

    const MessageContents& m_contents_a;
    const MessageContents& m_contents_b;
    const ContentRow& m_a;
    const ContentRow& m_b;
    const int m_index_a, m_index_b;
    const bool m_swapped;
    Differences& m_differences;
    std::vector<TextChange> m_changes;
    std::vector<CharacterPair> m_pairs;
};

bool RowComparison::HasWordEnd(const Range& a, const Range& b) const {
    for (std::size_t offset = 0; offset <= a.Count(); ++offset) {
        if (BeginsWord(m_a, a.from + offset) && BeginsWord(m_b, b.from + offset)) return true;
    }
    return false;
}

/// Changes within one word are one: a replaced word may share letters with the one that replaces it. So are all changes
/// of a row that keeps less than half of the shorter text.
void RowComparison::FindTextChanges() {
    const auto alone = [](std::size_t) { return 1; };
    const std::vector<AlignedPair> pairs = Align(
        m_a.characters.size(), m_b.characters.size(), m_swapped,
        [this](std::size_t i, std::size_t j) { return m_a.characters[i].code == m_b.characters[j].code ? 0 : 3; },
        alone, alone);
    const auto is_kept = [this](const AlignedPair& pair) {
        return pair.IsMatch() && m_a.characters[pair.a].code == m_b.characters[pair.b].code;
    };
    const std::size_t size_a = m_a.characters.size(), size_b = m_b.characters.size();
    if (static_cast<std::size_t>(std::ranges::count_if(pairs, is_kept)) * 2 < std::min(size_a, size_b)) {
        m_changes.push_back({{0, size_a}, {0, size_b}});
        return;
    }
    std::size_t a = 0, b = 0;
    bool in_change = false;
    for (const AlignedPair& pair : pairs) {
        const bool kept = is_kept(pair);
        if (!kept && !in_change) {
            const bool joins =
                !m_changes.empty() && !HasWordEnd({m_changes.back().a.to, a}, {m_changes.back().b.to, b});
            if (!joins) m_changes.push_back({{a, a}, {b, b}});
        }
        in_change = !kept;
        if (pair.a != AlignedPair::kNone) ++a;
        if (pair.b != AlignedPair::kNone) ++b;
        if (in_change) m_changes.back().a.to = a, m_changes.back().b.to = b;
    }
}

void RowComparison::Text(const TextChange& change) {
    // Up to the ends of the words, as far as both rows have the same there.
    Range a = change.a, b = change.b;
    const std::size_t index = static_cast<std::size_t>(&change - m_changes.data());
    const std::size_t least = index == 0 ? 0 : m_changes[index - 1].a.to;
    const std::size_t most = index + 1 == m_changes.size() ? m_a.characters.size() : m_changes[index + 1].a.from;
    const auto is_end = [&](std::size_t in_a, std::size_t in_b) {
        return (change.a.Count() != 0 && BeginsWord(m_a, in_a)) || (change.b.Count() != 0 && BeginsWord(m_b, in_b));
    };
    while (a.from > least && !is_end(a.from, b.from)) --a.from, --b.from;
    while (a.to < most && !is_end(a.to, b.to)) ++a.to, ++b.to;
    std::string text_a = TextOf(m_a, change.a.from, change.a.Count());
    std::string text_b = TextOf(m_b, change.b.from, change.b.Count());
    if (text_a == text_b) {  // codes above 255 that show the same letter
        const auto codes = [](const ContentRow& row, const Range& range) {
            std::string text = "codes";
            for (std::size_t i = range.from; i < range.to; ++i) text += ' ' + std::to_string(row.characters[i].code);
            return text;
        };
        text_a = codes(m_a, change.a);
        text_b = codes(m_b, change.b);
        m_differences.push_back(
            {"row", "codes", {m_index_a, change.a.AsRun(), text_a}, {m_index_b, change.b.AsRun(), text_b}});
        return;
    }
    m_differences.push_back({"row",
                             "text",
                             {m_index_a, change.a.AsRun(), text_a, TextOf(m_a, a.from, a.Count())},
                             {m_index_b, change.b.AsRun(), text_b, TextOf(m_b, b.from, b.Count())}});
}

void RowComparison::FindPairs() {
    std::size_t a = 0, b = 0;
    const auto keep = [&](std::size_t to) {
        while (a < to) m_pairs.push_back({a++, b++, true});
    };
    for (const TextChange& change : m_changes) {
        keep(change.a.from);
        const std::size_t count_a = change.a.Count(), count_b = change.b.Count();
        const std::size_t count = count_a == 0 || count_b == 0 ? 0 : std::max(count_a, count_b);
        for (std::size_t i = 0; i < count; ++i)
            m_pairs.push_back({a + std::min(i, count_a - 1), b + std::min(i, count_b - 1), count_a == count_b});
        a = change.a.to;
        b = change.b.to;
    }
    keep(m_a.characters.size());
}

void RowComparison::AddRun(const char* property, const Range& a, const Range& b, Values values) {
    m_differences.push_back({"row",
                             property,
                             {m_index_a, a.AsRun(), std::move(values.first), TextOf(m_a, a.from, a.Count())},
                             {m_index_b, b.AsRun(), std::move(values.second), TextOf(m_b, b.from, b.Count())}});
}

void RowComparison::Places() {
    const auto place = [](const ContentCharacter& character) { return Json::array({character.x, character.y}); };
    for (std::size_t i = 0; i < m_pairs.size();) {
        Range a{m_pairs[i].a, m_pairs[i].a}, b{m_pairs[i].b, m_pairs[i].b};
        Values places{Json::array(), Json::array()};
        for (; i < m_pairs.size() && m_pairs[i].has_place && m_pairs[i].a == a.to && m_pairs[i].b == b.to; ++i) {
            const ContentCharacter& one = m_a.characters[a.to];
            const ContentCharacter& other = m_b.characters[b.to];
            if (one.x == other.x && one.y == other.y) break;
            places.first.push_back(place(one));
            places.second.push_back(place(other));
            ++a.to, ++b.to;
        }
        if (a.Count() != 0) {
            AddRun("place", a, b, std::move(places));
        } else {
            ++i;
        }
    }
}

template <typename ValuesOf>
void RowComparison::Runs(const char* property, const ValuesOf& values_of) {
    for (std::size_t i = 0; i < m_pairs.size();) {
        const Values values = values_of(m_a.characters[m_pairs[i].a], m_b.characters[m_pairs[i].b]);
        Range a{m_pairs[i].a, m_pairs[i].a + 1}, b{m_pairs[i].b, m_pairs[i].b + 1};
        ++i;
        if (values.first == values.second) continue;
        for (; i < m_pairs.size() && m_pairs[i].a <= a.to && m_pairs[i].b <= b.to; ++i) {
            if (values_of(m_a.characters[m_pairs[i].a], m_b.characters[m_pairs[i].b]) != values) break;
            a.to = m_pairs[i].a + 1;
            b.to = m_pairs[i].b + 1;
        }
        AddRun(property, a, b, values);
    }
}

RowComparison::Values RowComparison::FontValues(const ContentCharacter& a, const ContentCharacter& b) const {
    if (!IsFontChange(m_contents_a, m_contents_b, a.slot, b.slot, a.font, b.font)) return {};
    const auto value = [&](const ContentCharacter& character) -> Json {
        if (a.font == b.font || character.font < 0) return "slot " + std::to_string(character.slot);
        return character.font;
    };
    return {value(a), value(b)};
}

RowComparison::Values RowComparison::ColourValues(const ContentCharacter& a, const ContentCharacter& b) const {
    const auto value = [](const ContentCharacter& character, const MessageContents& contents) {
        std::uint32_t colour = character.face;
        std::string text;
        if (character.colour_set >= 0) {
            colour = contents.palette[static_cast<std::size_t>(character.colour_set * kSetEntries + kFaceEntry)];
            text = "set " + std::to_string(character.colour_set) + " ";
        }
        char digits[8];
        std::snprintf(digits, sizeof digits, "#%06X", static_cast<unsigned>(colour & 0xFFFFFF));
        return text + digits;
    };
    // What a set of the palette contains is a difference of the palette.
    if (a.colour_set == b.colour_set && a.face == b.face) return {};
    return {value(a, m_contents_a), value(b, m_contents_b)};
}

RowComparison::Values RowComparison::EdgeValues(const ContentCharacter& a, const ContentCharacter& b) {
    if (a.edge == b.edge) return {};
    const auto value = [](std::uint32_t colour) {
        char digits[8];
        std::snprintf(digits, sizeof digits, "#%06X", static_cast<unsigned>(colour & 0xFFFFFF));
        return std::string(digits);
    };
    return {value(a.edge), value(b.edge)};
}

}  // namespace

bool IsFontChange(const MessageContents& a, const MessageContents& b, int slot_a, int slot_b, int font_a, int font_b) {
    if (slot_a == slot_b) {
        // The number of a font that is missing is not among those of a document's slots.
        const auto slot = static_cast<std::size_t>(slot_a);
        return font_a != font_b && slot < a.slots.size() && a.slots[slot] == b.slots[slot];
    }
    return font_a != font_b || font_a < 0 || a.slots == b.slots;
}

void RowComparer::operator()(std::size_t row_a, std::size_t row_b, Differences& differences) const {
    if (m_a.rows[row_a] == m_b.rows[row_b]) return;
    RowComparison(m_a, m_b, row_a, row_b, m_swapped, differences).Compare();
}

}  // namespace zel::compare
