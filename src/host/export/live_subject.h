#pragma once

#include "host/export/export_subject.h"
#include "host/live/form_json.h"

namespace zel::exporter {

/// The form of a message for a page, from the files that the library keeps. A note is added for each field that can't
/// be filled.
/// @throws std::runtime_error with the reason: a message in text form, or one whose files are not kept.
live::LiveForm LiveFormOf(ExportSubject& message);

/// @param title  follows the message's stem.
live::LiveLook LiveLookOf(const ExportSubject& message, const ExportOptions& options);

}  // namespace zel::exporter
