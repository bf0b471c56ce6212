#include "host/export/live_subject.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "host/document/document_reader.h"
#include "host/export/message_title.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

/// The bytes of a source.
/// @param what  names the file in a failure.
std::string BytesOf(const library::Recording& recording, const library::SourceFile& source, const std::string& what) {
    const auto kept =
        std::ranges::find(recording.files, source.sha256, [](const library::SharedFile& file) { return file->sha256; });
    if (kept != recording.files.end()) return ContentsOf(**kept);
    if (source.size > library::kLargestKeptFile) {
        throw std::runtime_error(what + " has more than the " + std::to_string(library::kLargestKeptFile >> 20) +
                                 " MiB that a library keeps");
    }
    throw std::runtime_error("the library doesn't keep " + what +
                             ": record the disk again with \"zeltrans batch\", which keeps all files of a message");
}

std::shared_ptr<const std::string> FontOf(const library::Recording& recording, int number) {
    const auto source = std::ranges::find(recording.sources, std::optional(number), &library::SourceFile::font_number);
    // The import had no such font either.
    if (source == recording.sources.end() || source->sha256.empty()) return nullptr;
    return std::make_shared<const std::string>(BytesOf(recording, *source, "font " + std::to_string(number)));
}

void CheckHasNoText(const library::Recording& recording) {
    const document::DocumentContents contents = document::ReadDocumentText(recording.document);
    if (!std::ranges::all_of(contents.characters, &document::DocumentCharacter::bitmap)) {
        throw std::runtime_error(
            "its characters are drawn in typefaces of this system, which a page can't have; record it without "
            "--tt-convert");
    }
}

live::LiveForm PictureForm(ExportSubject& message) {
    live::LiveForm form;
    form.standard = message.Source().standard;
    form.picture = picture::EncodePng(message.Frame());
    return form;
}

}  // namespace

live::LiveForm LiveFormOf(ExportSubject& message) {
    const library::Recording& recording = message.Source();
    if (recording.kind != library::RecordingKind::kMessage) return PictureForm(message);
    CheckHasNoText(recording);
    const auto own = std::ranges::find(recording.sources, std::optional<int>(), &library::SourceFile::font_number);
    if (own == recording.sources.end()) throw std::runtime_error("the library has no file of the message");
    const std::string bytes = BytesOf(recording, *own, "the message's file");
    live::LiveForm form =
        live::MakeLiveForm(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()),
                           [&](int number) { return FontOf(recording, number); });
    for (std::size_t n = 0; n < form.fields.size(); ++n) {
        const live::LiveField& field = form.fields[n];
        if (!live::IsDefined(field)) {
            message.AddNote("field " + live::KeyOf(n) +
                            (field.field.name.empty() ? "" : " \"" + field.field.name + "\"") +
                            " can't be filled and is left out: " + field.fault);
        }
    }
    return form;
}

live::LiveLook LiveLookOf(const ExportSubject& message, const ExportOptions& options) {
    const VideoStandard standard = message.Source().standard;
    return {.title = message.Stem() + ' ' + TitleOf(message.Source().text),
            .fit = NameOf(options.fit),
            .fade_in_ms = options.fade_in.Milliseconds(standard),
            .fade_out_ms = options.fade_out.Milliseconds(standard)};
}

}  // namespace zel::exporter
