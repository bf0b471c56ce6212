#pragma once

#include <string>

namespace zel::run {

struct ImportOutcome;
struct ImportPaths;
struct ImportRequest;

/// Why an import failed, in one line that begins with the file's name; empty when it succeeded.
std::string DescribeFailure(const ImportRequest& request, const ImportPaths& paths, const ImportOutcome& outcome);

}  // namespace zel::run
