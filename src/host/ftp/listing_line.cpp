#include "host/ftp/listing_line.h"

#include <algorithm>
#include <charconv>

#include "base/fold_case.h"
#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

std::optional<std::uint64_t> Number(std::string_view text) noexcept {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

// Removes the next token from the text, which then begins with the blank after it.
std::string_view NextToken(std::string_view& text) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view token = text.substr(0, end);
    text.remove_prefix(end);
    return token;
}

bool IsTime(std::string_view text) noexcept {
    const std::string_view seconds = text.substr(0, 14);
    const std::string_view fraction = text.substr(seconds.size());
    if (seconds.size() != 14 || !std::ranges::all_of(seconds, IsDigit)) return false;
    return fraction.empty() || (fraction.front() == '.' && std::ranges::all_of(fraction.substr(1), IsDigit));
}

bool IsMonth(std::string_view text) noexcept {
    constexpr std::string_view kMonths[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                            "jul", "aug", "sep", "oct", "nov", "dec"};
    return std::ranges::any_of(kMonths, [&](std::string_view month) { return base::EqualsFolded(text, month); });
}

void ReadFact(std::string_view fact, ListingLine& line) noexcept {
    const std::size_t equals = std::min(fact.find('='), fact.size());
    const std::string_view key = fact.substr(0, equals);
    const std::string_view value = fact.substr(std::min(equals + 1, fact.size()));
    if (base::EqualsFolded(key, "type")) {
        line.kind = base::EqualsFolded(value, "file")  ? EntryKind::kFile
                    : base::EqualsFolded(value, "dir") ? EntryKind::kDirectory
                                                       : EntryKind::kUnknown;
        line.special = line.kind == EntryKind::kUnknown;
        if (base::EqualsFolded(value, "cdir") || base::EqualsFolded(value, "pdir")) line.name = ".";
    } else if (base::EqualsFolded(key, "size")) {
        line.size = Number(value);
    } else if (base::EqualsFolded(key, "modify") && IsTime(value)) {
        line.modified = value;
    }
}

}  // namespace

// "type=file;size=4476;modify=20201231235959; .0012"
std::optional<ListingLine> ParseFactsLine(std::string_view line) noexcept {
    const std::size_t blank = line.find(' ');
    if (blank == std::string_view::npos || line.substr(0, blank).find('=') == std::string_view::npos) {
        return std::nullopt;
    }
    ListingLine parsed;
    parsed.name = line.substr(blank + 1);
    for (std::string_view facts = line.substr(0, blank); !facts.empty();) {
        const std::size_t end = std::min(facts.find(';'), facts.size());
        ReadFact(facts.substr(0, end), parsed);
        facts.remove_prefix(std::min(end + 1, facts.size()));
    }
    return parsed;
}

// "-rw-r--r--   1 owner group     4476 Dec 31 23:59 .0012"; the group may be missing, so the line is searched for the
// size and the month.
std::optional<ListingLine> ParseUnixLine(std::string_view line) noexcept {
    constexpr std::string_view kKinds = "-dlbcps";
    constexpr int kMaxTokens = 6;  // up to the month
    const std::string_view rights = NextToken(line);
    if (rights.size() < 10 || kKinds.find(rights.front()) == std::string_view::npos) return std::nullopt;
    std::optional<std::uint64_t> size;
    int tokens = 0;
    for (std::string_view token = NextToken(line); !size || !IsMonth(token); token = NextToken(line)) {
        if (++tokens == kMaxTokens) return std::nullopt;
        size = Number(token);
    }
    const std::string_view day = NextToken(line), time = NextToken(line);
    if (!Number(day) || time.empty() || !line.starts_with(' ')) return std::nullopt;
    const bool directory = rights.front() == 'd';
    return ListingLine{line.substr(1),
                       directory ? EntryKind::kDirectory : EntryKind::kFile,
                       !directory && rights.front() != '-',
                       size,
                       {}};
}

// "12-31-20  11:59PM       <DIR>          MESSAGES", "12-31-2020  11:59PM                 4476 .0012"
std::optional<ListingLine> ParseDosLine(std::string_view line) noexcept {
    const std::string_view date = NextToken(line);
    const bool dashes = (date.size() == 8 || date.size() == 10) && date[2] == '-' && date[5] == '-';
    if (!dashes || !IsDigit(date.front())) return std::nullopt;
    if (NextToken(line).find(':') == std::string_view::npos) return std::nullopt;
    const std::string_view what = NextToken(line);
    const std::optional<std::uint64_t> size = Number(what);
    if ((!size && what != "<DIR>") || line.empty()) return std::nullopt;
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return ListingLine{line, size ? EntryKind::kFile : EntryKind::kDirectory, false, size, {}};
}

std::optional<ListingLine> ParseNameLine(std::string_view line) noexcept {
    // Some servers prefix the requested directory.
    if (line.starts_with("./")) line.remove_prefix(2);
    return ListingLine{.name = line};
}

}  // namespace zel::ftp
