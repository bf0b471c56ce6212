#include "host/export/export_formats.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

/// Where nothing is seen the fill is black, whatever colour the picture has there.
picture::Picture Fill(picture::Picture picture) {
    for (std::size_t n = 0; n + 3 < picture.rgba.size(); n += 4) {
        if (picture.rgba[n + 3] == 0) picture.rgba[n] = picture.rgba[n + 1] = picture.rgba[n + 2] = 0;
    }
    return picture;
}

/// A mixer that keys the fill by the key shows the picture.
class KeyFillExporter : public Exporter {
  public:
    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        const picture::Picture& frame = message.Frame();
        return {{message.Stem() + ".png", picture::EncodePng(Fill(frame), {picture::PngChannels::kColour})},
                {message.Stem() + "_A.png", picture::EncodePng(frame, {picture::PngChannels::kAlpha})}};
    }
};

}  // namespace

std::unique_ptr<Exporter> MakeKeyFillExporter(const ExportOptions& /*options*/) {
    return std::make_unique<KeyFillExporter>();
}

}  // namespace zel::exporter
