#include "host/export/json_exporter.h"

#include <nlohmann/json.hpp>

#include "host/export/recording_json.h"

namespace zel::exporter {

namespace {

class JsonExporter : public Exporter {
  public:
    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        constexpr int kIndent = 2;
        constexpr auto kReplaceBadUtf8 = nlohmann::ordered_json::error_handler_t::replace;
        const nlohmann::ordered_json document = RecordingJson(message.Source());
        return {{message.Stem() + ".json", document.dump(kIndent, ' ', false, kReplaceBadUtf8) + '\n'}};
    }
};

}  // namespace

std::unique_ptr<Exporter> MakeJsonExporter(const ExportOptions& /*options*/) {
    return std::make_unique<JsonExporter>();
}

}  // namespace zel::exporter
