#pragma once

#include <string>

namespace zel::screen_test {

/// A directory with the demonstration disk, NEWS, and a library with all of its messages, library.zellib. They are made
/// once for each build of the tests and kept beside the program, since CTest runs each test in a process of its own and
/// an unoptimised import takes seconds. Nothing may be written there.
/// Needs the application.
std::string RecordedDisk();

}  // namespace zel::screen_test
