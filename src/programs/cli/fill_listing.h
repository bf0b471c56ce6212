#pragma once

#include "fill/form.h"

namespace zel::cli {

/// Prints the fields of a form as a table, or as a JSON object for each.
void ListFields(const fill::Form& form, bool json);

}  // namespace zel::cli
