#pragma once

#include <string>
#include <string_view>

#include "programs/cli/command.h"

namespace zel::cli {

// The functions that print. Whatever a text contains, it stays in its line and controls no terminal
// (base::TerminalText).

/// What a command prints beside its errors and the outputs that it is asked for.
enum class Verbosity {
    /// Nothing.
    kQuiet,
    /// Results and notes.
    kNormal,
    /// Details too.
    kVerbose,
};
void SetVerbosity(Verbosity verbosity) noexcept;
bool IsVerbose() noexcept;

/// From now on results are not printed, since standard output contains an output of the command.
void ReserveStandardOutput() noexcept;
/// Whether PrintLine and PrintLines print nothing.
bool IsSilent() noexcept;

/// Prints a line of results on standard output, at once.
void PrintLine(const std::string& text);

/// Prints results of several lines, each ended by a line break. Names and texts from files must have passed
/// base::TerminalText, so that they don't break a line.
void PrintLines(const std::string& text);

/// Prints a line of details on standard error, with --verbose alone.
void PrintDetail(const std::string& text);

/// Prints "zeltrans: TEXT" on standard error, in one line. If there is no memory for that, the text is "out of memory".
void PrintError(std::string_view text) noexcept;

/// Prints the error that memory has run out. Allocates none.
void PrintOutOfMemory() noexcept;

/// Prints likewise an error of several lines. Foreign texts must have passed base::TerminalText.
void PrintErrorLines(const std::string& text);

/// Prints "note: TEXT" on standard error, in one line: information about a command that succeeds all the same.
void PrintNote(const std::string& text);

/// Prints likewise a note that --strict takes as a failure.
void PrintWarning(const std::string& text);
/// The exit code of a command that has done its work: 1, with an error, if it is strict and has printed a warning.
ExitCode StrictCode(bool strict);

}  // namespace zel::cli
