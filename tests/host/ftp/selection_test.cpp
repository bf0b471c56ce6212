#include "host/ftp/selection.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

constexpr const char* kNames = ".0001\n.0002\n0002\n2\n.0003\n.0003.TN\n.0020\n.00123456\nPROMO\nNEWS.0012\n";

struct Chosen {
    const char* text;
    const char* names;
};
void PrintTo(const Chosen& row, std::ostream* out) {
    *out << '"' << row.text << '"';
}
class SelectionTexts : public testing::TestWithParam<Chosen> {};

TEST_P(SelectionTexts, ChooseByTheImportsRules) {
    const ftp::Listing listing = ftp::ParseListing(kNames, ftp::ListingForm::kNames);
    std::string why, names;
    const auto selection = ftp::Selection::Parse(GetParam().text, why);
    if (selection) {
        for (const ftp::ListingEntry* entry : selection->Choose(listing)) names += entry->name + " ";
    }
    EXPECT_EQ(selection ? names : why, GetParam().names);
}
INSTANTIATE_TEST_SUITE_P(
    Each, SelectionTexts,
    testing::Values(Chosen{"1", ".0001 "}, Chosen{" .0001 ", ".0001 "}, Chosen{"2", "2 "}, Chosen{"3", ".0003 "},
                    Chosen{"3.TN", ".0003.TN "}, Chosen{"123456", ".00123456 "}, Chosen{"4", ""},
                    Chosen{"1-20", ".0001 2 .0003 .0020 "}, Chosen{".0002 - .0003", "2 .0003 "},
                    Chosen{"promo", "PROMO "}, Chosen{".000?", ".0001 .0002 .0003 "}, Chosen{"*.TN", ".0003.TN "},
                    Chosen{"p*o", "PROMO "}, Chosen{"3-1", "the range 3-1 ends before it begins"},
                    Chosen{"../*", "a pattern is of names, not of paths"},
                    Chosen{"../.0001", "no message or font can have the name ../.0001"},
                    Chosen{"", "no file is named: give a number, a range such as 1-20, a name, or a pattern"}));

TEST(SelectionPattern, TakesNoTimeOverManyStars) {
    EXPECT_FALSE(ftp::Matches("*a*a*a*a*a*a*a*a*a*a*a*a*b", std::string(1000, 'a')));
    EXPECT_TRUE(ftp::Matches("**", ""));
    EXPECT_FALSE(ftp::Matches("?", ""));
}

}  // namespace

}  // namespace zel::test
