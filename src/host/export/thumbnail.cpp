#include "host/export/thumbnail.h"

#include <cmath>

#include "host/picture/resample.h"

namespace zel::exporter {

picture::Picture Thumbnail(const picture::Picture& frame, VideoStandard standard) {
    const double x_scale = static_cast<double>(kThumbnailWidth) / frame.width;
    const double y_scale = x_scale / PixelAspectOf(standard).Ratio();
    const int height = static_cast<int>(std::lround(frame.height * y_scale));
    return picture::Resampled(frame, kThumbnailWidth, height, x_scale, y_scale);
}

}  // namespace zel::exporter
