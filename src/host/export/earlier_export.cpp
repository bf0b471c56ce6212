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

library::RecordingKey KeyOf(const ManifestMessage& message) {
    return {message.disk, message.number};
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

/// Whether the pictures of a format differ by the option, and their names don't tell how.
bool Takes(const std::string& format, std::string_view option) {
    const ExportFormat* const found = FindExportFormat(format);
    return found != nullptr && found->Takes(option) && !(option == "premultiplied" && found->names_tell_alpha);
}

bool AnyTakes(const Manifest& manifest, std::string_view option) {
    return std::ranges::any_of(manifest.formats, [&](const std::string& name) { return Takes(name, option); });
}

/// The format whose list of pages is index.html; empty for none. A site lists the pages of html, too.
std::string_view IndexOwner(const Manifest& manifest) {
    for (const std::string_view format : {"site", "html"}) {
        if (HasName(manifest.formats, format)) return format;
    }
    return {};
}

/// Whether a fill has the name that a PNG of its message would have: its key is NAME_A.png.
bool HasFillInPlaceOfPng(const Manifest& manifest) {
    const auto is_key = [](const ManifestFile& file) {
        return file.name.ends_with("_A.png") && !file.name.ends_with("_fill_A.png");
    };
    return std::ranges::any_of(manifest.messages,
                               [&](const auto& message) { return std::ranges::any_of(message.files, is_key); });
}

[[noreturn]] void RefuseOther(const std::string& pictures) {
    throw std::runtime_error("the directory contains " + pictures + ": choose another directory");
}

}  // namespace

bool HasName(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

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
    std::ranges::stable_sort(manifest->messages, {}, KeyOf);
    return std::move(*manifest);
}

const ManifestMessage* FindMessage(const Manifest& earlier, const library::RecordingKey& key) {
    const auto found = std::ranges::lower_bound(earlier.messages, key, {}, KeyOf);
    return found != earlier.messages.end() && KeyOf(*found) == key ? &*found : nullptr;
}

void CheckGoTogether(const Manifest& earlier, const Manifest& planned) {
    const std::string_view index = IndexOwner(planned), other = IndexOwner(earlier);
    if (!index.empty() && !other.empty() && index != other) RefuseOther("the index.html of " + std::string(other));
    if (std::ranges::all_of(earlier.messages, [](const auto& message) { return message.files.empty(); })) return;
    if (HasName(planned.formats, "png") && HasFillInPlaceOfPng(earlier))
        RefuseOther("fills of key-fill with the names of png");
    if (HasName(planned.formats, "html") && HasName(earlier.formats, "template") && !HasName(earlier.formats, "html"))
        RefuseOther("templates with the names of pages");
    if (AnyTakes(planned, "premultiplied") && AnyTakes(earlier, "premultiplied") &&
        planned.premultiplied != earlier.premultiplied) {
        RefuseOther(std::string("pictures with ") + (earlier.premultiplied ? "premultiplied" : "straight") +
                    " colours");
    }
    if (AnyTakes(planned, "frame") && AnyTakes(earlier, "frame") && planned.frame != earlier.frame)
        RefuseOther("pictures with " + (earlier.frame ? "the frame " + *earlier.frame : "the frame of their standard"));
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
    // Only pictures are of a kind; without new ones the earlier ones decide.
    if (!AnyTakes(manifest, "premultiplied") && AnyTakes(earlier, "premultiplied"))
        manifest.premultiplied = earlier.premultiplied;
    if (!AnyTakes(manifest, "frame") && AnyTakes(earlier, "frame")) manifest.frame = earlier.frame;
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
