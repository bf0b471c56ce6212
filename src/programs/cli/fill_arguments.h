#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fill/text_layout.h"
#include "host/export/exporter.h"
#include "host/run/import_run.h"
#include "programs/cli/run_options.h"

namespace zel::cli {

struct FillArguments {
    /// Its message is the form, or a disk.
    run::ImportRequest request;
    std::optional<std::string> data, name_column, library, disk, directory, write, settings;
    /// FIELD=TEXT of each --field.
    std::vector<std::string> texts;
    fill::Overflow overflow = fill::Overflow::kError;
    std::vector<std::string> formats{"png"};
    exporter::ExportOptions options;
    int jobs = DefaultJobs();
    bool list = false, replace = false, strict = false, json = false;

    bool HasPictures() const { return directory || library; }
};

}  // namespace zel::cli
