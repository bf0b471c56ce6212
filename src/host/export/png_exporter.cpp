#include "host/export/png_exporter.h"

#include "host/export/premultiplied.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

class PngExporter : public Exporter {
  public:
    explicit PngExporter(const ExportOptions& options) : m_options(options) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const picture::Picture& frame = message.Output();
        const picture::PngForm form = PngFormOf(m_options, picture::PngChannels::kColourAndAlpha);
        return {{message.Stem() + ".png", m_options.premultiplied ? picture::EncodePng(Premultiplied(frame), form)
                                                                  : picture::EncodePng(frame, form)}};
    }

  private:
    const ExportOptions m_options;
};

}  // namespace

std::unique_ptr<Exporter> MakePngExporter(const ExportOptions& options) {
    return std::make_unique<PngExporter>(options);
}

}  // namespace zel::exporter
