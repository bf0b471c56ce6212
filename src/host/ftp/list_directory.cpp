#include "host/ftp/list_directory.h"

#include <algorithm>
#include <utility>

namespace zel::ftp {

namespace {

struct ListMethod {
    ListCommand command;
    ListingForm form;
};

// From the most exact to the plainest. Many servers hide names with a leading dot from plain LIST; some take "-a" for a
// file name.
constexpr ListMethod kMethods[] = {{ListCommand::kMlsd, ListingForm::kFacts},
                                   {ListCommand::kListAll, ListingForm::kLines},
                                   {ListCommand::kList, ListingForm::kLines},
                                   {ListCommand::kNlst, ListingForm::kNames}};

// Repeats the command if the connection is lost, because a partial listing looks like a complete one.
FtpResult ListWith(const ListMethod& method, FtpSession& session, const std::string& directory,
                   const ListingLimits& limits, int max_attempts, Listing& listing) {
    FtpResult result;
    for (int attempts = 0; attempts == 0 || (IsTemporary(result.error) && attempts < max_attempts); ++attempts) {
        std::string bytes;
        const auto receive = [&](std::span<const std::uint8_t> more) {
            // One byte beyond the limit shows that the listing was longer.
            const std::size_t room = limits.bytes + 1 - bytes.size();
            bytes.append(reinterpret_cast<const char*>(more.data()), std::min(room, more.size()));
            return bytes.size() <= limits.bytes;
        };
        result = session.List(directory, method.command, receive);
        if (result.error == FtpError::kStopped) result = {};
        if (result.Done()) listing = ParseListing(bytes, method.form, limits);
    }
    return result;
}

}  // namespace

FtpResult ListDirectory(FtpSession& session, const std::string& directory, const ListingLimits& limits,
                        int max_attempts, Listing& listing) {
    bool answered = false;
    FtpResult last;
    for (const ListMethod& method : kMethods) {
        Listing found;
        FtpResult result = ListWith(method, session, directory, limits, max_attempts, found);
        if (!result.Done() && result.error != FtpError::kRefused) return result;
        if (!result.Done()) {
            last = std::move(result);
            continue;
        }
        const bool is_empty = found.entries.empty();
        if (!answered || !is_empty) listing = std::move(found);
        if (!is_empty) return {};
        answered = true;
    }
    return answered ? FtpResult{} : last;
}

}  // namespace zel::ftp
