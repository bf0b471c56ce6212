#include "host/export/png_exporter.h"

#include "host/export/premultiplied.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

class PngExporter : public Exporter {
  public:
    explicit PngExporter(bool premultiplied) : m_premultiplied(premultiplied) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const picture::Picture& frame = message.Frame();
        return {{message.Stem() + ".png",
                 m_premultiplied ? picture::EncodePng(Premultiplied(frame)) : picture::EncodePng(frame)}};
    }

  private:
    const bool m_premultiplied;
};

}  // namespace

std::unique_ptr<Exporter> MakePngExporter(const ExportOptions& options) {
    return std::make_unique<PngExporter>(options.premultiplied);
}

}  // namespace zel::exporter
