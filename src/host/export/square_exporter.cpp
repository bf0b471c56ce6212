#include "host/export/square_exporter.h"

#include "host/export/glyph_bleed.h"
#include "host/export/premultiplied.h"
#include "host/picture/png_writer.h"
#include "host/picture/resample.h"

namespace zel::exporter {

namespace {

/// The frame with square pixels: 655 x 486 or 785 x 576.
picture::Picture WithSquarePixels(const picture::Picture& frame, VideoStandard standard) {
    const PixelAspect aspect = PixelAspectOf(standard);
    return picture::Resampled(frame, aspect.SquarePixels(frame.width), frame.height, aspect.Ratio(), 1);
}

class SquareExporter : public Exporter {
  public:
    explicit SquareExporter(const ExportOptions& options) : m_options(options) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        picture::Picture picture = WithSquarePixels(message.Frame(), message.Source().standard);
        if (m_options.clear_colour == ClearColour::kGlyph) picture = WithBleed(std::move(picture));
        if (m_options.premultiplied) picture = Premultiplied(std::move(picture));
        const picture::PngForm form = PngFormOf(m_options, picture::PngChannels::kColourAndAlpha, true);
        return {{message.Stem() + "_square.png", picture::EncodePng(picture, form)}};
    }

  private:
    const ExportOptions m_options;
};

}  // namespace

std::unique_ptr<Exporter> MakeSquareExporter(const ExportOptions& options) {
    return std::make_unique<SquareExporter>(options);
}

}  // namespace zel::exporter
