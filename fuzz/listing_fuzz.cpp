// FTP listings in each of their forms.
#include <algorithm>

#include "fuzz_target.h"
#include "host/ftp/listing.h"
#include "host/ftp/remote_name.h"

using namespace zel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    constexpr ftp::ListingLimits kLimits{.bytes = 4096, .line_bytes = 128, .entries = 32};
    for (const auto form : {ftp::ListingForm::kFacts, ftp::ListingForm::kLines, ftp::ListingForm::kNames}) {
        const ftp::Listing listing = ftp::ParseListing(bytes, form, kLimits);
        fuzz::Require(listing.entries.size() <= kLimits.entries, "at most the limit of entries");
        for (const ftp::ListingEntry& entry : listing.entries) {
            fuzz::Require(entry.kind == ftp::EntryKind::kDirectory ? ftp::IsDirectoryName(entry.name)
                                                                   : ftp::IsFileName(entry.name),
                          "each name is acceptable");
            fuzz::Require(listing.Find(entry.name) == &entry, "each name once");
            fuzz::Require(entry.kind != ftp::EntryKind::kDirectory || listing.FindDirectory(entry.name) == &entry,
                          "a directory is found by its name");
        }
        fuzz::Require(listing.Find("no/name") == nullptr, "a missing name is not found");
        fuzz::Require(std::ranges::is_sorted(listing.entries, {}, &ftp::ListingEntry::name), "sorted by name");
    }
    return 0;
}
