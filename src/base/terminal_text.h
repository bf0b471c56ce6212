#pragma once

#include <string>
#include <string_view>

namespace zel::base {

/// A text from a file, a server or a command line as it may be printed on a terminal, in one line. What could control
/// the terminal, break the line, or change the order or the visibility of other characters is shown as its code: \x1B
/// for a control character of ASCII or a byte that isn't valid UTF-8, \u202E or \U000E0001 for other characters. A
/// backslash stays as it is, since many texts are paths. Applied twice it changes nothing more.
std::string TerminalText(std::string_view text);

/// Likewise for a text of several lines, whose line breaks stay.
std::string TerminalLines(std::string_view text);

}  // namespace zel::base
