#include "fill/fill_fields.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"

namespace zel::fill {

namespace {

/// Positions have 10 bits.
constexpr int kMostLines = 1023;
/// Characters named in a fault.
constexpr std::size_t kMostNamed = 5;

/// The setter of a record that the form has.
constexpr std::size_t kForm = static_cast<std::size_t>(-1);

/// A row that is being filled.
struct OpenRow {
    files::RowText& row;
    /// For each record the field whose text it belongs to, or kForm.
    std::vector<std::size_t>& setters;
};

/// '"€" (U+20AC)'; a control character has its code alone.
std::string NameOfCharacter(char32_t code) {
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(code));
    if (base::IsControl(code)) return number;
    std::string name = "\"";
    base::AppendUtf8(name, code);
    return name + "\" (" + number + ")";
}

bool CanBeSet(char32_t code, const FontMetrics& font) {
    return code == kBlank || (code < font.glyphs.size() && !base::IsControl(code) && font.glyphs[code].has_glyph);
}

/// The codes of a text, with those that the font lacks.
struct TextCodes {
    std::vector<unsigned> codes;
    std::vector<char32_t> lacking;
};

TextCodes CodesOf(std::string_view text, const FontMetrics& font) {
    TextCodes result;
    while (!text.empty()) {
        const base::Utf8Character c = base::FirstCharacter(text);
        text.remove_prefix(c.size);
        if (CanBeSet(c.code, font)) {
            result.codes.push_back(static_cast<unsigned>(c.code));
        } else if (std::ranges::find(result.lacking, c.code) == result.lacking.end()) {
            result.lacking.push_back(c.code);
        }
    }
    return result;
}

std::string LackingText(const std::vector<char32_t>& lacking, const FontMetrics& font) {
    std::string text = "font " + std::to_string(font.number) + " \"" + font.name + "\" has no glyph for ";
    for (std::size_t n = 0; n < lacking.size() && n < kMostNamed; ++n)
        text += (n == 0 ? "" : ", ") + NameOfCharacter(lacking[n]);
    if (lacking.size() > kMostNamed) text += " and " + std::to_string(lacking.size() - kMostNamed) + " more";
    return text;
}

/// A change of a row's records.
struct Replacement {
    /// For each record whether it is removed.
    std::vector<bool> removed;
    /// The records of the row in reading order.
    std::vector<unsigned> chain;
    std::vector<files::CharCell> cells;
};

/// Limits of a row, in lines.
struct RowLimits {
    unsigned top, bottom;
};

/// An empty row takes its limits from the font, as for a template of the import.
RowLimits LimitsOf(const files::RowText& row, const FontMetrics& font) {
    if (!row.row_empty || font.row_top == 0 || font.row_bottom == 0 || font.keeps_row_limits)
        return {row.row_top, row.row_bottom};
    return {font.row_top & 0x3FF, std::min(row.row_bottom, font.row_bottom & 0x3FF)};
}

/// place_flag of a text's characters: that of the text that it replaces.
struct PlaceFlags {
    bool first = false, others = false;
};

PlaceFlags FlagsOf(const files::RowText& row, const Replacement& change) {
    PlaceFlags flags;
    std::size_t count = 0;
    for (const unsigned at : change.chain) {
        if (!change.removed[at]) continue;
        (count == 0 ? flags.first : flags.others) = row.cells[at].place_flag;
        if (++count == 2) break;
    }
    return flags;
}

/// Links the records in an order.
void Link(files::RowText& row, const std::vector<unsigned>& chain) {
    for (std::size_t n = 0; n < chain.size(); ++n) {
        files::CharCell& cell = row.cells[chain[n]];
        cell.chain_end = n + 1 == chain.size();
        cell.next_char = cell.chain_end ? 63 : chain[n + 1];
    }
    row.first_char = chain.empty() ? 0 : chain.front();
}

void Apply(const OpenRow& open, const Replacement& change, std::size_t field) {
    std::vector<files::CharCell> cells;
    std::vector<std::size_t> setters;
    std::vector<unsigned> places(open.row.cells.size());
    std::optional<std::size_t> first_new;
    const auto insert = [&] {
        if (first_new) return;
        first_new = cells.size();
        cells.insert(cells.end(), change.cells.begin(), change.cells.end());
        setters.insert(setters.end(), change.cells.size(), field);
    };
    for (std::size_t n = 0; n < open.row.cells.size(); ++n) {
        if (change.removed[n]) {
            insert();
            continue;
        }
        places[n] = static_cast<unsigned>(cells.size());
        cells.push_back(open.row.cells[n]);
        setters.push_back(open.setters[n]);
    }
    insert();

    std::vector<unsigned> chain;
    bool has_new = false;
    const auto link_new = [&] {
        if (std::exchange(has_new, true)) return;
        for (std::size_t n = 0; n < change.cells.size(); ++n) chain.push_back(static_cast<unsigned>(*first_new + n));
    };
    for (const unsigned at : change.chain) {
        if (change.removed[at]) {
            link_new();
        } else {
            chain.push_back(places[at]);
        }
    }
    link_new();

    open.row.cells = std::move(cells);
    open.row.char_count.reset();
    open.row.row_empty = open.row.cells.empty();
    open.setters = std::move(setters);
    Link(open.row, chain);
}

class Filler {
  public:
    Filler(const Form& form, Overflow overflow) : m_form(form), m_overflow(overflow), m_filled{form.message, {}, {}} {
        for (const files::RowText& row : form.message.rows) m_setters.emplace_back(row.cells.size(), kForm);
    }

