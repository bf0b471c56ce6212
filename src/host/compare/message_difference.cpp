#include "host/compare/message_difference.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include "host/compare/align.h"
#include "host/compare/row_difference.h"

namespace zel::compare {

namespace {

using Json = nlohmann::ordered_json;

// Costs of rows and fields that are paired or left without a partner. A text that is replaced in its place is a change;
// another text elsewhere is a removal and an addition.
constexpr int kAlone = 500, kAloneEmpty = 250;
constexpr int kWorst = 2 * kAlone + 100;

/// Codes of a row, sorted, so that those which two rows share are counted in one pass.
std::vector<int> SortedCodes(const ContentRow& row) {
    std::vector<int> codes;
    codes.reserve(row.characters.size());
    for (const ContentCharacter& character : row.characters) codes.push_back(character.code);
    std::ranges::sort(codes);
    return codes;
}

std::size_t SharedCodes(const std::vector<int>& a, const std::vector<int>& b) {
    std::size_t shared = 0;
    for (auto i = a.begin(), j = b.begin(); i != a.end() && j != b.end();) {
        if (*i == *j) {
            ++shared, ++i, ++j;
        } else {
            *i < *j ? ++i : ++j;
        }
    }
    return shared;
}

bool HaveSameCodes(const ContentRow& a, const ContentRow& b) {
    return std::ranges::equal(a.characters, b.characters, {}, &ContentCharacter::code, &ContentCharacter::code);
}

int CostOfRows(const ContentRow& a, const ContentRow& b, const std::vector<int>& codes_a,
               const std::vector<int>& codes_b) {
    if (codes_a.empty() && codes_b.empty()) return a == b ? 0 : a.y == b.y ? 30 : 200;
    if (HaveSameCodes(a, b)) return a == b ? 0 : a.y == b.y ? 20 : 60;
    const int elsewhere = a.y == b.y ? 0 : 650;
    if (codes_a.empty() || codes_b.empty()) return 600 + elsewhere;
    const auto shared = static_cast<int>(SharedCodes(codes_a, codes_b) * 2000 / (codes_a.size() + codes_b.size()));
    return 100 + (1000 - shared) * 7 / 10 + elsewhere;
}

std::vector<AlignedPair> AlignRows(const MessageContents& a, const MessageContents& b, bool swapped) {
    std::vector<std::vector<int>> codes_a, codes_b;
    for (const ContentRow& row : a.rows) codes_a.push_back(SortedCodes(row));
    for (const ContentRow& row : b.rows) codes_b.push_back(SortedCodes(row));
    return Align(
        a.rows.size(), b.rows.size(), swapped,
        [&](std::size_t i, std::size_t j) { return CostOfRows(a.rows[i], b.rows[j], codes_a[i], codes_b[j]); },
        [&](std::size_t i) { return codes_a[i].empty() ? kAloneEmpty : kAlone; },
        [&](std::size_t j) { return codes_b[j].empty() ? kAloneEmpty : kAlone; });
}

int CostOfFields(const ContentField& a, const ContentField& b) {
    if (a == b) return 0;
    const bool overlap = a.row == b.row && a.left < b.right && b.left < a.right;
    if (!a.name.empty() && a.name == b.name) return overlap ? 10 : 100;
    return overlap ? 200 : a.row == b.row ? 700 : kWorst;
}

std::vector<AlignedPair> AlignFields(const MessageContents& a, const MessageContents& b, bool swapped) {
    const auto alone = [](std::size_t) { return kAlone; };
    return Align(
        a.fields.size(), b.fields.size(), swapped,
        [&](std::size_t i, std::size_t j) { return CostOfFields(a.fields[i], b.fields[j]); }, alone, alone);
}

Json ColourJson(std::uint32_t colour) {
    char text[8];
    std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(colour & 0xFFFFFF));
    return text;
}

Json FieldJson(const ContentField& field) {
    return {{"name", field.name}, {"row", field.row}, {"left", field.left}, {"right", field.right}};
}

class MessageComparison {
  public:
    MessageComparison(const MessageContents& a, const MessageContents& b) : m_a(a), m_b(b), m_swapped(b < a) {}

    Differences Take() {
        Head();
        Fonts();
        Palette();
        Rows();
        Fields();
        return std::move(m_differences);
    }

  private:
    void Add(const char* part, std::optional<int> index, const char* property, Json a, Json b) {
        if (a != b) m_differences.push_back({part, property, {index, {}, std::move(a)}, {index, {}, std::move(b)}});
    }
    void Head();
    void Fonts();
    void Palette();
    void Rows();
    void Fields();
    void Field(int index_a, int index_b);

