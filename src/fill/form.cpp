#include "fill/form.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/field_text.h"
#include "base/utf8.h"
#include "base/word_gap.h"

namespace zel::fill {

namespace {

constexpr std::string_view kNoName = "un-named";

std::string NameOf(const files::TabField& field) {
    const std::string_view name = base::UpToNul(field.tab_name);
    return name == kNoName ? std::string() : base::Utf8FromLatin1(name);
}

/// As the import tests it. A row that the file's end cuts off is no row of the description.
bool IsKept(const files::TabField& field, std::size_t rows) {
    return field.tab_start < field.tab_end && field.tab_row < rows;
}

/// Finds the fonts of the fields, one after another, as the import does for the templates of empty fields.
class SlotFinder {
  public:
    SlotFinder(const files::MessageFile& message, const FontSet& fonts) : m_fonts(fonts) {
        for (const files::RowText& row : message.rows) m_limits.push_back({row.row_top, row.row_bottom, row.row_empty});
        for (unsigned slot = 0; slot < fonts.size(); ++slot) {
            const auto same = [&](unsigned other) { return fonts[other]->number == fonts[slot]->number; };
            if (fonts[slot] && std::ranges::none_of(m_groups, same)) m_groups.push_back(slot);
        }
    }

    unsigned SlotOf(const files::TabField& field) {
        Limits& row = m_limits[field.tab_row];
        unsigned slot = field.tab_font;
        if (slot >= kFontSlots) {
            const auto fits = [&](unsigned group) {
                return m_fonts[group]->row_top == row.top && m_fonts[group]->row_bottom == row.bottom;
            };
            const auto found = std::ranges::find_if(m_groups, fits);
            if (found != m_groups.end()) m_last = *found;
            if (m_last) slot = *m_last;
        } else if (std::ranges::find(m_groups, slot) != m_groups.end()) {
            m_last = slot;
        }
        if (std::exchange(row.is_empty, false) && m_last) Open(row, *m_fonts[*m_last]);
        return slot;
    }

  private:
    struct Limits {
        unsigned top, bottom;
        bool is_empty;
    };

    static void Open(Limits& row, const FontMetrics& font) {
        if (font.row_top == 0 || font.row_bottom == 0 || font.keeps_row_limits) return;
        row.top = font.row_top & 0x3FF;
        row.bottom = std::min(row.bottom, font.row_bottom & 0x3FF);
    }

    const FontSet& m_fonts;
    std::vector<Limits> m_limits;
    /// The first slot of each font.
    std::vector<unsigned> m_groups;
    std::optional<unsigned> m_last;
};

/// Gives each field its address. A name that another field has, or that is another field's number, is none.
void AddressFields(std::vector<Field>& fields) {
    for (std::size_t index = 0; index < fields.size(); ++index) {
        Field& field = fields[index];
        const auto count = std::ranges::count(fields, field.name, &Field::name);
        const bool is_own = !field.name.empty() && count == 1 && FieldNumber(field.name).value_or(index) == index;
        field.address = is_own ? field.name : "f" + std::to_string(index);
    }
}

char32_t Lower(char32_t code) {
    const bool is_upper = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7);
    return is_upper ? code + 0x20 : code;
}

/// The text in a field. @param is_gap  whether there is a gap between a character and the next one's x.
template <class IsGap>
std::string TextOf(const files::RowText& row, const Field& field, IsGap is_gap) {
    if (row.row_empty) return {};
    std::string text;
    const files::CharCell* last = nullptr;
    const std::optional<std::vector<unsigned>> chain = ChainOf(row);
    for (unsigned n = 0; n < row.cells.size(); ++n) {
        const files::CharCell& cell = row.cells[chain ? (*chain)[n] : n];
        if (!field.Contains(cell)) continue;
        if (last != nullptr && text.back() != ' ' && is_gap(*last, static_cast<int>(cell.char_x))) text += ' ';
        text += static_cast<char>(cell.char_code & 0xFF);
        last = &cell;
    }
    return base::Utf8FromLatin1(text);
}

/// The only field with a property; empty if there is none or more than one.
template <class Property>
std::optional<std::size_t> OnlyField(const Form& form, Property has) {
    std::optional<std::size_t> found;
    for (std::size_t index = 0; index < form.fields.size(); ++index) {
        if (!has(form.fields[index])) continue;
        if (found) return std::nullopt;
        found = index;
    }
    return found;
}

}  // namespace

