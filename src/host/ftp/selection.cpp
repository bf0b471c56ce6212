#include "host/ftp/selection.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include <fnmatch.h>

#include "base/fold_case.h"
#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

/// Far more than a list for a disk needs.
constexpr std::size_t kMaxTextSize = 4096;

std::string_view Trimmed(std::string_view text) noexcept {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

// One end of a range: a number, with or without a leading dot.
std::optional<unsigned long> RangeEnd(std::string_view text) noexcept {
    const std::optional<NumberedName> number = NumberOf(Trimmed(text));
    if (!number || number->tn) return std::nullopt;
    return number->number;
}

// The order in which an import of a number tries the names: as typed, with a dot, without.
int Rank(std::string_view name) {
    const bool dot = name.starts_with('.');
    const std::size_t digits = std::min(name.find('.', 1), name.size()) - (dot ? 1 : 0);
    if (dot) return digits == 4 || digits == 8 ? 1 : 4;
    return name.front() != '0' ? 0 : digits == 4 ? 2 : 3;
}

}  // namespace

std::optional<Selection> Selection::Parse(std::string_view text, std::string& why) {
    text = Trimmed(text);
    Selection selection;
    const auto fail = [&why](std::string error) {
        why = std::move(error);
        return std::optional<Selection>();
    };
    if (text.empty()) return fail("nothing is selected: give a number, a range such as 1-20, a name, or a pattern");
    if (text.size() > kMaxTextSize) return fail("the name is too long");
    selection.m_text = text;
    if (const std::optional<NumberedName> number = NumberOf(text)) {
        selection.m_kind = Kind::kNumber;
        selection.m_intervals = {{number->number, number->number}};
        selection.m_tn = number->tn;
        return selection;
    }
    if (text.find_first_of(",-") != std::string_view::npos) {
        std::string error;
        if (selection.AddIntervals(text, error)) {
            selection.m_kind = Kind::kList;
            return selection;
        }
        if (!error.empty()) return fail(error);
    }
    if (text.find_first_of("*?") != std::string_view::npos) {
        if (text.find_first_of("/\\") != std::string_view::npos)
            return fail("a pattern applies to names, not to paths");
        selection.m_kind = Kind::kPattern;
        return selection;
    }
    if (!IsFileName(text)) return fail("not a valid name of a message or font: " + Printable(text));
    return selection;
}

/// @param why  receives the error of what can only be a list.
/// @return false for a text that is none.
bool Selection::AddIntervals(std::string_view text, std::string& why) {
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view part = text.substr(begin, end - begin);
        const std::size_t dash = part.find('-');
        const auto first = RangeEnd(part.substr(0, dash));
        const auto last = dash == std::string_view::npos ? first : RangeEnd(part.substr(dash + 1));
        if (!first || !last) return false;
        if (*first > *last) {
            why = "the range " + Printable(part) + " ends before it begins";
            return false;
        }
        m_intervals.push_back({*first, *last});
        begin = end + 1;
    }
    return true;
}

bool Selection::Selects(unsigned long number) const noexcept {
    return std::ranges::any_of(m_intervals, [number](const Interval& interval) {
        return interval.first <= number && number <= interval.last;
    });
}

std::vector<unsigned long> Selection::MissingNumbers(const Listing& listing) const {
    std::vector<unsigned long> missing;
    if (m_kind != Kind::kList) return missing;
    for (const Interval& interval : m_intervals) {
        const bool is_there = std::ranges::any_of(listing.entries, [&](const ListingEntry& entry) {
            const std::optional<NumberedName> number = NumberOf(entry.name);
            return number && !number->tn && number->number == interval.first && entry.kind != EntryKind::kDirectory;
        });
        if (interval.first == interval.last && !is_there) missing.push_back(interval.first);
    }
    return missing;
}

std::vector<const ListingEntry*> Selection::Choose(const Listing& listing) const {
    switch (m_kind) {
        case Kind::kName:
            return ChooseByName(listing);
        case Kind::kPattern:
            return ChooseByPattern(listing);
        case Kind::kNumber:
        case Kind::kList:
            break;
    }
    return ChooseByNumber(listing);
}

std::vector<const ListingEntry*> Selection::ChooseByName(const Listing& listing) const {
    const ListingEntry* const entry = listing.Find(m_text);
    if (entry == nullptr || entry->kind == EntryKind::kDirectory) return {};
    return {entry};
}

std::vector<const ListingEntry*> Selection::ChooseByPattern(const Listing& listing) const {
    std::vector<const ListingEntry*> chosen;
    for (const ListingEntry& entry : listing.entries) {
        if (entry.kind != EntryKind::kDirectory && Matches(m_text, entry.name)) chosen.push_back(&entry);
    }
    return chosen;
}

std::vector<const ListingEntry*> Selection::ChooseByNumber(const Listing& listing) const {
    std::map<unsigned long, const ListingEntry*> by_number;
    for (const ListingEntry& entry : listing.entries) {
        const std::optional<NumberedName> number = NumberOf(entry.name);
        if (!number || number->tn != m_tn || entry.kind == EntryKind::kDirectory) continue;
        if (!Selects(number->number)) continue;
        const ListingEntry*& best = by_number[number->number];
        if (best == nullptr || Rank(entry.name) < Rank(best->name)) best = &entry;
    }
    std::vector<const ListingEntry*> chosen;
    chosen.reserve(by_number.size());
    for (const auto& [number, entry] : by_number) chosen.push_back(entry);
    return chosen;
}

std::string Selection::UsualName() const {
    if (IsMany()) return {};
    return m_kind == Kind::kName ? m_text : UsualNameOf(m_intervals.front().first) + (m_tn ? ".TN" : "");
}

bool Matches(std::string_view pattern, std::string_view name) {
    // FNM_CASEFOLD would fold by the locale, where an 'I' need not match an 'i'.
    std::string folded_pattern, folded_name;
    for (const char c : pattern) {
        if (c == '[' || c == '\\') folded_pattern += '\\';  // special to fnmatch, but not here
        folded_pattern += static_cast<char>(base::FoldCase(c));
    }
    for (const char c : name) folded_name += static_cast<char>(base::FoldCase(c));
    return fnmatch(folded_pattern.c_str(), folded_name.c_str(), 0) == 0;
}

std::string UsualNameOf(unsigned long number) {
    char name[24];
    std::snprintf(name, sizeof name, number < 10000 ? ".%04lu" : ".%08lu", number);
    return name;
}

}  // namespace zel::ftp
