#pragma once

#include <string>
#include <string_view>

class CException;

namespace zel::host {

/// Text of an exception of the module as one line; the exception is deleted.
std::string TakeText(CException* error);

/// The text with its line breaks and the blanks around them made one blank each.
std::string OneLine(std::string_view text);

/// The module's text, a byte a character, as UTF-8; each byte is the code point of the same value.
std::string Utf8FromBytes(std::string_view bytes);

}  // namespace zel::host
