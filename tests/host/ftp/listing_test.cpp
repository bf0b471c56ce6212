#include "host/ftp/listing.h"

#include <random>

#include <gtest/gtest.h>

#include "host/ftp/remote_name.h"

namespace zel::test {

namespace {

using ftp::ListingForm;

// "name kind size time" of each entry, then the numbers of rejected names and unparsed lines.
std::string Describe(const ftp::Listing& listing) {
    std::string text;
    for (const ftp::ListingEntry& entry : listing.entries) {
        text += entry.name + " " + "fd?"[static_cast<int>(entry.kind)] + " " +
                (entry.size ? std::to_string(*entry.size) : "-") + " " +
                (entry.modified.empty() ? "-" : entry.modified) + "; ";
    }
    return text + std::to_string(listing.rejected) + " rejected, " + std::to_string(listing.unparsed) + " unparsed";
}

struct ListingCase {
    const char* name;
    ListingForm form;
    std::string bytes;
    const char* expected;
};

TEST(Listing, IsParsedLineByLine) {
    const ListingCase rows[] = {
        {"facts", ListingForm::kFacts,
         "type=file;size=4476;modify=20201231235959.123;perm=r; .0012\r\nType=dir;Modify=x; MESSAGES\n",
         ".0012 f 4476 20201231235959.123; MESSAGES d - -; 0 rejected, 0 unparsed"},
        {"facts of the directory itself", ListingForm::kFacts, "type=cdir; /disk\r\ntype=pdir; ..\r\n",
         "0 rejected, 0 unparsed"},
        {"facts with a link and a blank name", ListingForm::kFacts,
         "type=OS.unix=slink:/etc; .0012\r\ntype=file; \r\ntype=file;size=1\r\n", "2 rejected, 1 unparsed"},
        {"facts with invalid values", ListingForm::kFacts,
         "type=file;size=-1;modify=2020; .0001\r\ntype=file;size=99999999999999999999;=;;; .0002",
         ".0001 f - -; .0002 f - -; 0 rejected, 0 unparsed"},
        {"unix", ListingForm::kLines,
         "total 12\r\ndrwxr-xr-x 2 a b 4096 Jan  1 2020 MESSAGES\r\n-rw-r--r-- 1 a b 77 Dec 31 23:59 .0012\r\n",
         ".0012 f 77 -; MESSAGES d 4096 -; 0 rejected, 0 unparsed"},
        {"unix without a group or with a link", ListingForm::kLines,
         "-rw-r--r-- 1 a 77 Dec 31 23:59 .0012\nlrwxrwxrwx 1 a b 9 Dec 31 23:59 .0013 -> /etc/passwd\n",
         ".0012 f 77 -; 1 rejected, 0 unparsed"},
        {"dos", ListingForm::kLines,
         "12-31-20  11:59PM       <DIR>          MESSAGES\r\n12-31-2020  11:59PM           4476 .0012\r\n",
         ".0012 f 4476 -; MESSAGES d - -; 0 rejected, 0 unparsed"},
        {"names", ListingForm::kNames, ".0012\r\n./PROMO\r\n../up\r\n",
         ".0012 ? - -; PROMO ? - -; 1 rejected, 0 unparsed"},
        {"truncated lines", ListingForm::kLines, "-rw\n-rw-r--r-- 1 a b 77 Dec\n12-31-20\n12-31-20 1:1 5\n\n \n",
         "0 rejected, 5 unparsed"},
        {"a name twice", ListingForm::kNames, "A\nB\nA\n", "A ? - -; B ? - -; 0 rejected, 0 unparsed"}};
    for (const ListingCase& row : rows)
        EXPECT_EQ(Describe(ftp::ParseListing(row.bytes, row.form)), row.expected) << row.name;
}

TEST(Listing, IsLimitedInEveryMeasure) {
    std::string bytes;
    for (int number = 0; number < 100; ++number) bytes += std::to_string(number) + "\n";
    ftp::Listing listing = ftp::ParseListing(bytes, ListingForm::kNames, {.entries = 7});
    EXPECT_EQ(listing.entries.size(), 7U);
    EXPECT_TRUE(listing.truncated);
    listing = ftp::ParseListing("12\n3456", ListingForm::kNames, {.bytes = 5});
    EXPECT_EQ(Describe(listing), "12 ? - -; 0 rejected, 0 unparsed");  // not "34", the beginning of a name
    EXPECT_TRUE(listing.truncated);
    EXPECT_EQ(Describe(ftp::ParseListing(std::string(2000, '1'), ListingForm::kNames)), "0 rejected, 1 unparsed");
}

// No input produces a name that is not accepted.
TEST(Listing, ContainsOnlyAcceptedNamesWhateverTheInput) {
    const std::string good =
        "type=file;size=4476;modify=20201231235959; .0012\r\n-rw-r--r-- 1 a b 77 Dec 31 23:59 PROMO\r\n"
        "12-31-20  11:59PM       <DIR>          MESSAGES\r\n../up\n";
    std::minstd_rand random(1);
    for (std::size_t round = 0; round < 4000; ++round) {
        std::string bytes = good.substr(0, round % good.size());
        for (std::size_t hits = round / good.size(); hits > 0 && !bytes.empty(); --hits) {
            bytes[random() % bytes.size()] = static_cast<char>(random() >> 8);
        }
        for (const ListingForm form : {ListingForm::kFacts, ListingForm::kLines, ListingForm::kNames}) {
            for (const ftp::ListingEntry& entry : ftp::ParseListing(bytes, form).entries) {
                EXPECT_TRUE(entry.kind == ftp::EntryKind::kDirectory ? ftp::IsDirectoryName(entry.name)
                                                                     : ftp::IsFileName(entry.name));
            }
        }
    }
}

}  // namespace

}  // namespace zel::test
