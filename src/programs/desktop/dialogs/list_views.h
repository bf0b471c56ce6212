#pragma once

#include <memory>

#include "programs/desktop/dialogs/control_view.h"

namespace zel::desktop {

/// Make the views of the controls that contain a list: combo boxes and list boxes.
std::unique_ptr<ControlView> MakeComboView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control);
std::unique_ptr<ControlView> MakeListView(DialogView& dialog, const framework::ControlTemplate& source, CWnd& control);

}  // namespace zel::desktop
