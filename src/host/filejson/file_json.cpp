#include "host/filejson/file_json.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "base/regular_file.h"
#include "base/sha256.h"
#include "base/text.h"
#include "files/font_reader.h"
#include "files/message_reader.h"
#include "host/document/json_line.h"
#include "host/document/json_version.h"
#include "host/filejson/byte_values.h"
#include "host/filejson/document_parser.h"
#include "host/filejson/font_keys.h"
#include "host/filejson/message_keys.h"

namespace zel::filejson {

namespace {

constexpr std::string_view kMessage = "message", kFont = "font";

/// Sets an optional field that has the computed value back to none, as the readers of files leave it.
template <class T, class Computed>
void DropComputed(std::optional<T>& field, Computed computed) {
    if (field && *field == static_cast<T>(computed)) field.reset();
}

void Normalize(files::FlashFont& flash) {
    if (flash.content.empty()) {
        DropComputed(flash.data_size, std::size_t{flash.encoding_size} + flash.word_table_size);
        return;
    }
    flash.data_size.reset();
    flash.fill = files::FlashFont{}.fill;
    if (!AreEqual(flash.content)) return;
    flash.fill = flash.content.front();
    const std::size_t fixed = files::FlashFont::kFixedContent;
    const std::size_t size = flash.content.size() - std::min(fixed, flash.content.size());
    if (size != std::size_t{flash.encoding_size} + flash.word_table_size) flash.data_size = size;
    flash.content.clear();
}

void Normalize(files::BackgroundBlock& background) {
    std::vector<std::uint16_t>& words = background.content;
    if (!words.empty() && std::ranges::adjacent_find(words, std::ranges::not_equal_to{}) == words.end()) {
        background.value = words.front();
        background.words = words.size();
        words.clear();
    }
    if (!words.empty()) {
        background.words.reset();
        background.value = 0;
    }
    DropComputed(background.words, files::BackgroundWords(background.tag));
    if (background.words == std::size_t{0}) background.value = 0;
}

void Normalize(files::MessageFile& message) {
    if (message.flash_font) Normalize(*message.flash_font);
    if (message.background) Normalize(*message.background);
    if (!message.rows.empty()) DropComputed(message.header.last_row, message.rows.size() - 1);
    if (auto& palette = message.palette) {
        DropComputed(palette->palette_words, 2 * palette->entries.size() + (palette->half_entry ? 1 : 0));
    }
    if (auto& tabs = message.tabs) DropComputed(tabs->tab_words, 13 * tabs->fields.size());
    DropComputed(message.section_flags, files::ComputedSectionFlags(message));
}

void Normalize(files::FontFile& font) {
    files::FontHeader& header = font.header;
    DropComputed(header.encoding_size, font.encoding.size());
    DropComputed(header.aux_block_size, font.aux_block.size());
    DropComputed(header.word_table_size, files::ComputedWordTableSize(font));
    DropComputed(header.sample_present, files::ComputedSamplePresent(font));
    if ((header.font_flags & files::kHasCharTables) != 0) {
        for (files::Bytes* table : {&font.char_table_a, &font.char_table_b}) {
            if (table->size() < files::kCharTableSize) table->resize(files::kCharTableSize);
        }
    }
    for (auto& [code, glyph] : font.stored) {
        DropComputed(glyph.width_word, glyph.width + 1);
        DropComputed(glyph.height_word, glyph.height);
        DropComputed(glyph.length, files::StoredHeadFields::kSize + glyph.pixels.size());
    }
}

/// The key of the first part that an import would read otherwise; null if all are read as they are.
const char* OtherPart(const files::MessageFile& one, const files::MessageFile& other) {
    if (one.flash_font != other.flash_font) return "flash_font";
    if (one.header != other.header) return "last_row";
    if (one.rows != other.rows) return "rows";
    if (one.palette != other.palette) return "palette";
    if (one.background != other.background) return "background";
    if (one.tabs != other.tabs) return "tab_table";
    if (one.pal != other.pal) return "standard";
    if (one.tail != other.tail) return "tail";
    if (one.size != other.size) return "cut_at";
    return one != other ? "section_flags" : nullptr;
}

const char* OtherPart(const files::FontFile& one, const files::FontFile& other) {
    if (one.header != other.header) return "header";
    if (one.encoding != other.encoding) return "encoding";
    if (one.first_sample != other.first_sample) return "first_sample";
    if (one.aux_block != other.aux_block) return "aux_block";
    if (one.word_table != other.word_table || one.word_table_odd_byte != other.word_table_odd_byte) return "word_table";
    if (one.char_table_a != other.char_table_a) return "char_table_a";
    if (one.char_table_b != other.char_table_b) return "char_table_b";
    if (one.sample != other.sample) return "sample";
    if (one.stored != other.stored) return "stored";
    if (one.tail != other.tail) return "tail";
    if (one.size != other.size) return "cut_at";
    return one != other ? "directory" : nullptr;
}

/// Checks that the written file is read as the document describes it.
template <class File>
void CheckRead(const files::Description<File>& read, const File& written, KeyReader& io) {
    if (!read) {
        io.AddFault("cut_at", "leaves less than the headers of the file");
    } else if (const char* part = OtherPart(written, *read)) {
        io.AddFault(part, "would be read otherwise; a count, a size, a flag or cut_at doesn't fit what is there");
    }
}

FileKey JsonOfMessage(const files::MessageFile& message, document::JsonLine& json, bool exact) {
    constexpr std::size_t kAround = 8192, kCharacter = 96;  // bytes; enough for almost every message
    std::size_t characters = 0;
    for (const files::RowText& row : message.rows) characters += row.cells.size();
    json.Reserve(kAround + characters * kCharacter);
    KeyWriter io(json, exact);
    MessageKeys(io, message);
    return {json.Close('}').Take(), io.LeftOut()};
}

FontRecords RecordsOf(files::FontFile font) {
    FontRecords records;
    GlyphLayout layout = LayoutOf(font);
    for (unsigned code = 0; code < files::kFontCharCount; ++code) {
        if (font.directory[code] != files::CharEntry{}) {
            records.directory.push_back({code, font.directory[code], layout.places[code]});
        }
    }
    records.encoding = std::move(layout.parts);
    for (auto& [code, glyph] : font.stored) records.stored.push_back({code, std::move(glyph)});
    records.font = std::move(font);
    return records;
}

FileKey JsonOfFont(files::FontFile font, document::JsonLine& json, bool exact) {
    const FontRecords records = RecordsOf(std::move(font));
    KeyWriter io(json, exact);
    FontKeys(io, records);
    return {json.Close('}').Take(), io.LeftOut()};
}

/// Puts the records of a document into its font.
class FontBuilder {
  public:
    FontBuilder(FontRecords records, KeyReader& io) : m_records(std::move(records)), m_io(io) {}