    const MessageContents& m_a;
    const MessageContents& m_b;
    const bool m_swapped;
    /// The row of B that belongs to a row of A.
    std::map<int, int> m_row_of;
    Differences m_differences;
};

void MessageComparison::Head() {
    Add("message", {}, "standard", m_a.standard, m_b.standard);
    Add("message", {}, "flash font", m_a.flash_font, m_b.flash_font);
    static constexpr const char* kSides[] = {"left", "top", "right", "bottom"};
    for (std::size_t side = 0; side < m_a.frame.size(); ++side)
        Add("frame", {}, kSides[side], m_a.frame[side], m_b.frame[side]);
    Add("message", {}, "tab field of no row", m_a.bad_field_row, m_b.bad_field_row);
    Add("message", {}, "tab field without width", m_a.bad_field, m_b.bad_field);
}

void MessageComparison::Fonts() {
    const auto number = [](std::optional<int> font) { return font ? Json(*font) : Json(); };
    for (std::size_t slot = 0; slot < m_a.slots.size(); ++slot) {
        const auto index = static_cast<int>(slot);
        Add("slot", index, "font", number(m_a.slots[slot]), number(m_b.slots[slot]));
        if (m_a.slots[slot] && m_b.slots[slot]) Add("slot", index, "description", m_a.fonts[slot], m_b.fonts[slot]);
    }
}

void MessageComparison::Palette() {
    for (std::size_t entry = 0; entry < m_a.palette.size(); ++entry) {
        if (m_a.palette[entry] == m_b.palette[entry]) continue;
        Add("palette", static_cast<int>(entry), "colour", ColourJson(m_a.palette[entry]),
            ColourJson(m_b.palette[entry]));
    }
}

void MessageComparison::Rows() {
    const RowComparer compare(m_a, m_b, m_swapped);
    for (const AlignedPair& pair : AlignRows(m_a, m_b, m_swapped)) {
        if (pair.IsMatch()) {
            m_row_of[static_cast<int>(pair.a)] = static_cast<int>(pair.b);
            compare(pair.a, pair.b, m_differences);
            continue;
        }
        const bool in_a = pair.a != AlignedPair::kNone;
        const std::size_t index = in_a ? pair.a : pair.b;
        Difference difference{"row", "presence", {}, {}};
        DifferenceSide side{static_cast<int>(index), {}, TextOf((in_a ? m_a : m_b).rows[index]), {}};
        (in_a ? difference.a : difference.b) = std::move(side);
        m_differences.push_back(std::move(difference));
    }
}

void MessageComparison::Field(int index_a, int index_b) {
    const ContentField& a = m_a.fields[static_cast<std::size_t>(index_a)];
    const ContentField& b = m_b.fields[static_cast<std::size_t>(index_b)];
    if (a == b) return;
    const auto add = [&](const char* property, Json value_a, Json value_b) {
        if (value_a == value_b) return;
        m_differences.push_back(
            {"field", property, {index_a, {}, std::move(value_a), a.name}, {index_b, {}, std::move(value_b), b.name}});
    };
    add("name", a.name, b.name);
    // A row that moves because another one is inserted takes its fields along.
    const auto row = m_row_of.find(a.row);
    if (row == m_row_of.end() || row->second != b.row) add("row", a.row, b.row);
    add("left", a.left, b.left);
    add("right", a.right, b.right);
    if (IsFontChange(m_a, m_b, a.slot, b.slot, a.font, b.font)) {
        a.font == b.font ? add("slot", a.slot, b.slot) : add("font", a.font, b.font);
    }
    add("colour set", a.colour_set, b.colour_set);
    if (a.colour_set < 0) add("colour", ColourJson(a.colour), ColourJson(b.colour));
    add("byte", a.byte, b.byte);
    add("flags", a.flags, b.flags);
}

void MessageComparison::Fields() {
    for (const AlignedPair& pair : AlignFields(m_a, m_b, m_swapped)) {
        if (pair.IsMatch()) {
            Field(static_cast<int>(pair.a), static_cast<int>(pair.b));
            continue;
        }
        const bool in_a = pair.a != AlignedPair::kNone;
        const std::size_t index = in_a ? pair.a : pair.b;
        const ContentField& field = (in_a ? m_a : m_b).fields[index];
        Difference difference{"field", "presence", {}, {}};
        DifferenceSide side{static_cast<int>(index), {}, FieldJson(field), field.name};
        (in_a ? difference.a : difference.b) = std::move(side);
        m_differences.push_back(std::move(difference));
    }
}

}  // namespace

Differences CompareContents(const MessageContents& a, const MessageContents& b) {
    if (a == b) return {};
    return MessageComparison(a, b).Take();
}

}  // namespace zel::compare