    void Fill(const FieldValue& value) {
        const Field& field = m_form.fields[value.field];
        const OpenRow open{m_filled.message.rows[field.row], m_setters[field.row]};
        if (std::string fault = value.text.empty() ? Empty(open, value.field) : Set(open, value); !fault.empty())
            m_filled.faults.push_back({value.field, std::move(fault)});
    }
    Filled Take() { return std::move(m_filled); }

  private:
    std::string Empty(const OpenRow& open, std::size_t index);
    std::string Set(const OpenRow& open, const FieldValue& value);
    std::string SetCodes(const OpenRow& open, std::size_t index, const std::vector<unsigned>& codes);
    std::optional<Replacement> Begin(const OpenRow& open, const Field& field) const;
    int CharY(const files::RowText& row, const Field& field, const RowLimits& limits) const;
    const files::CharCell* Neighbour(const files::RowText& row, const Field& field) const;
    void NoteOverlap(const OpenRow& open, const Replacement& change, std::size_t index);

    const FontMetrics& FontOf(const Field& field) const { return *m_form.fonts[field.slot]; }
    const FontMetrics* FontOf(const files::CharCell& cell) const {
        return cell.char_font < kFontSlots && m_form.fonts[cell.char_font] ? &*m_form.fonts[cell.char_font] : nullptr;
    }

