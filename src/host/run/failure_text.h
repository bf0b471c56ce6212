#pragma once

#include <string>

namespace zel::run {

struct ImportRequest;
struct ImportOutcome;

/// The paths of an import in the module's form.
struct ImportPaths {
    std::string message;
    std::string message_directory;
    std::string id;              ///< last part of the message's path.
    std::string font_directory;  ///< as asked for, else MACHINE beside the message directory.
};
ImportPaths PathsOf(const ImportRequest& request);

/// Why an import didn't do its work, in one line that names the file; empty when it did.
std::string DescribeFailure(const ImportRequest& request, const ImportPaths& paths, const ImportOutcome& outcome);

}  // namespace zel::run
