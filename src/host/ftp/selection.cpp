#include "host/ftp/selection.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

constexpr std::size_t kMostText = 64;

std::string_view Trimmed(std::string_view text) noexcept {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

// A plain number of a range, one leading dot ignored.
std::optional<unsigned long> RangeEnd(std::string_view text) noexcept {
    const std::optional<NumberedName> number = NumberOf(Trimmed(text));
    if (!number || number->tn) return std::nullopt;
    return number->number;
}

// How early an import of a number tries a name: as it was typed, with dot, without.
int Rank(std::string_view name) {
    const bool dot = name.starts_with('.');
    const std::size_t digits = std::min(name.find('.', 1), name.size()) - (dot ? 1 : 0);
    if (dot) return digits == 4 || digits == 8 ? 1 : 4;
    return name.front() != '0' ? 0 : digits == 4 ? 2 : 3;
}

bool IsFileOrUnknown(const ListingEntry& entry) noexcept {
    return entry.kind != EntryKind::kDirectory;
}

}  // namespace

std::optional<Selection> Selection::Parse(std::string_view text, std::string& why) {
    text = Trimmed(text);
    Selection selection;
    const auto fail = [&why](std::string words) {
        why = std::move(words);
        return std::optional<Selection>();
    };
    if (text.empty()) return fail("no file is named: give a number, a range such as 1-20, a name, or a pattern");
    if (text.size() > kMostText) return fail("the name is too long");
    selection.m_text = text;
    if (const std::optional<NumberedName> number = NumberOf(text)) {
        selection.m_kind = Kind::kNumber;
        selection.m_first = selection.m_last = number->number;
        selection.m_tn = number->tn;
        return selection;
    }
    const std::size_t dash = text.find('-');
    if (dash != std::string_view::npos) {
        const auto first = RangeEnd(text.substr(0, dash)), last = RangeEnd(text.substr(dash + 1));
        if (first && last) {
            if (*first > *last) return fail("the range " + Shown(text) + " ends before it begins");
            selection.m_kind = Kind::kRange;
            selection.m_first = *first;
            selection.m_last = *last;
            return selection;
        }
    }
    if (text.find_first_of("*?") != std::string_view::npos) {
        if (text.find_first_of("/\\") != std::string_view::npos) return fail("a pattern is of names, not of paths");
        selection.m_kind = Kind::kPattern;
        return selection;
    }
    if (!IsFileName(text)) return fail("no message or font can have the name " + Shown(text));
    return selection;
}

std::vector<const ListingEntry*> Selection::Choose(const Listing& listing) const {
    std::vector<const ListingEntry*> chosen;
    if (m_kind == Kind::kName) {
        const ListingEntry* const entry = listing.Find(m_text);
        if (entry != nullptr && IsFileOrUnknown(*entry)) chosen.push_back(entry);
        return chosen;
    }
    if (m_kind == Kind::kPattern) {
        for (const ListingEntry& entry : listing.entries) {
            if (IsFileOrUnknown(entry) && Matches(m_text, entry.name)) chosen.push_back(&entry);
        }
        return chosen;
    }
    std::map<unsigned long, const ListingEntry*> by_number;
    for (const ListingEntry& entry : listing.entries) {
        const std::optional<NumberedName> number = NumberOf(entry.name);
        if (!number || number->tn != m_tn || !IsFileOrUnknown(entry)) continue;
        if (number->number < m_first || number->number > m_last) continue;
        const ListingEntry*& best = by_number[number->number];
        if (best == nullptr || Rank(entry.name) < Rank(best->name)) best = &entry;
    }
    for (const auto& [number, entry] : by_number) chosen.push_back(entry);
    return chosen;
}

std::string Selection::UsualName() const {
    if (IsMany()) return {};
    return m_kind == Kind::kName ? m_text : UsualNameOf(m_first) + (m_tn ? ".TN" : "");
}

bool Matches(std::string_view pattern, std::string_view name) noexcept {
    // On a mismatch only the last '*' needs to take a character more, so this takes at most the product of the lengths.
    std::size_t at = 0, in_name = 0, star = std::string_view::npos, resume = 0;
    while (in_name < name.size()) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            resume = in_name;
        } else if (at < pattern.size() &&
                   (pattern[at] == '?' || SameName(pattern.substr(at, 1), name.substr(in_name, 1)))) {
            ++at;
            ++in_name;
        } else if (star != std::string_view::npos) {
            at = star + 1;
            in_name = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

std::string UsualNameOf(unsigned long number) {
    char name[24];
    std::snprintf(name, sizeof name, number < 10000 ? ".%04lu" : ".%08lu", number);
    return name;
}

}  // namespace zel::ftp
