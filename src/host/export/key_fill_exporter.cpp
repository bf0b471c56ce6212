#include "host/export/key_fill_exporter.h"

#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

/// The picture's colours; a transparent pixel is black, whatever colour it has in the picture.
picture::Picture FillOf(picture::Picture picture) {
    const picture::PixelView view = picture.View();
    for (int y = 0; y < view.Height(); ++y) {
        for (picture::Rgba& pixel : view.Row(y)) {
            if (pixel.alpha == 0) pixel = {};
        }
    }
    return picture;
}

class KeyFillExporter : public Exporter {
  public:
    explicit KeyFillExporter(const ExportOptions& options) : m_effort(options.effort) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const picture::Picture& frame = message.Frame();
        const picture::PngForm fill{.channels = picture::PngChannels::kColour, .effort = m_effort};
        const picture::PngForm key{.channels = picture::PngChannels::kAlpha, .effort = m_effort};
        return {{message.Stem() + ".png", picture::EncodePng(FillOf(frame), fill)},
                {message.Stem() + "_A.png", picture::EncodePng(frame, key)}};
    }

  private:
    const picture::PngEffort m_effort;
};

}  // namespace

std::unique_ptr<Exporter> MakeKeyFillExporter(const ExportOptions& options) {
    return std::make_unique<KeyFillExporter>(options);
}

}  // namespace zel::exporter
