#include "programs/cli/json_output.h"

#include <iostream>

#include <nlohmann/json.hpp>

namespace zel::cli {

std::string JsonText(const nlohmann::ordered_json& value) {
    return value.dump(-1, ' ', true, nlohmann::ordered_json::error_handler_t::replace);
}

void PrintJson(const nlohmann::ordered_json& value) {
    std::cout << JsonText(value) << std::endl;
}

nlohmann::ordered_json TextOrNull(const std::string& text) {
    return text.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(text);
}

}  // namespace zel::cli
