#include "host/live/live_form.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "files/message_reader.h"
#include "module/contract/records/char_entry.h"
#include "module/contract/records/msg_row.h"
#include "module/message/format/message_loader.h"

namespace zel::live {

namespace {

std::vector<LiveRow> RowsOf(const message::LoadedMessage& message, std::size_t count) {
    std::vector<LiveRow> rows;
    for (const tag_msg_row& row : std::span(message.rows.get(), count)) {
        LiveRow& live = rows.emplace_back(LiveRow{row.Y(), row.Top(), row.Bottom(), row.Empty(), row.FirstChar(), {}});
        if (row.Empty()) continue;
        for (const tag_msg_char& cell : std::span(row.chars).first(static_cast<std::size_t>(row.CharCount())))
            live.cells.push_back({cell.X(), cell.Y(), cell.ColourSet(), cell.Font(), cell.Code(), cell.Next()});
    }
    return rows;
}

/// Reads each font once, whatever the number of its slots.
class Fonts {
  public:
    Fonts(const tag_msg_header& header, const tag_palete& palette, const FontFile& font_file) {
        std::map<int, std::optional<std::size_t>> known;
        for (std::size_t slot = 0; slot < m_slots.size(); ++slot) {
            const int number = header.font_numbers[slot];
            if (number == kNoFont) continue;
            const auto [found, is_new] = known.try_emplace(number);
            if (is_new) found->second = Read(font_file(number), number, palette);
            m_slots[slot] = found->second;
        }
    }

    LiveFontReader* At(int slot) {
        if (slot < 0 || slot >= kFontSlots || !m_slots[static_cast<std::size_t>(slot)]) return nullptr;
        return &m_readers[*m_slots[static_cast<std::size_t>(slot)]];
    }
    fill::FontSet Metrics() const {
        fill::FontSet set;
        for (std::size_t slot = 0; slot < set.size(); ++slot) {
            if (m_slots[slot]) set[slot] = m_readers[*m_slots[slot]].Metrics();
        }
        return set;
    }
    const std::array<std::optional<std::size_t>, kFontSlots>& Slots() const noexcept { return m_slots; }
    /// Called once, last.
    std::vector<LiveFont> Take() {
        std::vector<LiveFont> fonts;
        for (LiveFontReader& reader : m_readers) fonts.push_back(reader.Take());
        return fonts;
    }

  private:
    // An import goes on without a font that is missing or damaged.
    std::optional<std::size_t> Read(std::shared_ptr<const std::string> file, int number, const tag_palete& palette) {
        if (!file) return std::nullopt;
        try {
            m_readers.emplace_back(std::span(reinterpret_cast<const std::uint8_t*>(file->data()), file->size()), number,
                                   palette, m_budget);
        } catch (const std::runtime_error&) {
            return std::nullopt;
        }
        m_files.push_back(std::move(file));
        return m_readers.size() - 1;
    }

    GlyphBudget m_budget;
    std::vector<std::shared_ptr<const std::string>> m_files;
    std::vector<LiveFontReader> m_readers;
    std::array<std::optional<std::size_t>, kFontSlots> m_slots;
};

/// The records of the tab table that are fields, as fill::MakeForm selects them.
std::vector<unsigned> TabSlotsOf(const files::MessageFile& message) {
    std::vector<unsigned> slots;
    if (!message.tabs) return slots;
    for (const files::TabField& tab : message.tabs->fields) {
        if (tab.tab_start < tab.tab_end && tab.tab_row < message.rows.size()) slots.push_back(tab.tab_font);
    }
    return slots;
}

std::vector<LiveField> FieldsOf(const fill::Form& form) {
    std::vector<LiveField> fields;
    const std::vector<unsigned> tab_slots = TabSlotsOf(form.message);
    for (std::size_t n = 0; n < form.fields.size(); ++n) {
        const fill::Field& field = form.fields[n];
        std::string fault =
            form.message.size ? "the message ends before its last section does" : FontFault(form, field);
        fields.push_back({field, tab_slots[n], PresentText(form, field), std::move(fault)});
    }
    return fields;
}

/// Adds the glyphs that can be in a row, with those of the blanks that an import sets into fields without a text.
void AddGlyphs(const LiveForm& form, Fonts& fonts) {
    for (const LiveRow& row : form.rows) {
        for (const LiveRow::Cell& cell : row.cells) {
            if (LiveFontReader* const font = fonts.At(cell.slot)) font->Add(static_cast<unsigned>(cell.code) & 0xFF);
        }
    }
    if (form.fields.empty()) return;
    for (int slot = 0; slot < kFontSlots; ++slot) {
        if (LiveFontReader* const font = fonts.At(slot)) font->Add(fill::kBlank);
    }
    for (const LiveField& field : form.fields) {
        LiveFontReader* const font = fonts.At(static_cast<int>(field.field.slot));
        if (font != nullptr && field.fault.empty()) font->AddAll();
    }
}

}  // namespace

LiveForm MakeLiveForm(std::span<const std::uint8_t> message, const FontFile& font_file) {
    message::LoadedMessage loaded;
    files::Description<files::MessageFile> description = files::ReadMessage(message);
    if (LoadMessage(message, loaded) != message::MessageOutcome::kRead || !description)
        throw std::runtime_error("the message in the library can't be read");
    LiveForm form;
    form.standard = loaded.flags->Standard();
    form.rows = RowsOf(loaded, description->rows.size());
    form.palette = *loaded.palette;
    Fonts fonts(*loaded.header, form.palette, font_file);
    form.fields = FieldsOf(fill::MakeForm(std::move(*description.file), fonts.Metrics()));
    AddGlyphs(form, fonts);
    form.slots = fonts.Slots();
    form.fonts = fonts.Take();
    return form;
}

}  // namespace zel::live
