#include "host/document/indented_json.h"

#include <stdexcept>

#include <nlohmann/json.hpp>

#include "host/document/document_reader.h"

namespace zel::document {

std::string IndentedJson(const std::string& document) {
    constexpr int kIndent = 2;
    try {
        // The depth is limited: dump recurses, and a document can come from a damaged library.
        const nlohmann::ordered_json value = ParseDocument(document);
        return value.is_null() ? document : value.dump(kIndent);
    } catch (const std::runtime_error&) {
        return document;
    }
}

}  // namespace zel::document
