// Writes the initial corpus of the fuzz targets: fuzz_corpus <directory>. Finds are added beside it under other names.
#include <cstdio>
#include <filesystem>
#include <string>

#include "base/text.h"
#include "samples/font_writer.h"
#include "samples/message_writer.h"
#include "samples/name_lists.h"
#include "samples/write_file.h"

using namespace zel;

namespace {

std::filesystem::path g_corpus;

template <typename Bytes>
void Put(const char* target, const std::string& name, const Bytes& bytes) {
    samples::WriteWholeFile(g_corpus / target / name, bytes);
}

template <typename Bytes>
Bytes First(const Bytes& bytes, std::size_t count) {
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
}

samples::MessageFile Message() {
    samples::MessageFile message;
    message.header.frame_left = 40;
    for (std::uint16_t slot = 0; slot < 5; ++slot) message.header.font_numbers[slot * 3U] = slot + 1U;
    for (const unsigned slot : {0U, 3U, 6U, 9U, 12U})
        message.rows.push_back(
            samples::RowFromText(60 + slot, "ABA", 100, 20, {.colour_set = slot % 8, .char_font = slot}));
    message.rows.push_back(samples::EmptyRow(200));
    return message;
}

void PutMessage(const std::string& name, void (*change)(samples::MessageFile&)) {
    samples::MessageFile message = Message();
    change(message);
    Put("message", name, samples::WriteMessage(message));
}

void PutMessages() {
    using samples::MessageFile;
    const samples::Bytes plain = samples::WriteMessage(Message());
    Put("message", "nothing", First(plain, 0));
    Put("message", "cut_in_flags", First(plain, 140));
    Put("message", "cut_in_rows", First(plain, 300));
    PutMessage("plain", [](MessageFile&) {});
    // Some of the target's checks depend on the size of the file.
    for (const std::size_t size : {0U, 8U}) {
        samples::MessageFile message = Message();
        message.tail.resize((16 + size - plain.size() % 16) % 16);
        Put("message", "plain_of_size_" + std::to_string(size) + "_in_16", samples::WriteMessage(message));
    }
    PutMessage("font_file_type", [](MessageFile& m) { m.psos = {500, 0, ""}; });
    PutMessage("named_type", [](MessageFile& m) { m.psos = {9, 0, "PICTURE"}; });
    PutMessage("rgba_type", [](MessageFile& m) { m.psos = {717, 0, ""}; });
    PutMessage("pal_palette_and_background", [](MessageFile& m) {
        m.pal = true;
        m.palette.emplace().entries.assign(256, samples::PaletteEntry(1, 2, 3));
        m.background.emplace();
    });
    PutMessage("short_palette", [](MessageFile& m) { m.palette.emplace().entries.assign(3, 7); });
    PutMessage("palette_of_no_words", [](MessageFile& m) { m.palette.emplace(); });
    PutMessage("foreign_background", [](MessageFile& m) { m.background.emplace().tag = 0xBBBE; });
    PutMessage("flash_font", [](MessageFile& m) { m.flash_font.emplace().encoding_size = 16; });
    PutMessage("full_row_with_a_field", [](MessageFile& m) {
        m.rows[0] = samples::RowFromText(30, std::string(63, 'A'), 0, 5);
        m.tabs.emplace().fields = {{.tab_start = 700, .tab_end = 800}};
    });
    PutMessage("loop_in_a_chain", [](MessageFile& m) { m.rows[0].cells[2].next_char = 0; });
    PutMessage("code_above_the_directory", [](MessageFile& m) { m.rows[0].cells[1].char_code = 1023; });
    PutMessage("slot_16", [](MessageFile& m) { m.rows[0].cells[1].char_font = 16; });
    PutMessage("empty_slot", [](MessageFile& m) { m.rows[0].cells[1].char_font = 1; });
    PutMessage("fields", [](MessageFile& m) {
        m.tabs.emplace().fields = {{.tab_start = 90, .tab_end = 400},
                                   {.tab_start = 400, .tab_end = 500, .tab_row = 1, .tab_font = 3},
                                   {.tab_start = 10, .tab_end = 20, .tab_row = 5, .tab_font = 16},
                                   {.tab_start = 10, .tab_end = 20, .tab_row = 60},
                                   {.tab_start = 20, .tab_end = 10, .tab_name = "BACK"}};
    });
    PutMessage("field_that_fits_a_font", [](MessageFile& m) {
        m.rows[5].row_top = 3;
        m.rows[5].row_bottom = 45;
        m.tabs.emplace().fields = {{.tab_start = 10, .tab_end = 20, .tab_row = 5, .tab_font = 31}};
    });
    PutMessage("fields_of_no_font", [](MessageFile& m) {
        m.header.font_numbers = samples::MessageHeader::NoFonts();
        m.tabs.emplace().fields = {{.tab_start = 10, .tab_end = 20, .tab_row = 5}};
    });
    PutMessage("fields_of_an_empty_slot_and_of_other_limits", [](MessageFile& m) {
        m.tabs.emplace().fields = {{.tab_start = 10, .tab_end = 20, .tab_row = 5, .tab_font = 1},
                                   {.tab_start = 10, .tab_end = 20, .tab_row = 5, .tab_font = 31}};
    });
    PutMessage("201_fields", [](MessageFile& m) { m.tabs.emplace().fields.resize(201); });
    PutMessage("tab_version_1", [](MessageFile& m) { m.tabs.emplace().tab_version = 1; });
    PutMessage("tab_version_3", [](MessageFile& m) { m.tabs.emplace().tab_version = 3; });
}

samples::FontFile Font() {
    samples::FontFile font;
    font.header.font_name = "Quay Bold";
    font.header.font_id_text = "5021";
    font.header.font_height = 40;
    font.AddRunCoded(
        65,
        {samples::ColourRun(1, 255, 4), samples::Stay(2, 128), samples::BlendedRun(1, 99, 5), samples::EndOfLine(),
         samples::BackgroundRun(3), samples::ColourRun(1, 0, 1), samples::EndOfGlyph()},
        2, 9);
    font.AddRunCoded(66, {samples::ColourRun(1, 255, 8), samples::EndOfGlyph()}, 2, 9);
    font.AddStored(67, {.width = 2, .height = 3, .pixels = samples::Bytes(24, 200)}, 0, 2);
    return font;
}

void PutFont(const std::string& name, void (*change)(samples::FontFile&)) {
    samples::FontFile font = Font();
    change(font);
    Put("font", name, samples::WriteFont(font));
}

void PutFonts() {
    using samples::FontFile;
    samples::FontOffsets at;
    const samples::Bytes plain = samples::WriteFont(Font(), &at);
    Put("font", "nothing", First(plain, 0));
    Put("font", "cut_in_header", First(plain, at.header + 9));
    Put("font", "cut_in_directory", First(plain, at.directory + 99));
    Put("font", "cut_in_codes", First(plain, at.encoding + 2));
    Put("font", "cut_before_stored_glyph", First(plain, at.stored[67]));
    Put("font", "cut_in_pixels", First(plain, plain.size() - 3));
    PutFont("plain", [](FontFile&) {});
    for (const std::size_t size : {0U, 1U, 2U}) {
        samples::FontFile font = Font();
        font.tail.resize((16 + size - plain.size() % 16) % 16);
        Put("font", "plain_of_size_" + std::to_string(size) + "_in_16", samples::WriteFont(font));
    }
    PutFont("message_file_type", [](FontFile& f) { f.psos.file_type = 702; });
    PutFont("every_block", [](FontFile& f) {
        f.header.font_flags = samples::kPlainFont | samples::kHasCharTables;
        f.aux_block.assign(10, 7);
        f.word_table = {1, 2, 3};
        f.sample.emplace().a = {2, 2, samples::Bytes(4, 1)};
    });
    PutFont("sample_first", [](FontFile& f) {
        f.header.font_flags = samples::kSampleFirstFont;
        f.first_sample.emplace().b = {1, 3, samples::Bytes(3, 1)};
        f.sample.emplace().a = {2, 2, samples::Bytes(4, 1)};
    });
    PutFont("first_codes_cut", [](FontFile& f) {
        f.header.font_flags = samples::kSampleFirstFont;
        f.header.encoding_size = 60000;
    });
    PutFont("first_sample_cut", [](FontFile& f) {
        f.header.font_flags = samples::kSampleFirstFont;
        f.header.sample_present = 1;
        f.stored.clear();
    });
    PutFont("sample_too_short", [](FontFile& f) {
        f.stored.clear();
        f.sample.emplace().a = {200, 200, {}};
    });
    PutFont("sample_of_no_width", [](FontFile& f) { f.sample.emplace().a = {0, 2, {}}; });
    PutFont("sample_of_negative_size", [](FontFile& f) { f.sample.emplace().a = {-1, 2, {}}; });
    PutFont("tessor", [](FontFile& f) { f.header.font_flags = 0; });
    PutFont("negative_auxiliary_block", [](FontFile& f) { f.header.aux_block_size = -2; });
    PutFont("word_table_too_long", [](FontFile& f) { f.header.word_table_size = 32767; });
    PutFont("character_tables_missing", [](FontFile& f) {
        f.header.font_flags = samples::kPlainFont | samples::kHasCharTables;
        f.psos.type_name = "FONT";
    });
    PutFont("codes_of_4_gigabytes", [](FontFile& f) { f.header.encoding_size = ~0U; });
    PutFont("codes_behind_the_data", [](FontFile& f) { f.directory[65].glyph_offset = 1U << 30; });
    PutFont("stored_glyph_of_no_pixels", [](FontFile& f) { f.stored[67].width_word = 0; });
    PutFont("stored_glyph_of_32766_pixels", [](FontFile& f) { f.stored[67].width_word = 32767; });
    PutFont("stored_glyph_of_length_0", [](FontFile& f) { f.stored[67].length = 0; });
    PutFont("stored_glyph_longer_than_the_file", [](FontFile& f) { f.stored[67].length = 4096; });
}

void PutRunCodes() {
    using namespace samples;
    const auto put = [](const char* name, const RunCodes& codes) { Put("run_codes", name, RunCodeBytes(codes)); };
    put("two_lines", {ColourRun(1, 255, 4), EndOfLine(), BackgroundRun(32), BlendedRun(2, 40, 3), EndOfLine(), 0});
    put("stay_and_blend", {Stay(2, 128), BlendedStay(3, 60), BlendedRun(1, 99, 5), ColourRun(200, 0, 2)});
    put("501_lines", RunCodes(501, EndOfLine()));
    put("501_runs", RunCodes(501, ColourRun(1, 255, 1)));
}

void PutTexts() {
    const std::string bitstream = samples::BitstreamList()
                                      .Family("Quay", "Also")
                                      .Style("Bold", 21)
                                      .Style("Italic", 22, "Slanted")
                                      .Plain("Harbour Sans", 7)
                                      .Line("Number only\t5")
                                      .Line("\tno number")
                                      .Line("\tone tab 5")
                                      .Line("=\t7")
                                      .Written();
    Put("bitstream_list", "list", bitstream);
    Put("bitstream_list", "long_lines", bitstream + std::string(500, 'x') + "\t5\n");
    const std::string typefaces =
        samples::TypefaceList().Typeface("Arial", "Quay Bold BT").Line("no tab").Line("\t\t").Written();
    Put("typeface_list", "list", typefaces);
    Put("typeface_list", "nul_and_long_line", typefaces + std::string(1, '\0') + std::string(300, '\t') + "x");
    Put("password", "stored_form", std::string(80, 'a'));
    Put("password", "password", std::string("secret"));
    Put("password", "too_long", std::string(79, 'x'));
    Put("password", "carriage_return", std::string("a\rb"));
    Put("listing", "facts",
        std::string("type=file;size=120;modify=20010203040506; .0012\r\ntype=dir; MESSAGES\r\ntype=cdir; .\r\n"
                    "type=OS.unix=slink; LINK\r\nsize=99999999999999999999; .0013\r\nnonsense\r\n"));
    Put("listing", "unix",
        std::string("total 2\r\n-rw-r--r-- 1 a b 120 Jan  1 12:00 .0012\r\ndrwxr-xr-x 2 a b 0 Feb 29  1999 MESSAGES\n"
                    "lrwxrwxrwx 1 a b 3 Jan  1 12:00 X -> /etc\r\n-rw------- 1 120 Mar 3 2001 ../evil\r\n"));
    Put("listing", "dos",
        std::string("01-02-99  03:04PM       <DIR>          MACHINE\r\n01-02-1999  03:04AM  120 .0012\r\n"));
    Put("listing", "names", std::string(".0012\r\nMESSAGES/.0013\r\n\r\n.0012\n") + std::string(200, 'A'));
    std::string many;
    for (unsigned i = 0; i < 40; ++i) many += base::NumberedName(i) + "\n";
    Put("listing", "more_than_the_limit", many);
    for (unsigned i = 0; i < 800; ++i) many += base::NumberedName(i) + "\n";
    Put("listing", "longer_than_the_limit", many);
}

void PutPictures() {
    const samples::StoredGlyph picture{.width = 3, .height = 2, .pixels = samples::Bytes(24, 200)};
    const samples::Bytes bytes = samples::WriteRgbaFile(714, picture);
    Put("rgba", "picture", bytes);
    Put("rgba", "opaque", samples::WriteRgbaFile(717, {.width = 4, .height = 9, .pixels = samples::Bytes(144, 255)}));
    Put("rgba", "no_record", First(bytes, 130));
    Put("rgba", "cut_in_head", First(bytes, 140));
    Put("rgba", "cut_in_pixels", First(bytes, 160));
    Put("rgba", "other_type", samples::WriteRgbaFile(702, picture));
    samples::StoredGlyph odd = picture;
    odd.height_word = 0;
    Put("rgba", "no_lines", samples::WriteRgbaFile(717, odd));
    odd.height_word = 900;
    Put("rgba", "record_too_small", samples::WriteRgbaFile(717, odd));
    Put("rgba", "too_wide",
        samples::WriteRgbaFile(717, {.width = 4097, .height = 1, .pixels = samples::Bytes(4097 * 4, 0)}));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: fuzz_corpus DIRECTORY\n", stderr);
        return 2;
    }
    g_corpus = argv[1];
    PutMessages();
    PutFonts();
    PutRunCodes();
    PutTexts();
    PutPictures();
}
