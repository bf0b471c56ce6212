#pragma once

#include "fill/data/data_stream.h"

namespace zel::fill {

/// Reads an array of objects, or objects one after another. Their values are texts, numbers or null.
/// @throws DataError
void ReadJson(DataStream& stream, const TakeRecord& take);

}  // namespace zel::fill
