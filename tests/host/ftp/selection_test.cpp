#include "host/ftp/selection.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

constexpr const char* kNames = ".0001\n.0002\n0002\n2\n.0003\n.0003.TN\n.0020\n.00123456\nPROMO\nNEWS.0012\n";

struct SelectionCase {
    const char* text;
    const char* names;
};

TEST(Selection, ChoosesAsTheImportDoes) {
    const ftp::Listing listing = ftp::ParseListing(kNames, ftp::ListingForm::kNames);
    const SelectionCase rows[] = {
        {"1", ".0001 "},
        {" .0001 ", ".0001 "},
        {"2", "2 "},
        {"3", ".0003 "},
        {"3.TN", ".0003.TN "},
        {"123456", ".00123456 "},
        {"4", ""},
        {"1-20", ".0001 2 .0003 .0020 "},
        {".0002 - .0003", "2 .0003 "},
        {"3, 1-2,20,1", ".0001 2 .0003 .0020 "},
        {"1,,2", "not a valid name of a message or font: 1,,2"},
        {"7-9,4-3", "the range 4-3 ends before it begins"},
        {"promo", "PROMO "},
        {".000?", ".0001 .0002 .0003 "},
        {"*.TN", ".0003.TN "},
        {"p*o", "PROMO "},
        {"3-1", "the range 3-1 ends before it begins"},
        {"../*", "a pattern applies to names, not to paths"},
        {"../.0001", "not a valid name of a message or font: ../.0001"},
        {"", "nothing is selected: give a number, a range such as 1-20, a name, or a pattern"}};
    for (const SelectionCase& row : rows) {
        std::string why, names;
        const auto selection = ftp::Selection::Parse(row.text, why);
        if (selection) {
            for (const ftp::ListingEntry* entry : selection->Choose(listing)) names += entry->name + " ";
        }
        EXPECT_EQ(selection ? names : why, row.names) << row.text;
    }
}

TEST(Selection, NamesTheNumbersOfAListThatAreMissing) {
    const ftp::Listing listing = ftp::ParseListing(kNames, ftp::ListingForm::kNames);
    std::string why;
    EXPECT_EQ(ftp::Selection::Parse("1,4,30-40,123456,5", why)->MissingNumbers(listing),
              (std::vector<unsigned long>{4, 5}));
    EXPECT_TRUE(ftp::Selection::Parse("4", why)->MissingNumbers(listing).empty()) << "the fetch itself fails";
}

TEST(SelectionPattern, GivesOnlyStarAndQuestionMarkAMeaning) {
    EXPECT_TRUE(ftp::Matches("[AI]?\\*", "[ai]x\\y"));
    EXPECT_FALSE(ftp::Matches("[ai]", "a"));
    EXPECT_FALSE(ftp::Matches("[!x]", "a"));
    EXPECT_FALSE(ftp::Matches("?", ""));
    EXPECT_TRUE(ftp::Matches("**", ""));
    EXPECT_FALSE(ftp::Matches("*a*a*a*a*a*a*a*a*a*a*a*a*b", std::string(1000, 'a'))) << "at once";
}

}  // namespace

}  // namespace zel::test
