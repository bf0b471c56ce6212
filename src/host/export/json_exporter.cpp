#include "host/export/export_formats.h"
#include "host/export/parsed_document.h"
#include "base/sha256.h"

namespace {

using Json = nlohmann::ordered_json;

const char* NameOf(RecordingKind kind) noexcept {
    if (kind == RecordingKind::kRgbaObject) return "object";
    return kind == RecordingKind::kRgbaBackground ? "background" : "message";
}

Json Fields(const Recording& recording) {
    Json fields = Json::array();
    for (const RecordedField& field : recording.fields) {
        fields.push_back({{"name", field.name},
                          {"left", field.left},
                          {"top", field.top},
                          {"right", field.right},
                          {"bottom", field.bottom}});
    }
    return fields;
}

Json Sources(const Recording& recording) {
    Json sources = Json::array();
    for (const SourceFile& file : recording.sources) {
        Json source = {{"path", file.path}};
        if (file.font_number) source["font_number"] = *file.font_number;
        source["size"] = file.size;
        source["sha256"] = file.sha256;
        sources.push_back(std::move(source));
    }
    return sources;
}

Json PictureOf(const Recording& recording) {
    if (recording.picture.empty()) return nullptr;
    return {{"width", recording.width}, {"height", recording.height}, {"sha256", Sha256(recording.picture)}};
}

Json Document(const Recording& recording) {
    return {{"number", recording.number},
            {"disk", recording.disk},
            {"kind", NameOf(recording.kind)},
            {"recorded_at", recording.recorded_at},
            {"options", recording.options},
            {"lines", recording.lines},
            {"text", recording.text},
            {"fonts", recording.fonts},
            {"fields", Fields(recording)},
            {"warnings", recording.warnings},
            {"sources", Sources(recording)},
            {"picture", PictureOf(recording)},
            {"message", ParsedDocument(recording.document)}};
}

class JsonExporter : public Exporter {
  public:
    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        constexpr int kIndent = 2;
        const Json document = Document(message.Source());
        return {{message.Stem() + ".json", document.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n'}};
    }
};

}  // namespace

std::unique_ptr<Exporter> MakeJsonExporter(const ExportOptions& /*options*/) {
    return std::make_unique<JsonExporter>();
}
