#include "host/export/manifest.h"

#include <nlohmann/json.hpp>

namespace zel::exporter {

namespace {

using Json = nlohmann::ordered_json;

Json Files(const std::vector<ManifestFile>& files) {
    Json list = Json::array();
    for (const ManifestFile& file : files) {
        list.push_back({{"name", file.name}, {"size", file.size}, {"sha256", file.sha256}});
    }
    return list;
}

Json Messages(const Manifest& manifest) {
    Json list = Json::array();
    for (const ManifestMessage& message : manifest.messages) {
        list.push_back({{"number", message.number},
                        {"disk", message.disk},
                        {"title", message.title},
                        {"files", Files(message.files)},
                        {"failures", message.failures}});
    }
    return list;
}

std::string Lines(const std::vector<ManifestFile>& files) {
    std::string lines;
    for (const ManifestFile& file : files) lines += file.sha256 + "  " + file.name + '\n';
    return lines;
}

}  // namespace

std::string ManifestJson(const Manifest& manifest) {
    constexpr int kIndent = 2;
    const Json document = {{"formats", manifest.formats},
                           {"premultiplied", manifest.premultiplied},
                           {"messages", Messages(manifest)},
                           {"files", Files(manifest.range_files)}};
    return document.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string ChecksumLines(const Manifest& manifest) {
    std::string lines;
    for (const ManifestMessage& message : manifest.messages) lines += Lines(message.files);
    return lines + Lines(manifest.range_files);
}

}  // namespace zel::exporter
