#pragma once

#include <QIcon>

namespace desktop {

/// The program's own icon: a lower third on a checkerboard.
QIcon ProgramIcon();

}  // namespace desktop
