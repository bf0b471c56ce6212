#include "host/live/definitions.h"

#include <nlohmann/json.hpp>

#include "module/contract/records/msg_row.h"

namespace zel::live {

namespace {

using Json = nlohmann::ordered_json;

/// The name of a field for a person; one without a name has its key.
std::string TitleOf(const LiveField& field, std::size_t index) {
    return field.field.name.empty() ? KeyOf(index) : field.field.name;
}

/// Layer on which SPX plays a template unless its user chooses another one.
constexpr const char* kSpxLayer = "5";

}  // namespace

Json FieldProperties(const LiveForm& form) {
    Json properties = Json::object();
    for (std::size_t n = 0; n < form.fields.size(); ++n) {
        const LiveField& field = form.fields[n];
        if (!IsDefined(field)) continue;
        properties[KeyOf(n)] = {{"type", "string"},
                                {"gddType", "single-line"},
                                {"title", TitleOf(field, n)},
                                {"default", field.text},
                                {"maxLength", kRowChars}};
    }
    return properties;
}

Json DataDefinition(const LiveForm& form, const LiveLook& look) {
    return {{"title", look.title},
            {"type", "object"},
            {"properties", FieldProperties(form)},
            {"gddPlayoutOptions", {{"client", {{"steps", 1}, {"dataformat", "json"}}}}}};
}

Json SpxDefinition(const LiveForm& form, const LiveLook& look) {
    Json fields = Json::array();
    for (std::size_t n = 0; n < form.fields.size(); ++n) {
        const LiveField& field = form.fields[n];
        if (!IsDefined(field)) continue;
        fields.push_back(
            {{"field", KeyOf(n)}, {"ftype", "textfield"}, {"title", TitleOf(field, n)}, {"value", field.text}});
    }
    return {{"description", look.title},
            {"playserver", "OVERLAY"},
            {"playchannel", "1"},
            {"playlayer", kSpxLayer},
            {"webplayout", kSpxLayer},
            {"steps", "1"},
            {"out", "manual"},
            {"dataformat", "json"},
            {"uicolor", "0"},
            {"DataFields", std::move(fields)}};
}

}  // namespace zel::live
