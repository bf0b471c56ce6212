#include <algorithm>

#include "host/ftp/fetch.h"

namespace zel::ftp {

namespace {

struct Way {
    ListCommand command;
    ListingForm form;
};

// From the exact to the plain. LIST alone hides names with a dot in front on many servers; some take "-a" for a name.
constexpr Way kWays[] = {{ListCommand::kMlsd, ListingForm::kFacts},
                         {ListCommand::kListAll, ListingForm::kLines},
                         {ListCommand::kList, ListingForm::kLines},
                         {ListCommand::kNlst, ListingForm::kNames}};

// One command's listing, asked for again while it is cut on the way: a part of it would pass for the whole.
FtpResult ListOnce(FtpSession& session, const std::string& directory, const Way& way, const ListingLimits& limits,
                   int tries, Listing& listing) {
    FtpResult result;
    for (int done = 0; done == 0 || (IsPassing(result.error) && done < tries); ++done) {
        std::string bytes;
        const auto take = [&](std::span<const std::uint8_t> more) {
            // One byte beyond the limit shows that there was more.
            const std::size_t room = limits.bytes + 1 - bytes.size();
            bytes.append(reinterpret_cast<const char*>(more.data()), std::min(room, more.size()));
            return bytes.size() <= limits.bytes;
        };
        result = session.List(directory, way.command, take);
        if (result.error == FtpError::kStopped) result = {};
        if (result.Done()) listing = ParseListing(bytes, way.form, limits);
    }
    return result;
}

}  // namespace

FtpResult ListDirectory(FtpSession& session, const std::string& directory, const ListingLimits& limits,
                        int fruitless_tries, Listing& listing) {
    bool answered = false;
    FtpResult last;
    for (const Way& way : kWays) {
        Listing found;
        const FtpResult result = ListOnce(session, directory, way, limits, fruitless_tries, found);
        if (!result.Done() && result.error != FtpError::kRefused) return result;
        if (result.Done()) {
            if (!answered || !found.entries.empty()) listing = found;
            answered = true;
            if (!found.entries.empty()) return {};
        } else {
            last = result;
        }
    }
    return answered ? FtpResult{} : last;
}

}  // namespace zel::ftp