    files::FontFile Build() {
        TakeDirectory();
        TakeEncoding();
        CheckPlaces();
        TakeStored();
        return std::move(m_records.font);
    }

  private:
    void Fault(const char* list, std::size_t index, const char* key, std::string rule) {
        const Place at(m_io.Where(), list);
        const Place record(at, index);
        m_io.State().faults.Add(Place(record, key).Pointer(), std::move(rule));
    }

    void TakeDirectory() {
        for (std::size_t n = 0; n < m_records.directory.size(); ++n) {
            const DirectoryRecord& record = m_records.directory[n];
            if (record.code == kNoCode) continue;
            if (m_index[record.code]) Fault("directory", n, "code", std::to_string(record.code) + " is there twice");
            m_index[record.code] = n;
            m_records.font.directory[record.code] = record.entry;
            m_layout.places[record.code] = record.place;
        }
    }

    void TakeEncoding() {
        const bool is_written = files::HasEncodingPlace(m_records.font.header.font_flags);
        if (!m_records.encoding.empty() && !is_written) {
            m_io.AddFault("encoding", "the file has none with these header flags");
        }
        for (std::size_t n = 0; n < m_records.encoding.size(); ++n) {
            const auto code = m_records.encoding[n].code;
            if (!code || *code == kNoCode) continue;
            const std::string text = std::to_string(*code);
            if (m_has_part[*code]) Fault("encoding", n, "code", text + " is there twice");
            m_has_part[*code] = true;
            if (!IsRunCoded(m_records.font.directory[*code])) {
                Fault("encoding", n, "code", "the directory has no run-coded entry " + text);
            } else if (m_layout.places[*code].same_as || m_layout.places[*code].offset) {
                Fault("encoding", n, "code", "entry " + text + " of the directory has another glyph");
            }
        }
        m_layout.parts = std::move(m_records.encoding);
        ApplyLayout(m_layout, m_records.font);
    }

