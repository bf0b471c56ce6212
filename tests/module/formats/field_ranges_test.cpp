#include <functional>
#include <map>
#include <stdexcept>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <yaml-cpp/yaml.h>

#include "files/font_writer.h"
#include "files/message_writer.h"

/// Holds the descriptions in docs/formats against the bytes that the writers make: a record of zeros and one with a
/// single field filled differ in exactly the bits that the description gives the field. Bits without a meaning are what
/// is left of the record's size.
namespace zel::formats_test {
namespace {

using namespace files;

/// A field of a record, counted from the record's top bit.
struct FieldRange {
    std::string name;
    std::size_t first_bit = 0;
    std::size_t bits = 0;
};

struct RecordLayout {
    std::vector<FieldRange> fields;
    std::size_t bits = 0;
};

// Types b1 to b64 are bits; u1 to u8, s1 to s8 and whatever has a size of its own are whole bytes.
struct Width {
    std::size_t bits = 0;
    bool whole_bytes = true;
};

Width WidthOf(const YAML::Node& field) {
    const auto count = field["repeat"] ? field["repeat-expr"].as<std::size_t>() : 1;
    if (const auto size = field["size"]) return {8 * count * size.as<std::size_t>()};
    const auto type = field["type"].as<std::string>();
    const auto number = std::stoul(type.substr(1));
    if (type[0] == 'b') return {count * number, false};
    if (type[0] == 'u' || type[0] == 's') return {8 * count * number};
    throw std::runtime_error("type " + type + " has no fixed size");
}

/// Layout of a type of a description, from its `seq`. Throws for a type that has no fixed size.
RecordLayout LayoutOf(const std::string& path, const std::string& type) {
    const auto seq = YAML::LoadFile(path)["types"][type]["seq"];
    RecordLayout layout;
    for (const auto& field : seq) {
        const auto name = field["id"].as<std::string>();
        const Width width = WidthOf(field);
        if (width.whole_bytes && layout.bits % 8 != 0) throw std::runtime_error(name + " begins within a byte");
        layout.fields.push_back({name, layout.bits, width.bits});
        layout.bits += width.bits;
    }
    return layout;
}

// All bits of a field; the writers cut it to the field's width.
constexpr unsigned kOnes = 0xFFFFFFFF;
const std::string kFullText(200, '\xFF');

Bytes AsBytes(const auto& bytes) {
    return Bytes(bytes.begin(), bytes.end());
}

Bytes Section(const Bytes& file, std::size_t from, std::size_t to) {
    return Bytes(file.begin() + static_cast<std::ptrdiff_t>(from), file.begin() + static_cast<std::ptrdiff_t>(to));
}

Bytes PsosHeaderBytes(const PsosHeader& header) {
    ByteWriter out;
    WritePsosHeader(header, out);
    return out.Written();
}

// The flags and the header of a message.
Bytes MessageHeadBytes(const MessageFile& message) {
    MessageOffsets at;
    const Bytes file = WriteMessage(message, &at);
    return Section(file, at.flags, at.rows);
}

Bytes SampleBytes(const FontFile& font) {
    FontOffsets at;
    const Bytes file = WriteFont(font, &at);
    return Section(file, at.sample, at.tail);
}

// Bits in which two records differ, from the top bit of the first byte on.
std::vector<std::size_t> Changed(const Bytes& one, const Bytes& other) {
    std::vector<std::size_t> bits;
    for (std::size_t bit = 0; bit < 8 * one.size(); ++bit) {
        if (((one[bit / 8] ^ other.at(bit / 8)) >> (7 - bit % 8) & 1) != 0) bits.push_back(bit);
    }
    return bits;
}

std::vector<std::size_t> BitsOf(const FieldRange& field) {
    std::vector<std::size_t> bits;
    for (std::size_t n = 0; n < field.bits; ++n) bits.push_back(field.first_bit + n);
    return bits;
}

struct RecordCase {
    std::string type;
    const char* file;
    std::size_t offset;  ///< Of the record in what the writer gave, bytes.
    std::size_t size;    ///< Of the record, bytes.
    Bytes zeros;
    std::map<std::string, Bytes> filled;  ///< The bytes with one field filled, by the field's name.
};
void PrintTo(const RecordCase& record, std::ostream* out) {
    *out << record.type;
}

// Writes `zeros`, and for each field a copy that `fields` has filled.
template <typename Record, typename Writer>
RecordCase Case(const char* file, const char* type, std::size_t offset, std::size_t size, const Record& zeros,
                Writer write, const std::map<std::string, std::function<void(std::type_identity_t<Record>&)>>& fields) {
    RecordCase record{type, file, offset, size, AsBytes(write(zeros)), {}};
    for (const auto& [name, fill] : fields) {
        Record filled = zeros;
        fill(filled);
        record.filled[name] = AsBytes(write(filled));
    }
    return record;
}

// A field of the description, and what fills it in the record `r` of the writer.
#define FILL(name, ...)                    \
    {                                      \
        name, [](auto& r) { __VA_ARGS__; } \
    }

std::vector<RecordCase> Records() {
    constexpr auto kMessage = "zelmara_message.ksy", kFont = "zelmara_font.ksy";
    MessageFile message;
    message.section_flags = 0;
    message.header.last_row = 0;
    message.header.font_numbers = {};
    FontFile font;
    font.header.font_flags = 0;
    font.header.sample_present = 0;
    font.sample.emplace();
    return {
        Case(kFont, "psos_header", 0, 136, PsosHeader{}, &PsosHeaderBytes,
             {FILL("file_type", r.file_type = kOnes), FILL("type_name", r.type_name = kFullText)}),
        Case(kMessage, "msg_flags", 0, 16, message, &MessageHeadBytes,
             {FILL("is_pal", r.section_flags = 0x8000), FILL("has_flash_font", r.section_flags = 0x0100),
              FILL("has_tab_table", r.section_flags = 0x0020), FILL("has_background", r.section_flags = 0x0002),
              FILL("has_palette", r.section_flags = 0x0001)}),
        Case(kMessage, "msg_header", 16, 52, message, &MessageHeadBytes,
             {FILL("last_row", r.header.last_row = kOnes), FILL("frame_left", r.header.frame_left = kOnes),
              FILL("frame_top", r.header.frame_top = kOnes), FILL("frame_right", r.header.frame_right = kOnes),
              FILL("frame_bottom", r.header.frame_bottom = kOnes),
              FILL("font_numbers", r.header.font_numbers.fill(0xFFFF))}),
        Case(kMessage, "row_head", 0, 8, RowText{}, &WriteRowHead,
             {FILL("row_empty", r.row_empty = true), FILL("row_y", r.row_y = kOnes),
              FILL("first_char", r.first_char = kOnes), FILL("row_top", r.row_top = kOnes),
              FILL("char_count", r.char_count = kOnes), FILL("row_bottom", r.row_bottom = kOnes)}),
        Case(kMessage, "character", 0, 8, CharCell{.next_char = 0}, &WriteCharCell,
             {FILL("place_flag", r.place_flag = true), FILL("chain_end", r.chain_end = true),
              FILL("char_x", r.char_x = kOnes), FILL("colour_set", r.colour_set = kOnes),
              FILL("char_y", r.char_y = kOnes), FILL("char_font", r.char_font = kOnes),
              FILL("char_code", r.char_code = kOnes), FILL("next_char", r.next_char = kOnes)}),
        Case(kMessage, "tab_record", 0, 26, TabField{.tab_name = ""}, &WriteTabField,
             {FILL("tab_start", r.tab_start = kOnes), FILL("tab_end", r.tab_end = kOnes),
              FILL("tab_byte", r.tab_byte = kOnes), FILL("tab_name", r.tab_name = kFullText),
              FILL("tab_row", r.tab_row = kOnes), FILL("tab_a", r.tab_a = kOnes), FILL("tab_font", r.tab_font = kOnes),
              FILL("tab_colour", r.tab_colour = kOnes)}),
        Case(
            kFont, "font_header", 0, 128, font, &WriteFontHeader,
            {FILL("font_name", r.header.font_name = kFullText), FILL("font_id_text", r.header.font_id_text = kFullText),
             FILL("font_height", r.header.font_height = -1), FILL("row_top_offset", r.header.row_top_offset = -1),
             FILL("edge_type", r.header.edge_type = kOnes), FILL("edge_direction", r.header.edge_direction = kOnes),
             FILL("edge_size", r.header.edge_size = kOnes), FILL("encoding_size", r.header.encoding_size = kOnes),
             FILL("aux_block_size", r.header.aux_block_size = -1), FILL("font_flags", r.header.font_flags = kOnes),
             FILL("row_inset", r.header.row_inset = -1), FILL("word_table_size", r.header.word_table_size = kOnes),
             FILL("sample_present", r.header.sample_present = kOnes)}),
        Case(kFont, "char_entry", 0, 10, CharEntry{}, &WriteCharEntry,
             {FILL("glyph_kind", r.glyph_kind = kOnes), FILL("glyph_bits_a", r.glyph_bits_a = kOnes),
              FILL("glyph_bits_b", r.glyph_bits_b = kOnes), FILL("glyph_top", r.glyph_top = kOnes),
              FILL("glyph_metric", r.glyph_metric = kOnes), FILL("glyph_offset", r.glyph_offset = kOnes)}),
        Case(kFont, "sample_head", 0, 10, font, &SampleBytes,
             {FILL("samp_first_word", r.sample->first_word = kOnes), FILL("width_a", r.sample->a.width = -1),
              FILL("height_a", r.sample->a.height = -1), FILL("width_b", r.sample->b.width = -1),
              FILL("height_b", r.sample->b.height = -1)}),
        Case(kFont, "stored_glyph_head", 0, 12, StoredGlyph{.length = 0, .width_word = 0}, &WriteStoredGlyph,
             {FILL("length", r.length = kOnes), FILL("flag", r.flags_word = 0x8000),
              FILL("width_plus_1", r.width_word = kOnes), FILL("height", r.height_word = kOnes)}),
    };
}

class DescribedRecord : public testing::TestWithParam<RecordCase> {};

TEST_P(DescribedRecord, HasEachFieldWhereItIsWritten) {
    const RecordCase& record = GetParam();
    const RecordLayout layout = LayoutOf(std::string(FORMATS_DIR "/") + record.file, record.type);
    EXPECT_EQ(layout.bits, 8 * record.size);
    EXPECT_GE(record.zeros.size(), record.offset + record.size);
    auto filled = record.filled;
    for (FieldRange field : layout.fields) {
        const auto written = filled.find(field.name);
        if (written == filled.end()) {
            EXPECT_TRUE(field.name.starts_with("unread_") || field.name.starts_with("carried_")) << field.name;
            continue;
        }
        field.first_bit += 8 * record.offset;
        EXPECT_EQ(written->second.size(), record.zeros.size()) << field.name << " is cut to its width";
        EXPECT_EQ(Changed(record.zeros, written->second), BitsOf(field)) << field.name;
        filled.erase(written);
    }
    for (const auto& field : filled) ADD_FAILURE() << field.first << " is written, but not described";
}

INSTANTIATE_TEST_SUITE_P(Each, DescribedRecord, testing::ValuesIn(Records()),
                         [](const auto& each) { return each.param.type; });

}  // namespace
}  // namespace zel::formats_test
