#include "host/export/export_formats.h"
#include "host/export/frame.h"
#include "host/picture/png_writer.h"

namespace {

class PngExporter : public Exporter {
  public:
    explicit PngExporter(bool premultiplied) : m_premultiplied(premultiplied) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const Picture& frame = message.Frame();
        return {{message.Stem() + ".png", EncodePng(m_premultiplied ? Premultiplied(frame) : frame)}};
    }

  private:
    const bool m_premultiplied;
};

}  // namespace

std::unique_ptr<Exporter> MakePngExporter(const ExportOptions& options) {
    return std::make_unique<PngExporter>(options.premultiplied);
}
