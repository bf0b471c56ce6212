#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/filejson/key_reader.h"

namespace zel::filejson {

/// The parts of a document that are read.
struct ParsedDocument {
    /// Null if it is missing; `file` likewise. The array /file/rows is empty here.
    Json version{};
    Json file{};
    bool has_version = false, has_file = false;
};

/// Parses a document. The rows of a message are given to `on_row` one by one and then forgotten, so that a document
/// takes little more memory than its file; nothing is kept of other keys than `version` and `file`.
/// @param on_row  gets a row's index and value.
/// @throws std::runtime_error  with the reason; the limits of depth, of members and of values are those of
/// document_parser.cpp.
ParsedDocument ParseFileDocument(std::string_view text, Faults& faults,
                                 const std::function<void(std::size_t index, const Json& row)>& on_row);

}  // namespace zel::filejson
