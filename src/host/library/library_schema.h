#pragma once

#include <span>

namespace zel::library {

/// Stored in the file's header at byte 68: "ZelL". Distinguishes a library from other programs' files.
inline constexpr int kLibraryId = 0x5A656C4C;

/// Stored in the file's header at byte 60. A change of the tables is a new version.
inline constexpr int kLibraryVersion = 1;

/// The statements that create a library's tables, each as SQLite stores it in the file.
std::span<const char* const> LibrarySchema() noexcept;

}  // namespace zel::library
