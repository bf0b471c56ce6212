#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/ftp/listing.h"

namespace zel::ftp {

/// Selects files of a directory by name, number, range of numbers or pattern.
class Selection {
  public:
    /// @param text  "12", ".0012" or "12.TN"; a list of numbers and ranges, "1-20" or "1,3,7-9"; "PROMO"; or a pattern,
    ///              where '*' matches any characters and '?' matches one. Blanks around the text and around the ',' and
    ///              '-' of a list are ignored.
    /// @param why   receives the error if the text is none of these.
    static std::optional<Selection> Parse(std::string_view text, std::string& why);

    /// The selected files: those of a number or range by number, others in the listing's order. If several names have
    /// the same number, only the one that an import of that number opens. The pointers are into the listing.
    std::vector<const ListingEntry*> Choose(const Listing& listing) const;

    /// Whether more than one file may be selected, so that a missing file is no failure.
    bool IsMany() const noexcept { return m_kind == Kind::kList || m_kind == Kind::kPattern; }

    /// Numbers that a list names one by one and a listing lacks.
    std::vector<unsigned long> MissingNumbers(const Listing& listing) const;

    /// The usual name of the single selected file, ".0012" for 12; empty when IsMany.
    std::string UsualName() const;

  private:
    enum class Kind { kName, kNumber, kList, kPattern };

    struct Interval {
        unsigned long first = 0, last = 0;
    };

    bool AddIntervals(std::string_view text, std::string& why);
    bool Selects(unsigned long number) const noexcept;
    std::vector<const ListingEntry*> ChooseByName(const Listing& listing) const;
    std::vector<const ListingEntry*> ChooseByPattern(const Listing& listing) const;
    std::vector<const ListingEntry*> ChooseByNumber(const Listing& listing) const;

    Kind m_kind = Kind::kName;
    std::string m_text;                 // name or pattern
    std::vector<Interval> m_intervals;  // of a number or list
    bool m_tn = false;                  // the number is followed by ".TN"
};

/// Whether a name matches a pattern of '*' and '?', ignoring the case of ASCII letters.
bool Matches(std::string_view pattern, std::string_view name);

/// ".0012" for 12; a number of more than four digits gets eight.
std::string UsualNameOf(unsigned long number);

}  // namespace zel::ftp