    void CheckPlaces() {
        for (unsigned code = 0; code < files::kFontCharCount; ++code) {
            if (!m_index[code]) continue;
            const GlyphPlace& place = m_layout.places[code];
            const bool is_run_coded = IsRunCoded(m_records.font.directory[code]);
            if (place.same_as && (!is_run_coded || !m_has_part[*place.same_as])) {
                Fault("directory", *m_index[code], "same_glyph_as",
                      is_run_coded ? "the encoding has no glyph " + std::to_string(*place.same_as)
                                   : "the entry is not run-coded");
            } else if (place.same_as && place.offset) {
                Fault("directory", *m_index[code], "offset", "can't be there with same_glyph_as");
            } else if (is_run_coded && !place.same_as && !place.offset && !m_has_part[code]) {
                Fault("directory", *m_index[code], "offset",
                      "is missing: the encoding has no glyph " + std::to_string(code));
            }
        }
    }

    void TakeStored() {
        for (std::size_t n = 0; n < m_records.stored.size(); ++n) {
            StoredRecord& record = m_records.stored[n];
            if (record.code == kNoCode) continue;
            const std::string text = std::to_string(record.code);
            if (m_records.font.directory[record.code].glyph_kind != files::CharEntry::kStored) {
                Fault("stored", n, "code", "the directory has no entry " + text + " of kind 170");
            }
            const bool is_new = m_records.font.stored.try_emplace(record.code, std::move(record.glyph)).second;
            if (!is_new) Fault("stored", n, "code", text + " is there twice");
        }
    }

    FontRecords m_records;
    KeyReader& m_io;
    GlyphLayout m_layout;
    /// Of the directory's records, by code.
    std::array<std::optional<std::size_t>, files::kFontCharCount> m_index{};
    std::array<bool, files::kFontCharCount> m_has_part{};
};

/// Reads the keys of a message or a font; keys that both have are known already.
class FileReader {
  public:
    FileReader(KeyReader& io, DocumentFile& result) : m_io(io), m_result(result) {}

    void ReadMessage(std::vector<files::RowText> rows) {
        files::MessageFile message;
        message.rows = std::move(rows);
        MessageKeys(m_io, message);
        m_io.Finish();
        if (message.rows.empty() && !message.header.last_row) m_io.AddFault("rows", "a message has at least one row");
        CheckFlashSize(message);
        if (!m_io.State().faults.IsEmpty()) return;
        Normalize(message);
        m_result.bytes = files::WriteMessage(message);
        CheckRead(files::ReadMessage(m_result.bytes), message, m_io);
    }

    void ReadFont() {
        FontRecords records;
        FontKeys(m_io, records);
        m_io.Finish();
        files::FontFile font = FontBuilder(std::move(records), m_io).Build();
        if (!m_io.State().faults.IsEmpty()) return;
        Normalize(font);
        m_result.bytes = files::WriteFont(font);
        CheckRead(files::ReadFont(m_result.bytes), font, m_io);
    }

  private:
    void CheckFlashSize(const files::MessageFile& message) {
        if (!message.flash_font || !message.flash_font->content.empty()) return;
        const files::FlashFont& flash = *message.flash_font;
        const std::uint64_t size = flash.data_size.value_or(std::uint64_t{flash.encoding_size} + flash.word_table_size);
        if (size > m_io.State().bytes_left) {
            m_io.AddFault("flash_font", "the file would be larger than " + std::to_string(kLargestFile >> 20) + " MiB");
        }
    }

