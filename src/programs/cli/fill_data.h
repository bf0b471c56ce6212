#pragma once

#include <functional>
#include <string>

#include "fill/data/data_record.h"

namespace zel::cli {

/// Reads the records of a file, or of standard input for "-". A file named .csv, .json or the like is of that format.
/// @throws CommandError if it can't be opened or read; fill::DataError for damage.
void ReadDataFile(const std::string& path, const fill::TakeRecord& take);

}  // namespace zel::cli
