#pragma once

#include <filesystem>

/// Disks of a sample library, each with as many recordings.
inline constexpr int kLibraryDisks = 20;

/// Words in the texts of a thousandth of the recordings of a sample library, of a hundredth, and of all.
inline constexpr char kRareWord[] = "quorum", kSeldomWord[] = "harbour", kCommonWord[] = "station";

/// Makes a library of recordings with small pictures: three to eight rows of words, of which a few are frequent and
/// most are rare, a document, two fonts, two tab fields, and in every tenth a warning. The contents depend on the
/// number of recordings alone.
/// @param recordings  a multiple of kLibraryDisks.
/// @throws zel::library::LibraryError
void MakeSampleLibrary(const std::filesystem::path& file, int recordings);
