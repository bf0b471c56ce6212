#pragma once

#include <span>

namespace zel::library {

/// Stored in the file's header at byte 68: "ZelL". Distinguishes a library from other programs' files.
inline constexpr int kLibraryId = 0x5A656C4C;

/// Stored in the file's header at byte 60. A change of the tables is a new version. Libraries of earlier ones are read,
/// and get the tables that they lack when they are next written.
inline constexpr int kLibraryVersion = 2;
/// The first version that keeps files.
inline constexpr int kVersionWithFiles = 2;

/// The statements that create the tables of a version, each as SQLite stores it in the file; those of an earlier
/// version are the first ones of a later one's.
/// @param version  1 to kLibraryVersion.
std::span<const char* const> LibrarySchema(int version) noexcept;

}  // namespace zel::library
