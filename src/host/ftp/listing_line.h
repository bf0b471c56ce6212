#pragma once

#include <optional>
#include <string_view>

#include "host/ftp/listing.h"

namespace zel::ftp {

/// One line of a listing; the name is unchecked.
struct ListingLine {
    std::string_view name;
    EntryKind kind = EntryKind::kUnknown;
    /// A link, a device, the directory itself or its parent.
    bool special = false;
    std::optional<std::uint64_t> size{};
    std::string_view modified{};
};

/// @param line  without its line end.
/// @return nothing if the line does not have the form.
std::optional<ListingLine> ParseFactsLine(std::string_view line) noexcept;
std::optional<ListingLine> ParseUnixLine(std::string_view line) noexcept;
std::optional<ListingLine> ParseDosLine(std::string_view line) noexcept;
std::optional<ListingLine> ParseNameLine(std::string_view line) noexcept;

}  // namespace zel::ftp
