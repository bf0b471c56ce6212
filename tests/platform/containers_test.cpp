#include <string>

#include <gtest/gtest.h>

#include "platform/framework/clist.h"
#include "platform/framework/cmap.h"

namespace {

using NameMap = CMap<CString, const char*, CString, const char*>;

TEST(Map, LooksUpExactKeysAndLeavesTheValueAloneOtherwise) {
    NameMap map;
    CString value("before");
    EXPECT_FALSE(map.Lookup("Swiss 721 BT", value));
    map.SetAt("Swiss 721 BT", "Arial");
    EXPECT_FALSE(map.Lookup("swiss 721 BT", value));
    EXPECT_FALSE(map.Lookup("Swiss 721 BT ", value));
    EXPECT_STREQ(value, "before");
    EXPECT_TRUE(map.Lookup("Swiss 721 BT", value));
    EXPECT_STREQ(value, "Arial");
    map["Swiss 721 BT"] = "Helvetica";
    EXPECT_EQ(map.GetCount(), 1);
    EXPECT_TRUE(map.Lookup("Swiss 721 BT", value));
    EXPECT_STREQ(value, "Helvetica");
}

TEST(Map, KeepsTenThousandKeys) {
    CMap<WORD, WORD, CString, const char*> map(10);
    for (int key = 0; key < 10000; ++key) map[static_cast<WORD>(key)].Format("name %d", key);
    EXPECT_EQ(map.GetCount(), 10000);
    CString value;
    for (int key = 0; key < 10000; ++key) {
        ASSERT_TRUE(map.Lookup(static_cast<WORD>(key), value));
        ASSERT_EQ(value, ("name " + std::to_string(key)).c_str());
    }
    EXPECT_FALSE(map.Lookup(10000, value));
    map.RemoveAll();
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_FALSE(map.Lookup(1, value));
    map.SetAt(1, "again");
    EXPECT_TRUE(map.Lookup(1, value));
}

TEST(Map, HashesANumberByShiftingIt) {
    EXPECT_EQ(HashKey<WORD>(0xFFFF), 0xFFFu);
    EXPECT_EQ(HashKey<WORD>(15), 0u);
}

/// A key that counts how many of it are made.
struct CountedKey {
    CountedKey() { ++made; }
    CountedKey(const char* key) : text(key) { ++made; }
    bool operator==(const char* other) const { return text == other; }
    std::string text;
    static inline int made = 0;
};

TEST(Map, MakesNoKeyToLookOneUp) {
    CMap<CountedKey, const char*, int, int> map;
    map.SetAt("a", 1);
    const int before = CountedKey::made;
    int value = 0;
    EXPECT_TRUE(map.Lookup("a", value));
    EXPECT_FALSE(map.Lookup("b", value));
    EXPECT_EQ(CountedKey::made, before);
}

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

}  // namespace
