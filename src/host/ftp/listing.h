#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Directory listings of FTP servers. Any input can be parsed: invalid lines and unacceptable names are counted and
/// ignored.
namespace zel::ftp {

/// The form of a listing: facts and a name (MLSD), lines for a person (LIST) in Unix or DOS style, names alone (NLST).
enum class ListingForm { kFacts, kLines, kNames };

enum class EntryKind {
    kFile,
    kDirectory,
    /// The listing does not say.
    kUnknown,
};

struct ListingEntry {
    /// Accepted by IsDirectoryName for a directory, by IsFileName otherwise.
    std::string name;
    EntryKind kind = EntryKind::kUnknown;
    /// In bytes.
    std::optional<std::uint64_t> size{};
    /// Digits of a UTC time, YYYYMMDDHHMMSS with an optional fraction. Only MLSD gives a time that is exact enough.
    std::string modified{};
};

/// Far more than a disk of messages needs.
struct ListingLimits {
    std::size_t bytes = 4U << 20;
    std::size_t line_bytes = 1024;
    std::size_t entries = 20000;
};

struct Listing {
    /// Sorted by name, each name once.
    std::vector<ListingEntry> entries;
    /// Number of unacceptable names, links and special files.
    std::size_t rejected = 0;
    /// The first rejected name, Printable.
    std::string first_rejected;
    /// Number of invalid lines.
    std::size_t unparsed = 0;
    /// A limit was reached; the rest was ignored.
    bool truncated = false;

    /// The entry of a name: an exact match, else one that differs in case; null for none.
    const ListingEntry* Find(std::string_view name) const;
    /// The directory of a name, found in the same way.
    const ListingEntry* FindDirectory(std::string_view name) const;
};

/// @param bytes  from the server; the last line need not have a line end.
Listing ParseListing(std::string_view bytes, ListingForm form, const ListingLimits& limits = {});

}  // namespace zel::ftp