    const Form& m_form;
    const Overflow m_overflow;
    Filled m_filled;
    std::vector<std::vector<std::size_t>> m_setters;
};

std::string DamagedChain(const Field& field) {
    return "the characters of row " + std::to_string(field.row) + " aren't linked one after another";
}

/// The change that removes the characters of a field; none if the row's records can't be put in order.
std::optional<Replacement> Filler::Begin(const OpenRow& open, const Field& field) const {
    std::optional<std::vector<unsigned>> chain = ChainOf(open.row);
    if (!chain) return std::nullopt;
    Replacement change{{}, std::move(*chain), {}};
    for (const files::CharCell& cell : open.row.cells) change.removed.push_back(field.Contains(cell));
    return change;
}

// A text of the same values in an overlapping field stays.
std::string Filler::Empty(const OpenRow& open, std::size_t index) {
    const Field& field = m_form.fields[index];
    const auto& cells = open.row.cells;
    if (std::ranges::none_of(cells, [&](const files::CharCell& cell) { return field.Contains(cell); })) return {};
    std::optional<Replacement> change = Begin(open, field);
    if (!change) return DamagedChain(field);
    for (std::size_t n = 0; n < cells.size(); ++n) {
        if (open.setters[n] != kForm) change->removed[n] = false;
    }
    if (std::ranges::find(change->removed, true) != change->removed.end()) Apply(open, *change, index);
    return {};
}

std::string Filler::Set(const OpenRow& open, const FieldValue& value) {
    const Field& field = m_form.fields[value.field];
    if (std::string fault = FontFault(m_form, field); !fault.empty()) return fault;
    const TextCodes text = CodesOf(value.text, FontOf(field));
    if (!text.lacking.empty()) return LackingText(text.lacking, FontOf(field));
    return SetCodes(open, value.field, text.codes);
}

std::string Filler::SetCodes(const OpenRow& open, std::size_t index, const std::vector<unsigned>& codes) {
    const Field& field = m_form.fields[index];
    std::optional<Replacement> change = Begin(open, field);
    if (!change) return DamagedChain(field);
    std::vector<int> advances;
    for (const unsigned code : codes) advances.push_back(FontOf(field).glyphs[code].advance);
    const auto removed = static_cast<std::size_t>(std::ranges::count(change->removed, true));
    const TextLayout layout = LayOut(advances, field, kMostCharacters - (open.row.cells.size() - removed), m_overflow);
    if (!layout.fault.empty()) return layout.fault;

    const RowLimits limits = LimitsOf(open.row, FontOf(field));
    const int y = CharY(open.row, field, limits);
    if (y < 0 || y > kMostLines) return "its characters would have the vertical position " + std::to_string(y);
    const PlaceFlags flags = FlagsOf(open.row, *change);
    for (std::size_t n = 0; n < layout.x.size(); ++n) {
        change->cells.push_back({.place_flag = n == 0 ? flags.first : flags.others,
                                 .char_x = layout.x[n],
                                 .colour_set = field.colour_set,
                                 .char_y = static_cast<unsigned>(y),
                                 .char_font = field.slot,
                                 .char_code = codes[n]});
    }
    if (layout.x.size() < codes.size()) {
        m_filled.notes.push_back({index, "cut to the first " + std::to_string(layout.x.size()) + " of " +
                                             base::Counted(codes.size(), "character")});
    }
    NoteOverlap(open, *change, index);
    open.row.row_top = limits.top;
    open.row.row_bottom = limits.bottom;
    Apply(open, *change, index);
    return {};
}

// The character that has the baseline of a field's text: one of the field, or else of the row, in the field's font; or
// else one whose font is known.
const files::CharCell* Filler::Neighbour(const files::RowText& row, const Field& field) const {
    const files::CharCell* best = nullptr;
    int best_rank = 0;
    for (const files::CharCell& cell : row.cells) {
        const FontMetrics* const font = FontOf(cell);
        if (font == nullptr) continue;
        const bool has_font = font->number == FontOf(field).number;
        const int rank = (has_font ? 2 : 0) + (field.Contains(cell) ? 1 : 0) + 1;
        if (rank > best_rank) best = &cell;
        best_rank = std::max(best_rank, rank);
    }
    return best;
}

// In a row without characters the highest glyph of the font begins at the row's upper limit.
int Filler::CharY(const files::RowText& row, const Field& field, const RowLimits& limits) const {
    const FontMetrics& font = FontOf(field);
    const files::CharCell* neighbour = Neighbour(m_form.message.rows[field.row], field);
    if (neighbour == nullptr) neighbour = Neighbour(row, field);
    if (neighbour == nullptr) return static_cast<int>(limits.top) + font.highest_top;
    return static_cast<int>(neighbour->char_y) + FontOf(*neighbour)->top_offset - font.top_offset;
}

void Filler::NoteOverlap(const OpenRow& open, const Replacement& change, std::size_t index) {
    std::optional<std::size_t> last;
    for (std::size_t n = 0; n < change.removed.size(); ++n) {
        const std::size_t setter = open.setters[n];
        if (!change.removed[n] || setter == kForm || setter == last) continue;
        m_filled.notes.push_back({index, "replaces text of the overlapping field " + m_form.fields[setter].address});
        last = setter;
    }
}

}  // namespace

Filled FillFields(const Form& form, std::span<const FieldValue> values, Overflow overflow) {
    std::vector<const FieldValue*> in_order;
    for (const FieldValue& value : values) in_order.push_back(&value);
    std::ranges::stable_sort(in_order, {}, &FieldValue::field);
    Filler filler(form, overflow);
    for (const FieldValue* value : in_order) filler.Fill(*value);
    return filler.Take();
}

}  // namespace zel::fill
