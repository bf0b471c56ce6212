#pragma once

#include <string>
#include <string_view>

/// Values of comma-separated tables (RFC 4180) that spreadsheets show as texts.
namespace zel::base {

/// Appends a text as one value, in quotes if it contains a comma, a quote or a line break, or begins or ends with a
/// blank.
void AppendCsvValue(std::string& line, std::string_view text);

/// A text that no spreadsheet takes for a formula: one that begins with =, +, -, @, a tab, a carriage return or an
/// apostrophe gets an apostrophe in front.
std::string WithFormulaGuard(std::string_view text);

/// The text of which WithFormulaGuard made this one: without the apostrophe at its beginning, if there is one.
std::string_view WithoutFormulaGuard(std::string_view text) noexcept;

}  // namespace zel::base
