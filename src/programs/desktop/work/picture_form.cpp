#include "programs/desktop/work/picture_form.h"

#include <new>
#include <stdexcept>

#include "host/export/premultiplied.h"
#include "host/picture/png_reader.h"
#include "host/picture/png_writer.h"

namespace zel::desktop {

std::string PngIn(PictureForm form, const std::string& png) try {
    switch (form) {
        case PictureForm::kStraight:
            return png;
        case PictureForm::kPremultiplied:
            return picture::EncodePng(exporter::Premultiplied(picture::DecodePng(png)));
        case PictureForm::kKey:
            return picture::EncodePng(picture::DecodePng(png), {picture::PngChannels::kAlpha});
    }
    return png;
} catch (const std::bad_alloc&) {
    throw std::runtime_error("out of memory");
}

QString FileEnding(PictureForm form) {
    switch (form) {
        case PictureForm::kStraight:
            return QStringLiteral(".png");
        case PictureForm::kPremultiplied:
            return QStringLiteral(" premultiplied.png");
        case PictureForm::kKey:
            return QStringLiteral(" key.png");
    }
    return {};
}

}  // namespace zel::desktop
