#include "host/export/export_formats.h"
#include "host/export/frame.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

class PngExporter : public Exporter {
  public:
    explicit PngExporter(bool premultiplied) : m_premultiplied(premultiplied) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const picture::Picture& frame = message.Frame();
        return {{message.Stem() + ".png", picture::EncodePng(m_premultiplied ? Premultiplied(frame) : frame)}};
    }

  private:
    const bool m_premultiplied;
};

}  // namespace

std::unique_ptr<Exporter> MakePngExporter(const ExportOptions& options) {
    return std::make_unique<PngExporter>(options.premultiplied);
}

}  // namespace zel::exporter
