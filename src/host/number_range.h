#pragma once

#include <string>

namespace zel::host {

/// A range of message numbers, as a user types it into the batch dialog.
struct NumberRange {
    std::string first;
    std::string last;
};

}  // namespace zel::host
