#include "host/export/site_exporter.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <stdexcept>
#include <system_error>

#include "base/regular_file.h"
#include "host/export/site_index.h"
#include "host/export/site_page.h"
#include "host/export/thumbnail.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

constexpr const char* kIndexName = "index.html";
constexpr std::string_view kPages = "pages/";
/// Bytes of the largest index that is read: more than one of 10,000 messages with 4 KiB of text each.
constexpr std::size_t kLargestIndex = 64 << 20;

bool HasFile(const std::vector<ManifestFile>& files, std::string_view name) {
    return std::ranges::find(files, name, &ManifestFile::name) != files.end();
}

class SiteExporter : public Exporter {
  public:
    explicit SiteExporter(const ExportOptions& options) : m_effort(options.effort) {}

    void Begin(const std::filesystem::path& directory, const Manifest& earlier) override {
        const std::filesystem::path file = directory / kIndexName;
        std::error_code error;
        if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) return;
        const auto refuse = [&] {
            throw std::runtime_error(file.string() + ": is not the index of a site; choose another directory");
        };
        if (!HasFile(earlier.range_files, kIndexName)) refuse();
        const std::vector<std::uint8_t> bytes = base::ReadFileBytes(file, kLargestIndex);
        auto entries = ReadSiteIndex({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        if (!entries) refuse();
        for (SiteEntry& entry : *entries) m_entries.insert_or_assign(entry.key, std::move(entry));
    }

    bool WantsFilesBeside() const override { return true; }

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const library::Recording& recording = message.Source();
        std::vector<ExportedFile> files;
        std::string picture;
        if (!recording.picture.empty()) {
            picture = "pictures/" + message.Stem() + ".png";
            files.push_back({picture, message.FramePng(), {}});
            const picture::Picture thumbnail = Thumbnail(message.Frame(), recording.standard);
            const picture::PngForm form{picture::PngChannels::kColourAndAlpha, picture::PixelShape::kSquare, m_effort};
            files.push_back({"thumbnails/" + message.Stem() + ".png", picture::EncodePng(thumbnail, form), {}});
        }
        message.SetFilesBeside(Others(message));
        files.push_back({std::string(kPages) + message.Stem() + ".html", SitePage(message, picture), {}});
        SiteEntry entry = SiteEntryOf(recording);
        const std::lock_guard lock(m_mutex);
        m_entries.insert_or_assign(entry.key, std::move(entry));
        return files;
    }

    std::vector<ExportedFile> Finish(const Manifest& manifest) override {
        std::vector<SiteEntry> entries;
        for (const ManifestMessage& message : manifest.messages) {
            const auto entry = m_entries.find({message.disk, message.number});
            const auto is_page = [](const ManifestFile& file) { return file.name.starts_with(kPages); };
            if (entry != m_entries.end() && std::ranges::any_of(message.files, is_page))
                entries.push_back(std::move(entry->second));
        }
        return {{kIndexName, SiteIndex(entries), {}}};
    }

  private:
    /// The files beside those of this site.
    static std::vector<std::string> Others(const ExportSubject& message) {
        std::vector<std::string> files = message.FilesBeside();
        std::erase_if(files, [&](const std::string& file) {
            return file.starts_with(kPages) || file.starts_with("pictures/") || file.starts_with("thumbnails/");
        });
        return files;
    }

    const picture::PngEffort m_effort;
    mutable std::mutex m_mutex;
    /// Of earlier exports and of this one.
    mutable std::map<library::RecordingKey, SiteEntry> m_entries;
};

}  // namespace

std::unique_ptr<Exporter> MakeSiteExporter(const ExportOptions& options) {
    return std::make_unique<SiteExporter>(options);
}

}  // namespace zel::exporter
