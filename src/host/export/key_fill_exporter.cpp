#include "host/export/key_fill_exporter.h"

#include "host/export/premultiplied.h"
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
    explicit KeyFillExporter(const ExportOptions& options) : m_options(options) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const picture::Picture& frame = message.Output();
        const bool mixer = m_options.key_names == KeyNames::kMixer;
        const std::string fill = message.Stem() + (mixer || m_options.fill_beside_png ? "_fill" : "");
        const std::string key = mixer ? message.Stem() + "_key" : fill + "_A";
        return {{fill + ".png", picture::EncodePng(Fill(frame), PngFormOf(m_options, picture::PngChannels::kColour))},
                {key + ".png", picture::EncodePng(frame, PngFormOf(m_options, picture::PngChannels::kAlpha))}};
    }

  private:
    picture::Picture Fill(const picture::Picture& frame) const {
        if (m_options.premultiplied) return Premultiplied(frame);
        return m_options.clear_colour == ClearColour::kGlyph ? frame : FillOf(frame);
    }

    const ExportOptions m_options;
};

}  // namespace

std::unique_ptr<Exporter> MakeKeyFillExporter(const ExportOptions& options) {
    return std::make_unique<KeyFillExporter>(options);
}

}  // namespace zel::exporter
