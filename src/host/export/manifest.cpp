#include "host/export/manifest.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/document/json_version.h"

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

bool IsPlainName(std::string_view name) {
    const auto is_bad = [](char c) { return c == '/' || c == '\\' || static_cast<unsigned char>(c) < ' '; };
    return !name.empty() && name != "." && name != ".." && std::ranges::none_of(name, is_bad);
}

/// Whether a name leads to no other place than the directory and its folders.
bool IsPlainPath(std::string_view path) {
    for (;;) {
        const std::size_t slash = path.find('/');
        if (!IsPlainName(path.substr(0, slash))) return false;
        if (slash == std::string_view::npos) return true;
        path.remove_prefix(slash + 1);
    }
}

bool IsSha256(const std::string& digits) {
    return digits.size() == 64 && digits.find_first_not_of("0123456789abcdef") == std::string::npos;
}

/// The functions below throw for a value that a manifest cannot have; ParseManifest catches it.
[[noreturn]] void Reject() {
    throw std::invalid_argument("not a manifest");
}

std::vector<ManifestFile> ReadFiles(const Json& list) {
    std::vector<ManifestFile> files;
    for (const Json& entry : list) {
        ManifestFile file{entry.at("name").get<std::string>(), entry.at("size").get<std::uint64_t>(),
                          entry.at("sha256").get<std::string>()};
        if (!IsPlainPath(file.name) || !IsSha256(file.sha256)) Reject();
        files.push_back(std::move(file));
    }
    return files;
}

ManifestMessage ReadMessage(const Json& entry) {
    ManifestMessage message;
    message.disk = entry.at("disk").get<std::string>();
    message.number = entry.at("number").get<int>();
    message.title = entry.at("title").get<std::string>();
    message.files = ReadFiles(entry.at("files"));
    message.failures = entry.at("failures").get<std::vector<std::string>>();
    return message;
}

std::string Lines(const std::vector<ManifestFile>& files) {
    std::string lines;
    for (const ManifestFile& file : files) lines += file.sha256 + "  " + file.name + '\n';
    return lines;
}

}  // namespace

std::string ManifestJson(const Manifest& manifest) {
    constexpr int kIndent = 2;
    const Json json = {
        {"version", document::kJsonVersion},       {"formats", manifest.formats},
        {"premultiplied", manifest.premultiplied}, {"frame", manifest.frame ? Json(*manifest.frame) : Json()},
        {"messages", Messages(manifest)},          {"files", Files(manifest.range_files)}};
    return json.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::optional<Manifest> ParseManifest(std::string_view text) {
    try {
        const Json json = Json::parse(text);
        // The first manifests had no version.
        if (json.value("version", document::kJsonVersion) != document::kJsonVersion) Reject();
        Manifest manifest;
        manifest.formats = json.at("formats").get<std::vector<std::string>>();
        manifest.premultiplied = json.at("premultiplied").get<bool>();
        // Earlier releases had no frames.
        if (const auto frame = json.find("frame"); frame != json.end() && !frame->is_null())
            manifest.frame = frame->get<std::string>();
        for (const Json& entry : json.at("messages")) manifest.messages.push_back(ReadMessage(entry));
        manifest.range_files = ReadFiles(json.at("files"));
        return manifest;
    } catch (const Json::exception&) {
        return std::nullopt;
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

std::string ChecksumLines(const Manifest& manifest) {
    std::string lines;
    for (const ManifestMessage& message : manifest.messages) lines += Lines(message.files);
    return lines + Lines(manifest.range_files);
}

}  // namespace zel::exporter