Form MakeForm(files::MessageFile message, FontSet fonts) {
    Form form{std::move(message), std::move(fonts), {}, {}};
    if (!form.message.tabs) return form;
    SlotFinder slots(form.message, form.fonts);
    for (const files::TabField& tab : form.message.tabs->fields) {
        if (!IsKept(tab, form.message.rows.size())) continue;
        form.fields.push_back({.name = NameOf(tab),
                               .address = {},
                               .row = tab.tab_row,
                               .start = tab.tab_start,
                               .end = tab.tab_end,
                               .slot = slots.SlotOf(tab),
                               .colour_set = tab.tab_colour & 7});
    }
    AddressFields(form.fields);
    return form;
}

std::optional<std::size_t> FieldNumber(std::string_view address) {
    if (address.size() < 2 || (address.front() != 'f' && address.front() != 'F')) return std::nullopt;
    std::size_t number = 0;
    const char* const end = address.data() + address.size();
    const auto [last, error] = std::from_chars(address.data() + 1, end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

std::string FoldedName(std::string_view name) {
    while (!name.empty() && name.front() == ' ') name.remove_prefix(1);
    while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
    std::string folded;
    while (!name.empty()) {
        const base::Utf8Character c = base::FirstCharacter(name);
        base::AppendUtf8(folded, Lower(c.code));
        name.remove_prefix(c.size);
    }
    return folded;
}

std::optional<std::size_t> FindField(const Form& form, std::string_view column) {
    // A name counts only if it is the field's address; otherwise it may be another field's.
    if (const auto exact = OnlyField(form, [&](const Field& field) { return field.address == column; })) return exact;
    const std::string folded = FoldedName(column);
    if (const auto number = FieldNumber(folded)) return *number < form.fields.size() ? number : std::nullopt;
    if (folded.empty()) return std::nullopt;
    return OnlyField(form, [&](const Field& field) { return FoldedName(field.name) == folded; });
}

std::optional<std::vector<unsigned>> ChainOf(const files::RowText& row) {
    std::vector<unsigned> chain;
    std::vector<bool> seen(row.cells.size(), false);
    for (unsigned at = row.first_char; chain.size() < row.cells.size(); at = row.cells[at].next_char) {
        if (at >= row.cells.size() || seen[at]) return std::nullopt;
        seen[at] = true;
        chain.push_back(at);
    }
    return chain;
}

std::string PresentText(const files::MessageFile& message, const Field& field, Gaps gaps) {
    const files::RowText& row = message.rows[field.row];
    const int height = static_cast<int>(row.row_bottom) - static_cast<int>(row.row_top);
    return TextOf(row, field, [&](const files::CharCell& cell, int next_x) {
        return gaps == Gaps::kAsBlanks && base::IsWordGap(height, static_cast<int>(cell.char_x), next_x);
    });
}

std::string PresentText(const Form& form, const Field& field) {
    const files::RowText& row = form.message.rows[field.row];
    const int height = static_cast<int>(row.row_bottom) - static_cast<int>(row.row_top);
    return TextOf(row, field, [&](const files::CharCell& cell, int next_x) {
        const int x = static_cast<int>(cell.char_x);
        const bool is_known =
            cell.char_font < kFontSlots && form.fonts[cell.char_font] && cell.char_code < kDirectoryEntries;
        const int advance = is_known ? form.fonts[cell.char_font]->glyphs[cell.char_code].advance : 0;
        return base::IsWordGap(height, x, next_x) && (next_x < x || next_x > x + advance);
    });
}

std::string FontFault(const Form& form, const Field& field) {
    if (field.slot >= kFontSlots) return "no font of the message has the limits of row " + std::to_string(field.row);
    if (form.fonts[field.slot]) return {};
    const unsigned number = form.message.header.font_numbers[field.slot];
    if (number == kNoFont) return "slot " + std::to_string(field.slot) + " of the message has no font";
    return "font " + std::to_string(number) + " was not found, or can't be read" +
           (form.font_directory.empty() ? "" : ", in " + form.font_directory);
}

}  // namespace zel::fill
