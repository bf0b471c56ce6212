#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Directory listings as FTP servers give them. Whatever a server sends can be parsed: what isn't understood, and names
/// that can't be taken, are counted and left out.
namespace zel::ftp {

/// How a listing is written: facts and a name (MLSD); lines for people (LIST), in the form of Unix or of DOS; names
/// alone (NLST).
enum class ListingForm { kFacts, kLines, kNames };

enum class EntryKind {
    kFile,
    kDirectory,
    kUnknown,  ///< the listing doesn't tell.
};

struct ListingEntry {
    std::string name;  ///< IsFileName for a file and for the unknown, IsDirectoryName for a directory.
    EntryKind kind = EntryKind::kUnknown;
    std::optional<std::uint64_t> size{};  ///< bytes.
    std::string modified{};  ///< digits of a UTC time, YYYYMMDDHHMMSS and perhaps a fraction; MLSD alone is exact
                             ///< enough to tell it.
};

/// Far more than a disk of messages has.
struct ListingLimits {
    std::size_t bytes = 4U << 20;
    std::size_t line_bytes = 1024;
    std::size_t entries = 20000;
};

struct Listing {
    std::vector<ListingEntry> entries;  ///< sorted by name, each name once.
    std::size_t refused = 0;            ///< names that can't be taken, links and the like.
    std::string first_refused;          ///< one of them, as it can be shown.
    std::size_t not_understood = 0;     ///< lines.
    bool cut = false;                   ///< a limit was reached; what came behind it is left out.

    /// The entry of a name: to the letter, else without regard to case; null when there is none.
    const ListingEntry* Find(std::string_view name) const;
    /// A directory of that name, in whatever case.
    const ListingEntry* FindDirectory(std::string_view name) const;
};

/// @param bytes  what the server sent; a last line without its end counts.
Listing ParseListing(std::string_view bytes, ListingForm form, const ListingLimits& limits = {});

}  // namespace zel::ftp
