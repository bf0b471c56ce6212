#include "host/export/bag.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <map>
#include <stdexcept>
#include <system_error>

#include "base/regular_file.h"
#include "base/sha256.h"
#include "host/export/earlier_export.h"
#include "host/export/exported_file.h"

namespace zel::exporter {

namespace {

namespace fs = std::filesystem;

constexpr const char* kDeclaration = "bagit.txt";
constexpr const char* kInfo = "bag-info.txt";
constexpr const char* kPayloadSums = "manifest-sha256.txt";
constexpr const char* kTagSums = "tagmanifest-sha256.txt";
/// Bytes of the largest bag-info.txt that is kept.
constexpr std::size_t kLargestInfo = 1 << 20;
/// The elements of bag-info.txt that a bag's program writes.
constexpr std::array<std::string_view, 3> kOwnElements = {"Bag-Software-Agent:", "Bagging-Date:", "Payload-Oxum:"};

bool Exists(const fs::path& file) {
    std::error_code error;
    return fs::exists(fs::symlink_status(file, error));
}

/// A path in a list of sums: without line ends, as the format has it.
std::string Listed(const std::string& path) {
    std::string listed;
    for (const char c : path) {
        if (c == '\n') {
            listed += "%0A";
        } else if (c == '\r') {
            listed += "%0D";
        } else if (c == '%') {
            listed += "%25";
        } else {
            listed += c;
        }
    }
    return listed;
}

std::string Lines(const std::vector<ManifestFile>& files) {
    std::string lines;
    for (const ManifestFile& file : files) lines += file.sha256 + "  " + Listed(file.name) + '\n';
    return lines;
}

void AddSums(const std::vector<ManifestFile>& files, std::map<std::string, ManifestFile>& known) {
    for (const ManifestFile& file : files) known.insert_or_assign(file.name, file);
}

/// All files of a bag's payload, with names below the bag, by name.
std::vector<ManifestFile> PayloadFiles(const fs::path& payload, const Manifest& manifest) {
    std::map<std::string, ManifestFile> known;
    for (const ManifestMessage& message : manifest.messages) AddSums(message.files, known);
    AddSums(manifest.range_files, known);
    std::vector<ManifestFile> files;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(payload, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->is_directory(error) && !entry->is_symlink(error)) continue;
        const std::string name = entry->path().lexically_relative(payload).string();
        const auto sum = known.find(name);
        ManifestFile file = sum != known.end() ? sum->second : DescribeFile(payload, name);
        file.name = "data/" + name;
        files.push_back(std::move(file));
    }
    if (error) throw std::runtime_error(payload.string() + ": could not be read: " + error.message());
    std::ranges::sort(files, {}, &ManifestFile::name);
    return files;
}

/// The lines of an earlier bag-info.txt that are its user's. A line that begins with a blank continues the one before.
std::string KeptInfo(const fs::path& file) {
    if (!Exists(file)) return {};
    const std::vector<std::uint8_t> bytes = base::ReadFileBytes(file, kLargestInfo);
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::string kept;
    bool is_own = false;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string_view line = text.substr(begin, end - begin);
        if (!line.starts_with(' ') && !line.starts_with('\t'))
            is_own =
                std::ranges::any_of(kOwnElements, [&](std::string_view element) { return line.starts_with(element); });
        if (!is_own && !line.empty()) kept.append(line).append("\n");
        begin = end + 1;
    }
    return kept;
}

std::string Today() {
    const std::time_t now = std::time(nullptr);
    std::tm date{};
    ::gmtime_r(&now, &date);
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &date)};
}

std::string Info(const fs::path& file, const std::vector<ManifestFile>& payload) {
    std::uint64_t bytes = 0;
    for (const ManifestFile& entry : payload) bytes += entry.size;
    return KeptInfo(file) + "Bag-Software-Agent: ZelTrans\nBagging-Date: " + Today() +
           "\nPayload-Oxum: " + std::to_string(bytes) + '.' + std::to_string(payload.size()) + '\n';
}

}  // namespace

Bag::Bag(fs::path directory) : m_directory(std::move(directory)) {
    std::error_code error;
    const bool is_new =
        !Exists(m_directory) || (fs::is_directory(m_directory, error) && fs::is_empty(m_directory, error));
    if (is_new && !error) return;
    const std::string name = m_directory.string();
    if (error) throw std::runtime_error(name + ": could not be read: " + error.message());
    if (!fs::is_regular_file(m_directory / kDeclaration, error) || !fs::exists(Payload() / kManifestName, error))
        throw std::runtime_error(name + ": is neither empty nor a bag with an export: choose another directory");
    // Lists of another checksum would become wrong.
    for (const fs::directory_entry& entry : fs::directory_iterator(m_directory, error)) {
        const std::string other = entry.path().filename().string();
        const bool is_list = (other.starts_with("manifest-") || other.starts_with("tagmanifest-")) && !IsTagFile(other);
        if (is_list || other == "fetch.txt")
            throw std::runtime_error(entry.path().string() + ": another program's list; choose another directory");
    }
}

void Bag::Write(const Manifest& manifest, std::vector<ManifestFile>& files) const {
    const std::vector<ManifestFile> payload = PayloadFiles(Payload(), manifest);
    const ExportedFile tags[] = {{kDeclaration, "BagIt-Version: 1.0\nTag-File-Character-Encoding: UTF-8\n", {}},
                                 {kInfo, Info(m_directory / kInfo, payload), {}},
                                 {kPayloadSums, Lines(payload), {}}};
    std::vector<ManifestFile> written;
    for (const ExportedFile& file : tags) written.push_back(WriteExported(m_directory, file));
    files.insert(files.end(), written.begin(), written.end());
    files.push_back(WriteExported(m_directory, {kTagSums, Lines(written), {}}));
}

bool IsInBag(const fs::path& directory) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(fs::absolute(directory, error), error);
    return Exists(whole / kDeclaration) || (whole.filename() == "data" && Exists(whole.parent_path() / kDeclaration));
}

bool IsTagFile(std::string_view name) noexcept {
    return name == kDeclaration || name == kInfo || name == kPayloadSums || name == kTagSums;
}

}  // namespace zel::exporter
