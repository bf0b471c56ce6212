#include "host/recorder/make_recording.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "base/field_text.h"
#include "base/utf8.h"
#include "host/document/message_document.h"
#include "host/document/message_warnings.h"
#include "host/module_text.h"
#include "host/native_path.h"
#include "host/picture/png_writer.h"
#include "platform/system/files.h"

namespace zel::recorder {

namespace {

/// Without the C library's conversion, which looks for the file of the local time zone each time.
std::string UtcNow() {
    namespace chrono = std::chrono;
    const auto now = chrono::floor<chrono::seconds>(chrono::system_clock::now());
    const auto day = chrono::floor<chrono::days>(now);
    const chrono::year_month_day date(day);
    const chrono::hh_mm_ss time(now - day);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text;
}

/// The texts of the rows that have one, one line each.
std::string TextOf(const document::MessageRecord& message) {
    std::string bytes;
    for (const document::RowRecord& row : message.rows) {
        if (!row.text.empty()) bytes += (bytes.empty() ? "" : "\n") + row.text;
    }
    return base::Utf8FromLatin1(bytes);
}

std::string FieldName(const tag_tab_field& tab) {
    return base::Utf8FromLatin1(base::FieldText(tab.tab_name));
}

library::RecordingKind KindOf(const document::MessageRecord& message) {
    if (!message.rgba) return library::RecordingKind::kMessage;
    return message.object ? library::RecordingKind::kRgbaObject : library::RecordingKind::kRgbaBackground;
}

void AddParts(const document::MessageRecord& message, library::Recording& recording) {
    for (const auto& font : message.fonts) {
        if (font) recording.fonts.push_back(base::Utf8FromLatin1(font->header.Name()));
    }
    for (const tag_tab_field& tab : message.tabs) {
        recording.fields.push_back({FieldName(tab), tab.tab_start, tab.tab_top, tab.tab_end, tab.tab_bottom});
    }
    recording.warnings = document::WarningsOf(message);
    recording.text = TextOf(message);
    recording.document = document::MessageDocument(message);
    // It has room for longer characters, and recordings wait for their chunk.
    recording.document.shrink_to_fit();
}

/// Warns of the files that are there but could not be read again, so that it stays unknown whether they change.
void AddUnreadSources(library::Recording& recording) {
    for (const library::SourceFile& source : recording.sources) {
        if (source.size != 0 && source.sha256.empty())
            recording.warnings.push_back(source.path + ": can't be read again; it has no checksum");
    }
}

}  // namespace

library::Recording MakeRecording(const ArrivedMessage& arrived, const RecordingContext& context, FileDigests& digests) {
    library::Recording recording;
    recording.disk = context.disk;
    recording.number = arrived.number;
    recording.kind = KindOf(arrived.message);
    recording.recorded_at = UtcNow();
    recording.options = context.options;
    recording.standard = arrived.message.standard;
    if (context.relocation.IsNone()) {
        AddParts(arrived.message, recording);
    } else {
        document::MessageRecord moved = arrived.message;
        context.relocation.Apply(moved);
        AddParts(moved, recording);
    }
    if (!arrived.picture_error.empty()) recording.warnings.push_back(context.relocation.InText(arrived.picture_error));
    recording.sources = SourcesOf(arrived.message, context.font_directory, digests,
                                  context.with_files && !arrived.message.rgba ? &recording.files : nullptr);
    for (library::SourceFile& source : recording.sources) source.path = context.relocation.Recorded(source.path);
    AddUnreadSources(recording);
    if (arrived.picture) {
        recording.width = arrived.picture->width;
        recording.height = arrived.picture->height;
        recording.picture = picture::EncodePng(*arrived.picture, {.effort = context.png_effort});
    }
    if (arrived.message.rgba) recording.standard = library::RgbaStandard(recording.height, arrived.message.standard);
    return recording;
}

std::string DescribeOptions(const host::HostOptions& options, FileDigests& digests) {
    std::string text = "lines=" + std::to_string(ActiveLines(options.standard));
    if (options.tt_convert) text += " tt-convert";
    if (!options.baseline_align) text += " no-baseline-align";
    if (!options.maps) return text;
    for (const char* list : {"bitstream_fontlist.txt", "typeface_list.txt"}) {
        text += std::string(" ") + list + "=" + digests.Of(host::AbsolutePath(*options.maps) + "/" + list).sha256;
    }
    return text;
}

}  // namespace zel::recorder
