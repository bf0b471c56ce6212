#pragma once

#include <span>

namespace zel::library {

/// Kept in the file's header at byte 68: "ZelL". It tells a library from other programs' files.
inline constexpr int kLibraryId = 0x5A656C4C;

/// Kept in the file's header at byte 60. A change of the tables below is a new version.
inline constexpr int kLibraryVersion = 1;

/// The statements that make a library's tables, each as SQLite keeps it in the file.
std::span<const char* const> LibrarySchema() noexcept;

}  // namespace zel::library
