#pragma once

#include <stdexcept>

namespace zel::library {

/// A library can't be opened, read or written. what() is one line with the file's name and the reason.
class LibraryError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Access {
    /// The file must exist.
    kRead,
    /// The file is created if it is missing, and the directories that lead to it.
    kWrite,
};

}  // namespace zel::library
