#include "host/export/ograf_exporter.h"

#include <utility>

#include "host/export/live_subject.h"
#include "host/export/thumbnail.h"
#include "host/export/zip_archive.h"
#include "host/live/ograf_package.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

constexpr const char* kThumbnailName = "thumbnail.png";

class OgrafExporter : public Exporter {
  public:
    explicit OgrafExporter(const ExportOptions& options) : m_options(options) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const live::LiveForm form = LiveFormOf(message);
        const picture::Picture thumbnail = Thumbnail(message.Frame(), message.Source().standard);
        const std::string& stem = message.Stem();
        live::OgrafPackage package = live::MakeOgrafPackage(
            form, LiveLookOf(message, m_options),
            {stem, message.Source().recorded_at, kThumbnailName, thumbnail.width, thumbnail.height});
        // The manifest last: a host that watches the folder finds the graphic complete.
        std::vector<ExportedFile> files;
        files.push_back({live::kOgrafModule, std::move(package.module)});
        files.push_back({kThumbnailName, picture::EncodePng(thumbnail, {.shape = picture::PixelShape::kSquare,
                                                                        .effort = m_options.effort})});
        files.push_back({stem + ".ograf.json", std::move(package.manifest)});
        ExportedFile archive{stem + ".zip", ZipArchive(files)};
        for (ExportedFile& file : files) file.name.insert(0, stem + '/');
        files.push_back(std::move(archive));
        return files;
    }
    bool WantsSources() const override { return true; }

  private:
    const ExportOptions m_options;
};

}  // namespace

std::unique_ptr<Exporter> MakeOgrafExporter(const ExportOptions& options) {
    return std::make_unique<OgrafExporter>(options);
}

}  // namespace zel::exporter
