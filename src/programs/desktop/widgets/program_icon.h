#pragma once

#include <QIcon>

namespace zel::desktop {

/// The program's icon: a lower third on a checkerboard.
QIcon ProgramIcon();

}  // namespace zel::desktop
