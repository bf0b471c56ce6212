#pragma once

#include "fill/data/data_stream.h"

namespace zel::fill {

/// Reads a heading and the records that follow it. Lines end in CR, LF or both; empty lines are passed over. A first
/// line "sep=;" names what divides the values.
/// @throws DataError
void ReadCsv(DataStream& stream, const TakeRecord& take);

}  // namespace zel::fill
