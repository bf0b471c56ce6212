#include <string>

#include <gtest/gtest.h>

#include "platform/framework/clist.h"
#include "platform/framework/cmap.h"
#include "platform/framework/cstring.h"

namespace zel::test {

namespace {

TEST(List, KeepsTheOrderOfItsElements) {
    CList<CString, const char*> list(10);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    list.AddTail("b");
    list.AddTail("c");
    list.AddHead("a");
    std::string all;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;) all += list.GetNext(position);
    EXPECT_EQ(all, "abc");
    list.RemoveAll();
    EXPECT_EQ(list.GetCount(), 0);
    list.AddTail("d");
    EXPECT_EQ(list.GetCount(), 1);
}

using Names = CMap<CString, const char*, CString, const char*>;

TEST(Map, AddsReplacesAndRemoves) {
    Names names(10);
    EXPECT_TRUE(names.IsEmpty());
    EXPECT_EQ(names.GetHashTableSize(), 17U);
    CString found("untouched");
    EXPECT_FALSE(names.Lookup("a", found));
    EXPECT_FALSE(names.RemoveKey("a"));
    names.SetAt("a", "1");
    names.SetAt("a", "2");
    names["b"] = "3";
    EXPECT_EQ(names["c"], "") << "added by the access";
    EXPECT_FALSE(names.Lookup("A", found)) << "exact";
    EXPECT_EQ(found, "untouched");
    EXPECT_TRUE(names.Lookup("a", found));
    EXPECT_EQ(found, "2");
    EXPECT_EQ(names.GetCount(), 3);
    EXPECT_TRUE(names.RemoveKey("a"));
    EXPECT_FALSE(names.Lookup("a", found));
    EXPECT_EQ(names.GetSize(), 2);
    names.RemoveAll();
    EXPECT_TRUE(names.IsEmpty());
    EXPECT_FALSE(names.Lookup("b", found));
    names.SetAt("b", "4");
    EXPECT_EQ(names["b"], "4");
}

TEST(Map, WalksOverEachAssociationOnceAlsoWhileTheyAreRemoved) {
    for (const UINT buckets : {0U, 1U, 17U, 1000U}) {
        for (const BOOL now : {TRUE, FALSE}) {
            CMap<WORD, WORD, int, int> squares;
            squares.InitHashTable(buckets, now);
            EXPECT_EQ(squares.GetStartPosition(), nullptr);
            for (int n = 0; n < 300; ++n) squares.SetAt(static_cast<WORD>(n * 200), n * n);
            squares.InitHashTable(3);
            EXPECT_EQ(squares.GetHashTableSize(), buckets != 0 ? buckets : 17U) << "unchanged while not empty";
            int walked = 0;
            for (POSITION position = squares.GetStartPosition(); position != nullptr; ++walked) {
                WORD key = 0;
                int square = 0;
                squares.GetNextAssoc(position, key, square);
                EXPECT_EQ(square, key / 200 * (key / 200));
                EXPECT_TRUE(squares.RemoveKey(key));
            }
            EXPECT_EQ(walked, 300);
            EXPECT_TRUE(squares.IsEmpty());
        }
    }
}

}  // namespace

}  // namespace zel::test
