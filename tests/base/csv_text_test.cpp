#include "base/csv_text.h"

#include <gtest/gtest.h>

namespace zel::test {

TEST(CsvText, IsQuotedWhereReadersNeedIt) {
    std::string line;
    for (const char* text : {"plain", "a,b", "say \"x\"", "two\r\nlines", " blank", "", "a;b"}) {
        base::AppendCsvValue(line, text);
        line += '|';
    }
    EXPECT_EQ(line, "plain|\"a,b\"|\"say \"\"x\"\"\"|\"two\r\nlines\"|\" blank\"||a;b|");
}

TEST(CsvText, IsNoFormulaAndComesBack) {
    for (const char* text : {"=1+1", "+1", "-1", "@x", "\tx", "\rx", "'x", "''"}) {
        EXPECT_EQ(base::WithFormulaGuard(text), std::string("'") + text);
        EXPECT_EQ(base::WithoutFormulaGuard(base::WithFormulaGuard(text)), text);
    }
    for (const char* text : {"", "x", "1-1", " =1", "x'"}) {
        EXPECT_EQ(base::WithFormulaGuard(text), text);
        EXPECT_EQ(base::WithoutFormulaGuard(text), text);
    }
}

}  // namespace zel::test
