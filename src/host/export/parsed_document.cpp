#include "host/export/parsed_document.h"

#include <stdexcept>

namespace zel::exporter {

using Json = nlohmann::ordered_json;

Json ParsedDocument(const std::string& text) {
    // A document is written by functions that call themselves for what is inside.
    constexpr int kDeepest = 64;
    if (text.empty()) return nullptr;
    bool too_deep = false;
    const auto check_depth = [&](int depth, Json::parse_event_t /*event*/, Json& /*parsed*/) {
        too_deep = too_deep || depth > kDeepest;
        return !too_deep;  // what is inside isn't kept
    };
    Json document = Json::parse(text, check_depth, false);
    if (too_deep || !document.is_object()) throw std::runtime_error("the recorded document is no message");
    return document;
}

}  // namespace zel::exporter
