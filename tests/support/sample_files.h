#pragma once

#include <string>
#include <vector>

#include "files/font_writer.h"
#include "files/message_writer.h"

namespace zel::test {

/// Good files of every section, for tests that break one thing.

/// Two rows with text and an empty one, two fonts, palette, background, and two tab fields.
inline files::MessageFile GoodMessage() {
    files::MessageFile message;
    message.psos.type_name = "MESSAGE";
    message.header.frame_left = 40;
    message.header.font_numbers[0] = 12;
    message.header.font_numbers[2] = 31;
    message.rows.push_back(files::RowFromText(60, "NEWS", 100, 20));
    message.rows.push_back(files::RowFromText(120, "at nine", 100, 16, {.colour_set = 3, .char_font = 2}));
    message.rows.push_back(files::EmptyRow(200));
    message.palette.emplace();
    message.palette->entries.assign(256, files::PaletteEntry(0x12, 0x34, 0x56));
    message.background.emplace();
    message.tabs.emplace();
    message.tabs->fields = {{.tab_start = 93, .tab_end = 193, .tab_name = "NAME", .tab_row = 1, .tab_font = 2},
                            {.tab_start = 200, .tab_end = 300, .tab_row = 2, .tab_font = 16}};
    return message;
}

/// Two run-coded glyphs, two stored ones, and every block.
inline files::FontFile GoodFont() {
    files::FontFile font;
    font.psos.type_name = "FONT";
    font.header.font_name = "Quay Bold";
    font.header.font_id_text = "5021";
    font.header.font_height = 40;
    font.header.edge_type = 2;
    font.header.edge_size = 3;
    font.header.font_flags = files::kPlainFont | files::kHasCharTables;
    font.AddRunCoded(65, {files::ColourRun(1, 255, 4), files::EndOfLine(), files::EndOfGlyph()}, 2, 9);
    font.AddRunCoded(66, {files::ColourRun(1, 255, 8), files::EndOfLine(), files::EndOfGlyph()}, 2, 9);
    font.AddStored(67, {.width = 2, .height = 3, .pixels = files::Bytes(24, 0xFF)}, 0, 2);
    font.AddStored(68, {.width = 5, .height = 4, .pixels = files::Bytes(80, 0xFF)}, 0, 5);
    font.aux_block = files::Bytes(10, 7);
    font.word_table = {1, 2, 3};
    font.sample.emplace();
    font.sample->a = {.width = 2, .height = 2, .rows = files::Bytes(4, 1)};
    return font;
}

/// All texts of a list in one, a line each.
inline std::string Lines(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += text + '\n';
    return all;
}

}  // namespace zel::test
