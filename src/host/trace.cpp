#include "host/trace.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <span>
#include <string_view>
#include <variant>

#include "base/field_text.h"
#include "host/glyph_bitmaps.h"
#include "module/contract/records/effpar.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_ftp.h"

namespace zel::host {

namespace {

std::string_view View(const CString& text) noexcept {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

const char* Name(Target target) noexcept {
    switch (target) {
        case Target::kHost:
            return "host";
        case Target::kExport:
            return "export";
        case Target::kMain:
            return "main";
    }
    return "";
}

const char* Name(RunKind kind) noexcept {
    switch (kind) {
        case RunKind::kImport:
            return "import";
        case RunKind::kBatch:
            return "batch";
        case RunKind::kExport:
            return "export";
        case RunKind::kFont:
            return "font";
    }
    return "";
}

void AddLogFont(document::JsonLine& line, const LOGFONT* font) {
    line.Key("log_font");
    if (font == nullptr) {
        line.Null();
        return;
    }
    line.Open('{')
        .Number("lfHeight", font->lfHeight)
        .Number("lfWeight", font->lfWeight)
        .Number("lfItalic", font->lfItalic)
        .Number("lfPitchAndFamily", font->lfPitchAndFamily)
        .Bytes("lfFaceName", base::FieldText(font->lfFaceName))
        .Close('}');
}

void AddEffect(document::JsonLine& line, const EFFPAR* effect) {
    line.Key("effect");
    if (effect == nullptr) {
        line.Null();
        return;
    }
    line.Open('{').Number("face_colour", COLORREF{effect->face_colour});
    line.Key("effect_ratio").Float(effect->effect_ratio);
    line.Number("effect_const", std::int32_t{effect->effect_const})
        .Number("edge_size", std::int32_t{effect->edge_size})
        .Number("edge_angle", std::int32_t{effect->edge_angle})
        .Number("edge_type", std::int32_t{effect->edge_type})
        .Number("edge_colour", COLORREF{effect->edge_colour})
        .Number("edge_on", std::int32_t{effect->edge_on})
        .Close('}');
}

void AddFont(document::JsonLine& line, const tag_font_memory& slot) {
    const tag_font_header& header = *slot.font_header;
    line.Open('{')
        .Bytes("file_name", base::FieldText(slot.file_name))
        .Bytes("font_name", header.Name())
        .Bytes("font_id_text", header.IdText())
        .Number("font_height", std::int16_t{header.font_height})
        .Number("row_top_offset", std::int16_t{header.row_top_offset})
        .Number("row_inset", std::int16_t{header.row_inset})
        .Number("font_flags", std::uint16_t{header.font_flags})
        .Number("edge_type", header.EdgeType())
        .Number("edge_direction", header.EdgeDirection())
        .Number("edge_size", header.edge_size)
        .Number("encoding_size", std::uint32_t{header.encoding_size});
    AddLogFont(line, slot.log_font);
    AddEffect(line, slot.effect_params);
    line.Close('}');
}

void AddFonts(document::JsonLine& line, const CZelFont& fonts) {
    line.Key("fonts").Open('[');
    for (const tag_font_memory& slot : fonts.m_Slots) {
        if (slot.font_header == nullptr) {
            line.Null();
        } else {
            AddFont(line, slot);
        }
    }
    line.Close(']');
}

void AddPalette(document::JsonLine& line, const CZelFont& fonts) {
    line.Key("palette").Open('[');
    for (std::size_t entry = 1; entry < std::size(fonts.m_Palette); ++entry) line.Number(fonts.m_Palette[entry]);
    line.Close(']');
}

void AddHeader(document::JsonLine& line, const CZelMessage& message) {
    const tag_msg_header& header = *message.m_pMsgHeader;
    line.Number("rows", header.RowCount())
        .Number("frame_left", header.frame_left)
        .Number("frame_top", header.frame_top)
        .Number("frame_right", header.frame_right)
        .Number("frame_bottom", header.frame_bottom);
    line.Key("font_numbers").Open('[');
    for (const std::uint16_t number : header.font_numbers) line.Number(number);
    line.Close(']');
}

void AddTabs(document::JsonLine& line, std::span<const tag_tab_field> tabs) {
    line.Key("tabs").Open('[');
    for (const tag_tab_field& tab : tabs) {
        line.Open('{')
            .Number("tab_start", std::uint16_t{tab.tab_start})
            .Number("tab_end", std::uint16_t{tab.tab_end})
            .Number("tab_top", std::uint16_t{tab.tab_top})
            .Number("tab_bottom", std::uint16_t{tab.tab_bottom})
            .Number("tab_byte", tab.tab_byte)
            .Bytes("tab_name", base::FieldText(tab.tab_name))
            .Number("tab_bits", std::uint32_t{tab.tab_bits})
            .Close('}');
    }
    line.Close(']');
}

// The keys of each event after those that every message has.

void AddKeys(document::JsonLine& line, const FontsReady& sent) {
    AddFonts(line, sent.fonts);
    AddPalette(line, sent.fonts);
}

void AddKeys(document::JsonLine& line, const RowsDone& sent) {
    AddHeader(line, sent.message);
}

void AddKeys(document::JsonLine& line, const TabsReady& sent) {
    AddTabs(line, sent.tabs);
}

void AddKeys(document::JsonLine& line, const MessageDone& sent) {
    AddHeader(line, sent.message);
}

void AddKeys(document::JsonLine& line, const ImportDone& sent) {
    line.Bytes("id", View(sent.dialog.m_sMessageID));
}

void AddKeys(document::JsonLine& line, const RecordMessage& sent) {
    line.Number("id", sent.number);
}

void AddKeys(document::JsonLine& line, const HasMessage& sent) {
    line.Number("id", sent.number);
}

void AddExportKeys(document::JsonLine& line, int number, const CString& path) {
    line.Number("id", number).Bytes("path", View(path));
}

void AddKeys(document::JsonLine& line, const ExportFlagged& sent) {
    AddExportKeys(line, sent.number, sent.path);
}

void AddKeys(document::JsonLine& line, const ExportPlain& sent) {
    AddExportKeys(line, sent.number, sent.path);
}

void AddKeys(document::JsonLine& line, const ExportFinish& sent) {
    AddExportKeys(line, sent.number, sent.path);
}

void AddKeys(document::JsonLine& line, const NuvoFetch& sent) {
    line.Number("state", sent.state);
}

void AddKeys(document::JsonLine& line, const NuvoSet& sent) {
    line.Number("state", sent.state);
}

void AddKeys(document::JsonLine& line, const FtpRequest& sent) {
    line.Number("execute", sent.dialog.m_bExecute ? 1 : 0);
}

void AddKeys(document::JsonLine& /*line*/, const DialogReady& /*sent*/) {}
void AddKeys(document::JsonLine& /*line*/, const RgbaChosen& /*sent*/) {}
void AddKeys(document::JsonLine& /*line*/, const Paint& /*sent*/) {}

void AddCharInf(document::JsonLine& line, const SentCharacter& sent) {
    const tag_CharInf& info = sent.info;
    AddLogFont(line, info.log_font);
    line.Number("x", info.x)
        .Number("y", info.y)
        .Number("place_flag", info.place_flag)
        .Number("row_start", info.row_start)
        .Number("row_index", info.row_index)
        .Number("message_start", info.message_start)
        .Number("left_margin", info.left_margin)
        .Number("base_shift", info.base_shift)
        .Number("reserved_zero", info.reserved_zero)
        .Number("row_top", info.row_top)
        .Number("row_depth", info.row_depth)
        .Number("face_colour", info.face_colour);
    line.Key("effect_ratio").Float(info.effect_ratio);
    line.Number("edge_type", info.edge_type)
        .Number("edge_angle", info.edge_angle)
        .Number("edge_size", info.edge_size)
        .Number("edge_colour", info.edge_colour);
    line.Key("font_copy");
    sent.font_slot ? line.Number(*sent.font_slot) : line.Null();
    line.Number("slot", info.slot)
        .Number("char_code", info.char_code)
        .Number("colour_set", info.colour_set)
        .Number("glyph_metric", info.glyph_metric)
        .Number("glyph_height", info.glyph_height)
        .Number("glyph_y", info.glyph_y)
        .Number("glyph_step", info.glyph_step)
        .Number("mf_flag", info.mf_flag ? 1 : 0);
}

void AddPixels(document::JsonLine& line, const SentCharacter& sent) {
    const CRect rect = sent.glyphs.Get(sent.info, sent.character).rect;
    line.Key("pixels")
        .Open('{')
        .Number("left", rect.left)
        .Number("top", rect.top)
        .Number("right", rect.right)
        .Number("bottom", rect.bottom);
    if (const auto crc32 = sent.glyphs.Checksum(sent.info, sent.character)) line.Number("crc32", *crc32);
    line.Close('}');
}

}  // namespace

TraceWriter::TraceWriter(std::ostream& out, TracePixels pixels) : m_out(out), m_pixels(pixels) {}

document::JsonLine& TraceWriter::Begin(const char* event) {
    m_line.Clear();
    return m_line.Open('{').Bytes("event", event);
}

void TraceWriter::Write() {
    m_line.Close('}');
    if (m_ended) return;
    m_out << m_line.Text() << '\n';
}

void TraceWriter::OnBox(const script::HeadlessDesktop::Box& box) {
    Begin("box")
        .Bytes("text", box.text)
        .Bytes("caption", box.caption)
        .Number("style", box.style)
        .Number("answer", box.answer);
    Write();
}

void TraceWriter::OnFileDialog(const script::HeadlessDesktop::FileDialog& dialog) {
    Begin("file_dialog")
        .Bytes("title", dialog.title)
        .Bytes("initial_dir", dialog.initial_dir)
        .Bytes("initial_name", dialog.initial_name)
        .Number("answer", dialog.answer);
    if (dialog.answer == IDOK) m_line.Bytes("path", dialog.path);
    Write();
}

void TraceWriter::OnSend(const SentMessage& sent) {
    Begin("send")
        .Number("message", MessageOf(sent.event))
        .Bytes("target", Name(sent.target))
        .Number("wParam", sent.wParam);
    std::visit([this](const auto& event) { AddKeys(m_line, event); }, sent.event);
    if (std::holds_alternative<HasMessage>(sent.event)) m_line.Number("answer", sent.answer);
    Write();
}

void TraceWriter::OnChar(const SentCharacter& character) {
    if (m_ended) return;
    const bool pixels = m_pixels == TracePixels::kYes && character.font_slot.has_value();
    // Fetched before the line begins: a missing font file shows a box, a truncated record ends the trace.
    if (pixels) character.glyphs.GetOrThrow(character.info, character.character);
    Begin("char").Number("char", character.character);
    AddCharInf(m_line, character);
    if (pixels) AddPixels(m_line, character);
    Write();
}

void TraceWriter::OnFont(bool result, const CZelFont& fonts) {
    Begin("font").Number("result", result ? 1 : 0);
    AddFonts(m_line, fonts);
    Write();
}

void TraceWriter::OnException(const std::string& text) {
    Begin("exception").Bytes("text", text);
    Write();
    m_ended = true;
    m_out.flush();
}

void TraceWriter::OnEnd(const RunEnd& end) {
    Begin("end").Bytes("road", Name(end.kind));
    if (end.status) m_line.Number("status", *end.status);
    m_line.Bytes("next_id", end.next_id).Number("y_offset", end.y_offset);
    Write();
    m_out.flush();
}

}  // namespace zel::host
