#pragma once

#include <string>
#include <vector>

#include "fill/form.h"
#include "host/library/recording.h"

namespace zel::desktop {

/// A recorded message whose tab fields can be filled, read from its files.
struct RecordedForm {
    fill::Form form;
    /// Where its files are, as MessagePreview takes it.
    std::string file;
    std::string font_directory;
    std::vector<std::string> font_files;
};

/// Reads the files of a recording.
/// @throws std::runtime_error with a sentence for the user: the recording is a picture, a file is missing or has
/// changed
///         since it was imported, or the message has no tab fields.
RecordedForm ReadRecordedForm(const library::Recording& recording);

}  // namespace zel::desktop
