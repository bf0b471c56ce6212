#pragma once

#include "host/picture/picture.h"

namespace zel::exporter {

/// The picture with its colours multiplied by their alpha, rounded to the nearest; no colour exceeds its alpha.
picture::Picture Premultiplied(picture::Picture picture);

}  // namespace zel::exporter
