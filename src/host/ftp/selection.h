#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/ftp/listing.h"

namespace zel::ftp {

/// What of a directory is asked for: a name, a number, a range of numbers, or a pattern.
class Selection {
  public:
    /// @param text  "12" or ".0012" or "12.TN", "1-20", "PROMO", or a pattern where '*' stands for any characters and
    ///              '?' for one. Blanks around it, and around the range's '-', don't count.
    /// @param why   receives what is wrong with a text that is none of these.
    static std::optional<Selection> Parse(std::string_view text, std::string& why);

    /// The files that are asked for, in the listing's order, those of a range in the order of their numbers. Of several
    /// names for one number only the one is taken that an import of that number opens. Good as long as the listing.
    std::vector<const ListingEntry*> Choose(const Listing& listing) const;

    /// Whether more than one file is asked for, so that one that is missing is no failure.
    bool IsMany() const noexcept { return m_kind == Kind::kRange || m_kind == Kind::kPattern; }

    /// The usual name of the one file that is asked for, ".0012" for 12; empty when IsMany.
    std::string UsualName() const;

  private:
    enum class Kind { kName, kNumber, kRange, kPattern };

    Kind m_kind = Kind::kName;
    std::string m_text;                     // name or pattern
    unsigned long m_first = 0, m_last = 0;  // of a number or range
    bool m_tn = false;                      // the number has ".TN" behind it
};

/// Whether a name fits a pattern of '*' and '?', without regard to case.
bool Matches(std::string_view pattern, std::string_view name) noexcept;

/// ".0012" of 12; a number of more than four digits has eight.
std::string UsualNameOf(unsigned long number);

}  // namespace zel::ftp