    KeyReader& m_io;
    DocumentFile& m_result;
};

bool IsSha256(const std::string& text) {
    return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

}  // namespace

std::optional<FileKey> FileJson(std::span<const std::uint8_t> bytes, bool exact) {
    const auto begin = [&](std::string_view type) {
        document::JsonLine json;
        json.Open('{').Bytes("type", type);
        json.Bytes("sha256", base::Sha256({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
        return json;
    };
    if (const auto message = files::ReadMessage(bytes)) {
        document::JsonLine json = begin(kMessage);
        return JsonOfMessage(*message, json, exact);
    }
    if (auto font = files::ReadFont(bytes)) {
        document::JsonLine json = begin(kFont);
        return JsonOfFont(std::move(*font.file), json, exact);
    }
    return std::nullopt;
}

FileKey FileJsonOf(const std::filesystem::path& file, bool exact) {
    const std::vector<std::uint8_t> bytes = base::ReadFileBytes(file, kLargestFile + 1);
    if (bytes.size() > kLargestFile) {
        throw std::runtime_error("it is larger than " + std::to_string(kLargestFile >> 20) + " MiB");
    }
    auto key = FileJson(bytes, exact);
    if (!key) throw std::runtime_error("it is no message and no font");
    return std::move(*key);
}

std::string LeftOutNote(std::uint64_t left_out) {
    if (left_out == 0) return {};
    return "leaves out " + base::Counted(left_out, "byte") + " that nothing reads; --exact keeps them";
}

std::string WithFile(std::string document, std::string_view file_json) {
    document.pop_back();
    document.append(",\"file\":").append(file_json).append("}");
    return document;
}

std::string FontDocument(std::string_view source, std::string_view file_json) {
    document::JsonLine json;
    constexpr auto kReplaceBadUtf8 = Json::error_handler_t::replace;
    json.Open('{').Number("version", document::kJsonVersion).Key("source");
    json.Written(Json(source).dump(-1, ' ', false, kReplaceBadUtf8)).Bytes("kind", kFont).Close('}');
    return WithFile(json.Take(), file_json);
}

DocumentFile FileOfDocument(std::string_view document) {
    if (document.size() > kLargestDocument) {
        throw std::runtime_error("is larger than " + std::to_string(kLargestDocument >> 20) + " MiB");
    }
    ReadingState state{.bytes_left = kLargestFile};
    Faults rows_faults, text_faults;
    std::vector<files::RowText> rows;
    const Place root, file_place(root, "file"), rows_place(file_place, "rows");
    ReadingState rows_state{.bytes_left = kLargestFile};
    const ParsedDocument parsed = ParseFileDocument(document, text_faults, [&](std::size_t index, const Json& json) {
        if (rows.size() > kMostRows) return;
        const Place place(rows_place, index);
        KeyReader io(json, place, rows_state);
        ReadRow(io, rows.emplace_back());
        io.Finish();
    });

    DocumentFile result;
    if (!parsed.has_version) {
        state.faults.Add("/version", "is missing");
    } else if (parsed.version != document::kJsonVersion) {
        state.faults.Add("/version", "must be " + std::to_string(document::kJsonVersion));
    }
    if (!parsed.has_file) {
        state.faults.Add("/file",
                         "is missing: the document is of an earlier release, of a library or of a picture; "
                         "make it with import --json or font --json");
    } else {
        KeyReader io(parsed.file, file_place, state);
        result.type = io.FindText("type").value_or("");
        result.sha256 = io.FindText("sha256");
        if (result.sha256 && !IsSha256(*result.sha256)) io.AddFault("sha256", "must be 64 hexadecimal digits");
        FileReader reader(io, result);
        if (result.type == kMessage) {
            state.faults.Append(rows_state.faults);
            reader.ReadMessage(std::move(rows));
        } else if (result.type == kFont) {
            reader.ReadFont();
        } else if (io.HasObject()) {
            io.AddFault("type", "must be message or font");
        }
    }
    result.faults.Append(text_faults);
    result.faults.Append(state.faults);
    if (!result.faults.IsEmpty()) result.bytes.clear();
    return result;
}

}  // namespace zel::filejson
