#include <string>

#include <gtest/gtest.h>

#include "platform/framework/clist.h"
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

}  // namespace

}  // namespace zel::test
