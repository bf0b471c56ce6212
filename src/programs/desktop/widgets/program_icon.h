#pragma once

#include <QIcon>

namespace zel::desktop {

/// The program's own icon: a lower third on a checkerboard.
QIcon ProgramIcon();

}  // namespace zel::desktop
