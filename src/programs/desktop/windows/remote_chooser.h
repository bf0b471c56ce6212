#pragma once

#include <optional>

#include "host/ftp/ftp_fetch_service.h"

class QWidget;

namespace zel::desktop {

/// Shows a directory of a server in a modal dialog. The user chooses one of its files, the directory itself, or another
/// directory to open.
/// @param parent  may be null.
/// @return empty if the user cancels.
std::optional<ftp::RemoteChoice> ChooseRemote(const ftp::RemoteView& view, QWidget* parent);

}  // namespace zel::desktop
