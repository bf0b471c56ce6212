#pragma once

#include <string>
#include <vector>

#include "fill/form.h"
#include "host/run/import_run.h"

namespace zel::cli {

/// A form with what is known of its files.
struct OpenedForm {
    fill::Form form;
    /// This system's path of the message file.
    std::string file;
    /// What an import reports about the form itself.
    std::vector<std::string> warnings;
};

/// This system's path of the message file that the module opens for a path, which may be another spelling.
std::string MessageFileOf(const run::ImportRequest& request);

/// The description of a message file, whose fields can be filled only if the file is whole.
/// @throws CommandError with the reason.
files::MessageFile ReadFormFile(const std::string& file);

/// Opens a form: its message, and its fonts as an import finds them.
/// @throws CommandError with the reason.
OpenedForm OpenForm(const run::ImportRequest& request);

}  // namespace zel::cli
