#include "host/export/json_exporter.h"

#include <nlohmann/json.hpp>

#include "base/sha256.h"
#include "host/document/document_reader.h"

namespace zel::exporter {

namespace {

using Json = nlohmann::ordered_json;

const char* NameOf(library::RecordingKind kind) noexcept {
    if (kind == library::RecordingKind::kRgbaObject) return "object";
    return kind == library::RecordingKind::kRgbaBackground ? "background" : "message";
}

Json Fields(const library::Recording& recording) {
    Json fields = Json::array();
    for (const library::RecordedField& field : recording.fields) {
        fields.push_back({{"name", field.name},
                          {"left", field.left},
                          {"top", field.top},
                          {"right", field.right},
                          {"bottom", field.bottom}});
    }
    return fields;
}

Json Sources(const library::Recording& recording) {
    Json sources = Json::array();
    for (const library::SourceFile& file : recording.sources) {
        Json source = {{"path", file.path}};
        if (file.font_number) source["font_number"] = *file.font_number;
        source["size"] = file.size;
        source["sha256"] = file.sha256;
        sources.push_back(std::move(source));
    }
    return sources;
}

Json PictureOf(const library::Recording& recording) {
    if (recording.picture.empty()) return nullptr;
    return {{"width", recording.width}, {"height", recording.height}, {"sha256", base::Sha256(recording.picture)}};
}

Json Document(const library::Recording& recording) {
    return {{"number", recording.number},
            {"disk", recording.disk},
            {"kind", NameOf(recording.kind)},
            {"recorded_at", recording.recorded_at},
            {"options", recording.options},
            {"lines", ActiveLines(recording.standard)},
            {"text", recording.text},
            {"fonts", recording.fonts},
            {"fields", Fields(recording)},
            {"warnings", recording.warnings},
            {"sources", Sources(recording)},
            {"picture", PictureOf(recording)},
            {"message", document::ParseDocument(recording.document)}};
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

}  // namespace zel::exporter
