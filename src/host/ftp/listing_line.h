#pragma once

#include <optional>
#include <string_view>

#include "host/ftp/listing.h"

namespace zel::ftp {

/// What one line of a listing says, its name not yet checked.
struct ListingLine {
    std::string_view name;
    EntryKind kind = EntryKind::kUnknown;
    bool special = false;  ///< a link, a device, or the directory itself or the one above.
    std::optional<std::uint64_t> size{};
    std::string_view modified{};
};

/// @param line  without its line end.
/// @return nothing when the line isn't of the form.
std::optional<ListingLine> ParseFactsLine(std::string_view line) noexcept;
std::optional<ListingLine> ParseUnixLine(std::string_view line) noexcept;
std::optional<ListingLine> ParseDosLine(std::string_view line) noexcept;
std::optional<ListingLine> ParseNameLine(std::string_view line) noexcept;

}  // namespace zel::ftp
