#pragma once

#include <QBrush>

namespace zel::desktop {

/// Light and dark squares, as they stand behind what can be seen through.
QBrush Checkerboard();

}  // namespace zel::desktop
