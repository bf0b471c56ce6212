#include "programs/cli/fill_listing.h"

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "base/terminal_text.h"
#include "base/text_columns.h"
#include "host/document/json_version.h"
#include "module/contract/records/tab_field.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"

namespace zel::cli {

namespace {

using Json = nlohmann::ordered_json;

/// The number by which the message names the field's font.
std::optional<int> FontNumber(const fill::Form& form, const fill::Field& field) {
    if (field.slot >= kFontSlots) return std::nullopt;
    const int number = form.message.header.font_numbers[field.slot];
    return number == kNoFont ? std::nullopt : std::optional(number);
}

const fill::FontMetrics* FontOf(const fill::Form& form, const fill::Field& field) {
    return field.slot < kFontSlots && form.fonts[field.slot] ? &*form.fonts[field.slot] : nullptr;
}

Json FieldJson(const fill::Form& form, std::size_t index) {
    const fill::Field& field = form.fields[index];
    const fill::FontMetrics* const font = FontOf(form, field);
    const std::optional<int> number = FontNumber(form, field);
    return {{"version", document::kJsonVersion},
            {"type", "field"},
            {"field", "f" + std::to_string(index)},
            {"name", TextOrNull(field.name)},
            {"address", field.address},
            {"row", field.row},
            {"font_number", number ? Json(*number) : Json()},
            {"font_name", font != nullptr ? Json(font->name) : Json()},
            {"font_fault", TextOrNull(fill::FontFault(form, field))},
            {"colour_set", field.colour_set},
            {"start", field.start + kXOffset},
            {"end", field.end + kXOffset},
            {"room", field.Room()},
            {"text", fill::PresentText(form, field)}};
}

std::vector<std::string> FieldLine(const fill::Form& form, std::size_t index) {
    const fill::Field& field = form.fields[index];
    const fill::FontMetrics* const font = FontOf(form, field);
    const std::optional<int> number = FontNumber(form, field);
    std::string font_text = number ? std::to_string(*number) : "-";
    font_text += font != nullptr ? " " + base::TerminalText(font->name) : number ? " (not found)" : "";
    const std::string text = fill::PresentText(form, field);
    return {"f" + std::to_string(index),
            field.name.empty() ? "-" : base::TerminalText(field.name),
            std::to_string(field.row),
            font_text,
            std::to_string(field.start + kXOffset),
            std::to_string(field.end + kXOffset),
            std::to_string(field.Room()),
            text.empty() ? "-" : '"' + base::TerminalText(text) + '"'};
}

}  // namespace

void ListFields(const fill::Form& form, bool json) {
    if (json) {
        for (std::size_t n = 0; n < form.fields.size(); ++n) PrintJson(FieldJson(form, n));
        return;
    }
    std::vector<std::vector<std::string>> lines{{"field", "name", "row", "font", "start", "end", "room", "text"}};
    for (std::size_t n = 0; n < form.fields.size(); ++n) lines.push_back(FieldLine(form, n));
    using enum base::Align;
    const base::ColumnStyle columns[] = {{kLeft}, {kLeft}, {kRight}, {kLeft}, {kRight}, {kRight}, {kRight}, {kLeft}};
    if (form.fields.empty()) return PrintLine("no fields");
    PrintLines(base::TableText(lines, columns));
}

}  // namespace zel::cli
