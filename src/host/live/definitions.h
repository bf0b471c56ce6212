#pragma once

#include <nlohmann/json_fwd.hpp>

#include "host/live/form_json.h"

namespace zel::live {

// The fields of a template as playout programs read them. A field that can't be filled is in none.

/// The properties of a data definition: for each field its key, with the name as title and the text that stands there
/// as default value.
nlohmann::ordered_json FieldProperties(const LiveForm& form);

/// A Graphics Data Definition, for CasparCG's clients.
nlohmann::ordered_json DataDefinition(const LiveForm& form, const LiveLook& look);

/// SPXGCTemplateDefinition, which SPX reads when it imports a page.
nlohmann::ordered_json SpxDefinition(const LiveForm& form, const LiveLook& look);

}  // namespace zel::live
