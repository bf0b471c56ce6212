#include "samples/name_lists.h"

#include <gtest/gtest.h>

namespace zel::samples {
namespace {

TEST(BitstreamListText, HasHeadingsFamiliesAndBothKindsOfEntries) {
    BitstreamList list("one", "two");
    list.Family("Sans 20", "also so").Style("bold", 21).Style("roman", 20, "book").Plain("Lone", 7).Line("");
    EXPECT_EQ(list.Written(), "one\ntwo\nSans 20 = also so\n\tbold\t21\n\troman = book\t20\nLone\t7\n\n");
}

TEST(TypefaceListText, HasHeadingsAndPairs) {
    TypefaceList list("one", "two");
    list.Typeface("DejaVu Sans", "Sans 20 bold BT").Line("no tab");
    EXPECT_EQ(list.Written(), "one\ntwo\nDejaVu Sans\tSans 20 bold BT\nno tab\n");
}

}  // namespace
}  // namespace zel::samples
