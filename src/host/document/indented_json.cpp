#include "host/document/indented_json.h"

#include <nlohmann/json.hpp>

namespace zel::document {

std::string IndentedJson(const std::string& json) {
    constexpr int kIndent = 2;
    const auto value = nlohmann::ordered_json::parse(json, nullptr, false);
    return value.is_discarded() ? json : value.dump(kIndent);
}

}  // namespace zel::document
