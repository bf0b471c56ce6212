#pragma once

#include <QBrush>

namespace zel::desktop {

/// Light and dark squares, the background of transparent pictures.
QBrush Checkerboard();

}  // namespace zel::desktop
