#pragma once

#include <optional>

#include "host/ftp/ftp_fetch_service.h"

class QWidget;

namespace zel::desktop {

/// Lets the user choose a file, or the directory itself, of a server's directory, or open another directory; modal.
/// @param parent  may be null.
std::optional<ftp::RemoteChoice> ChooseRemote(const ftp::RemoteView& view, QWidget* parent);

}  // namespace zel::desktop
