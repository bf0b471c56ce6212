#pragma once

#include <functional>
#include <stdexcept>

namespace CLI {
class App;
}

namespace zel::cli {

/// Exit codes of the program. A command that a signal has stopped ends with 128 and the signal's number.
enum class ExitCode : int { kDone = 0, kNotDone = 1, kWrongArguments = 2, kSignal = 128 };

/// The command failed; what() names the file and the reason in one line.
class CommandError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Runs a command whose arguments have been parsed and are valid.
using CommandRun = std::function<ExitCode()>;

}  // namespace zel::cli
