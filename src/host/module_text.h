#pragma once

#include <string>
#include <string_view>

class CException;

namespace zel::host {

/// Text of an exception of the module, as one line. Deletes the exception.
std::string TakeText(CException* error);

/// The text with each line break, and the blanks around it, replaced by one blank.
std::string OneLine(std::string_view text);

}  // namespace zel::host
