#include "host/export/earlier_export.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/regular_file.h"
#include "host/export/export_formats.h"
#include "host/export/file_names.h"

namespace zel::exporter {

namespace {

/// Bytes of the largest manifest that is read, ten times that of 9999 messages in all formats.
constexpr std::size_t kLargestManifest = 128 << 20;

bool HasName(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

void DropMissing(const std::filesystem::path& directory, std::vector<ManifestFile>& files) {
    std::erase_if(files, [&](const ManifestFile& file) {
        std::error_code error;
        return !std::filesystem::is_regular_file(directory / file.name, error);
    });
}

void DropNamed(const std::set<std::string>& names, std::vector<ManifestFile>& files) {
    std::erase_if(files, [&](const ManifestFile& file) { return names.contains(file.name); });
}

std::set<std::string> NamesIn(const Manifest& manifest) {
    std::set<std::string> names;
    for (const ManifestMessage& message : manifest.messages) {
        for (const ManifestFile& file : message.files) names.insert(file.name);
    }
    for (const ManifestFile& file : manifest.range_files) names.insert(file.name);
    return names;
}

template <typename Item>
void MoveTo(std::vector<Item>& target, std::vector<Item>& source) {
    target.insert(target.end(), std::make_move_iterator(source.begin()), std::make_move_iterator(source.end()));
}

/// A failure of a message begins with the name of its format. Thumbnails are made for contact sheets.
bool IsOf(const std::vector<std::string>& formats, const std::string& failure) {
    const std::string_view name = std::string_view(failure).substr(0, failure.find(':'));
    return HasName(formats, name == "thumbnail" ? "sheet" : name);
}

bool HasAlpha(const std::string& format) {
    const ExportFormat* const found = FindExportFormat(format);
    return found != nullptr && found->has_alpha;
}

}  // namespace

Manifest EarlierExport(const std::filesystem::path& directory) {
    const std::filesystem::path file = directory / kManifestName;
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) return {};
    const auto refuse = [&](const std::string& reason) {
        throw std::runtime_error(file.string() + ": " + reason + "; choose another directory");
    };
    if (!std::filesystem::is_regular_file(file, error)) refuse("is not a file");
    if (std::filesystem::file_size(file, error) > kLargestManifest || error) refuse("is not the manifest of an export");
    std::optional<Manifest> manifest;
    try {
        const std::vector<std::uint8_t> bytes = base::ReadFileBytes(file, kLargestManifest);
        manifest = ParseManifest({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } catch (const std::runtime_error& failure) {
        refuse(std::string("could not be read: ") + failure.what());
    }
    if (!manifest) refuse("is not the manifest of an export");
    for (ManifestMessage& message : manifest->messages) DropMissing(directory, message.files);
    DropMissing(directory, manifest->range_files);
    std::erase_if(manifest->messages,
                  [](const ManifestMessage& message) { return message.files.empty() && message.failures.empty(); });
    return std::move(*manifest);
}

void CheckGoTogether(const Manifest& earlier, const std::vector<std::string>& formats, bool premultiplied) {
    if (std::ranges::all_of(earlier.messages, [](const auto& message) { return message.files.empty(); })) return;
    const auto both = [&](const char* one, const char* other) {
        return HasName(earlier.formats, one) && HasName(formats, other);
    };
    if (both("png", "key-fill") || both("key-fill", "png")) {
        throw std::runtime_error("png and key-fill write files of the same name, and the directory contains " +
                                 std::string(HasName(formats, "png") ? "key-fill" : "png") +
                                 ": choose another directory");
    }
    const bool mixes = std::ranges::any_of(formats, HasAlpha) && std::ranges::any_of(earlier.formats, HasAlpha);
    if (mixes && premultiplied != earlier.premultiplied) {
        throw std::runtime_error(std::string("the directory contains pictures with ") +
                                 (earlier.premultiplied ? "premultiplied" : "straight") +
                                 " colours: choose another directory");
    }
}

void AddEarlier(Manifest earlier, Manifest& manifest) {
    const std::set<std::string> replaced = NamesIn(manifest);
    std::map<std::pair<std::string, int>, ManifestMessage> messages;
    for (ManifestMessage& message : manifest.messages) {
        messages.try_emplace({message.disk, message.number}, std::move(message));
    }
    for (ManifestMessage& message : earlier.messages) {
        DropNamed(replaced, message.files);
        const auto [place, is_alone] = messages.try_emplace({message.disk, message.number}, std::move(message));
        if (is_alone) continue;
        std::erase_if(message.failures, [&](const std::string& line) { return IsOf(manifest.formats, line); });
        MoveTo(place->second.files, message.files);
        MoveTo(place->second.failures, message.failures);
    }
    manifest.messages.clear();
    for (auto& [key, message] : messages) manifest.messages.push_back(std::move(message));
    DropNamed(replaced, earlier.range_files);
    MoveTo(manifest.range_files, earlier.range_files);
    // Only pictures are premultiplied or not; without new ones the earlier ones decide.
    if (std::ranges::none_of(manifest.formats, HasAlpha) && std::ranges::any_of(earlier.formats, HasAlpha))
        manifest.premultiplied = earlier.premultiplied;
    for (std::string& format : earlier.formats) {
        if (!HasName(manifest.formats, format)) manifest.formats.push_back(std::move(format));
    }
}

void PutFile(ManifestFile file, std::vector<ManifestFile>& files) {
    const auto place = std::ranges::find(files, file.name, &ManifestFile::name);
    if (place == files.end()) {
        files.push_back(std::move(file));
    } else {
        *place = std::move(file);
    }
}

}  // namespace zel::exporter
