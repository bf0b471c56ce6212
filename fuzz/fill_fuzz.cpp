// A message whose fields are filled: what the writers make is read as it was meant.
#include <cstdlib>
#include <vector>

#include "files/font_writer.h"
#include "files/message_reader.h"
#include "fill/fill_fields.h"
#include "fuzz_target.h"

using namespace zel;

namespace {

fill::FontMetrics Font(int number) {
    files::FontFile file;
    file.header.font_height = 30;
    file.header.row_top_offset = number;
    for (unsigned code = 'a'; code <= 'c'; ++code) {
        file.AddRunCoded(code, {files::ColourRun(1, 255, 8), files::EndOfLine(), files::EndOfGlyph()}, 8,
                         code == 'a' ? 0 : 5);
    }
    return fill::MeasureFont(files::WriteFont(file), number).value();
}

fill::FontSet Fonts(const files::MessageFile& message) {
    static const fill::FontMetrics even = Font(2), odd = Font(3);
    fill::FontSet fonts;
    for (std::size_t slot = 0; slot < fonts.size(); ++slot) {
        const int number = message.header.font_numbers[slot];
        if (number == kNoFont || number % 5 == 0) continue;
        fonts[slot] = number % 2 == 0 ? even : odd;
        fonts[slot]->number = number;
    }
    return fonts;
}

/// The message fits into its file, and has the texts.
void Check(const fill::Form& form, const fill::Filled& filled, std::size_t field, const std::string& text) {
    const files::Bytes bytes = files::WriteMessage(filled.message);
    const auto again = files::ReadMessage(bytes);
    fuzz::Require(again && *again == filled.message, "the file has the message");
    for (const files::RowText& row : filled.message.rows)
        fuzz::Require(row.cells.size() <= fill::kMostCharacters, "63 characters at most");
    const std::string present = fill::PresentText(filled.message, form.fields[field], fill::Gaps::kIgnored);
    if (!filled.faults.empty()) {
        fuzz::Require(filled.message == form.message, "a fault changes nothing");
    } else if (filled.notes.empty()) {
        fuzz::Require(present == text, "the field has the text");
    } else {
        fuzz::Require(!present.empty() && text.starts_with(present), "the field has the beginning of the text");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto message = files::ReadMessage({data, size});
    if (!message || message->size) return 0;
    const fill::FontSet fonts = Fonts(*message);
    const fill::Form form = fill::MakeForm(std::move(*message.file), fonts);
    for (std::size_t field = 0; field < form.fields.size() && field < 8; ++field) {
        for (const char* text : {"", "a", "ab c cab"}) {
            for (const auto overflow : {fill::Overflow::kError, fill::Overflow::kCut, fill::Overflow::kSqueeze}) {
                const fill::FieldValue value{field, text};
                Check(form, fill::FillFields(form, {&value, 1}, overflow), field, text);
            }
        }
        fuzz::Require(fill::FindField(form, form.fields[field].address) == field, "an address names its field");
        fuzz::Require(fill::FindField(form, "f" + std::to_string(field)) == field, "a number names its field");
    }
    return 0;
}
