#include "host/ftp/listing.h"

#include <algorithm>

#include "host/ftp/listing_line.h"
#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

std::optional<ListingLine> ParseLine(std::string_view line, ListingForm form) {
    switch (form) {
        case ListingForm::kFacts:
            return ParseFactsLine(line);
        case ListingForm::kLines: {
            const std::optional<ListingLine> parsed = ParseUnixLine(line);
            return parsed ? parsed : ParseDosLine(line);
        }
        case ListingForm::kNames:
            return ParseNameLine(line);
    }
    return std::nullopt;
}

bool IsTaken(const ListingLine& line) {
    if (line.special) return false;
    return line.kind == EntryKind::kDirectory ? IsDirectoryName(line.name) : IsFileName(line.name);
}

// The directory itself and the one above it stand in many listings and are no cause for a word.
bool IsUsual(const ListingLine& line) {
    return line.name == "." || line.name == "..";
}

class Parser {
  public:
    Parser(ListingForm form, const ListingLimits& limits) : m_form(form), m_limits(limits) {}

    void Take(std::string_view line) {
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.empty() || (m_form == ListingForm::kLines && line.starts_with("total "))) return;
        const std::optional<ListingLine> parsed =
            line.size() <= m_limits.line_bytes ? ParseLine(line, m_form) : std::nullopt;
        if (!parsed) {
            ++m_listing.not_understood;
        } else if (IsTaken(*parsed)) {
            m_listing.entries.push_back(
                {std::string(parsed->name), parsed->kind, parsed->size, std::string(parsed->modified)});
        } else if (!IsUsual(*parsed)) {
            if (m_listing.refused++ == 0) m_listing.first_refused = Shown(parsed->name);
        }
    }

    bool IsFull() const noexcept { return m_listing.entries.size() >= m_limits.entries; }

    Listing Done(bool cut) {
        m_listing.cut = cut;
        std::ranges::stable_sort(m_listing.entries, {}, &ListingEntry::name);
        const auto doubled = std::unique(m_listing.entries.begin(), m_listing.entries.end(),
                                         [](const auto& a, const auto& b) { return a.name == b.name; });
        m_listing.entries.erase(doubled, m_listing.entries.end());
        return std::move(m_listing);
    }

  private:
    ListingForm m_form;
    const ListingLimits& m_limits;
    Listing m_listing;
};

}  // namespace

Listing ParseListing(std::string_view bytes, ListingForm form, const ListingLimits& limits) {
    bool cut = bytes.size() > limits.bytes;
    if (cut) {
        // The line that the limit falls into may have lost the end of its name.
        bytes = bytes.substr(0, limits.bytes);
        bytes = bytes.substr(0, bytes.rfind('\n') == std::string_view::npos ? 0 : bytes.rfind('\n') + 1);
    }
    Parser parser(form, limits);
    while (!bytes.empty()) {
        if (parser.IsFull()) return parser.Done(true);
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        parser.Take(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return parser.Done(cut);
}

const ListingEntry* Listing::Find(std::string_view name) const {
    const auto exact =
        std::ranges::lower_bound(entries, name, {}, [](const auto& entry) -> std::string_view { return entry.name; });
    if (exact != entries.end() && exact->name == name) return &*exact;
    const auto found = std::ranges::find_if(entries, [&](const auto& entry) { return SameName(entry.name, name); });
    return found == entries.end() ? nullptr : &*found;
}

const ListingEntry* Listing::FindDirectory(std::string_view name) const {
    const ListingEntry* best = nullptr;
    for (const ListingEntry& entry : entries) {
        // A listing of names alone doesn't tell directories; the two of a disk are known by name.
        if (entry.kind == EntryKind::kFile || !SameName(entry.name, name)) continue;
        if (best == nullptr || entry.name == name) best = &entry;
    }
    return best;
}

}  // namespace zel::ftp
