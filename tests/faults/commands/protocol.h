#pragma once

#include <cstdint>

/// Between a test and the process that runs a command again and again, see failing_calls.cpp.
namespace zel::failing {

/// Kinds of calls of the system.
enum class Kind : std::uint32_t { kMemory, kOpen, kRead, kWrite, kSync, kRename, kMap, kThread };

/// One run of the command.
struct Request {
    Kind kind;
    /// The call of this number, from 0, fails; the first after `main` begins is 0.
    std::uint32_t nth;
    /// All later calls of this kind fail, too.
    std::uint32_t from_then_on;
    /// The file system has no nameless files.
    std::uint32_t only_names;
};

struct Reply {
    /// Of waitpid.
    std::int32_t status;
    /// Number of calls of the kind in this run.
    std::uint32_t calls;
};

/// Names of environment variables: the descriptor of a socket for requests and replies; a library to load before the
/// first run, which saves each run the time.
inline constexpr char kSocketVariable[] = "FAILING_CALLS_SOCKET";
inline constexpr char kLibraryVariable[] = "FAILING_CALLS_LIBRARY";

/// A run of this length hangs. It then ends by SIGALRM.
inline constexpr unsigned kMostSeconds = 60;

}  // namespace zel::failing
