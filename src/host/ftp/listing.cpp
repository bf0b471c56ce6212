#include "host/ftp/listing.h"

#include <algorithm>

#include "base/fold_case.h"
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

bool IsAccepted(const ListingLine& line) {
    if (line.special) return false;
    return line.kind == EntryKind::kDirectory ? IsDirectoryName(line.name) : IsFileName(line.name);
}

// Many listings contain the directory itself and its parent; they are ignored without a note.
bool IsSelfOrParent(const ListingLine& line) {
    return line.name == "." || line.name == "..";
}

class Parser {
  public:
    Parser(ListingForm form, const ListingLimits& limits) : m_form(form), m_limits(limits) {}

    void AddLine(std::string_view line) {
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.empty() || (m_form == ListingForm::kLines && line.starts_with("total "))) return;
        const std::optional<ListingLine> parsed =
            line.size() <= m_limits.line_bytes ? ParseLine(line, m_form) : std::nullopt;
        if (!parsed) {
            ++m_listing.unparsed;
        } else if (IsAccepted(*parsed)) {
            m_listing.entries.push_back(
                {std::string(parsed->name), parsed->kind, parsed->size, std::string(parsed->modified)});
        } else if (!IsSelfOrParent(*parsed)) {
            if (m_listing.rejected++ == 0) m_listing.first_rejected = Printable(parsed->name);
        }
    }

    bool IsFull() const noexcept { return m_listing.entries.size() >= m_limits.entries; }

    Listing Finish(bool truncated) {
        m_listing.truncated = truncated;
        std::ranges::stable_sort(m_listing.entries, {}, &ListingEntry::name);
        const auto duplicates = std::unique(m_listing.entries.begin(), m_listing.entries.end(),
                                            [](const auto& a, const auto& b) { return a.name == b.name; });
        m_listing.entries.erase(duplicates, m_listing.entries.end());
        return std::move(m_listing);
    }

  private:
    ListingForm m_form;
    const ListingLimits& m_limits;
    Listing m_listing;
};

}  // namespace

Listing ParseListing(std::string_view bytes, ListingForm form, const ListingLimits& limits) {
    const bool truncated = bytes.size() > limits.bytes;
    if (truncated) {
        // The last line may be incomplete.
        bytes = bytes.substr(0, limits.bytes);
        bytes = bytes.substr(0, bytes.rfind('\n') == std::string_view::npos ? 0 : bytes.rfind('\n') + 1);
    }
    Parser parser(form, limits);
    while (!bytes.empty()) {
        if (parser.IsFull()) return parser.Finish(true);
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        parser.AddLine(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return parser.Finish(truncated);
}

const ListingEntry* Listing::Find(std::string_view name) const {
    const auto exact =
        std::ranges::lower_bound(entries, name, {}, [](const auto& entry) -> std::string_view { return entry.name; });
    if (exact != entries.end() && exact->name == name) return &*exact;
    const auto found =
        std::ranges::find_if(entries, [&](const auto& entry) { return base::EqualsFolded(entry.name, name); });
    return found == entries.end() ? nullptr : &*found;
}

const ListingEntry* Listing::FindDirectory(std::string_view name) const {
    const ListingEntry* best = nullptr;
    for (const ListingEntry& entry : entries) {
        // The kind is unknown in a listing of names alone; there the name decides.
        if (entry.kind == EntryKind::kFile || !base::EqualsFolded(entry.name, name)) continue;
        if (best == nullptr || entry.name == name) best = &entry;
    }
    return best;
}

}  // namespace zel::ftp
