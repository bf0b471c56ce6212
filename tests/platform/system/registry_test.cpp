#include "platform/system/registry.h"

#include <cstring>

#include <gtest/gtest.h>

#include "platform/framework/cwinapp.h"
#include "platform/script/memory_settings_store.h"
#include "platform/system/errors.h"

namespace zel::test {

namespace {

constexpr const char* kList = "Software\\Kovesh\\Tavro\\ZelTrans\\FontDir";

class Registry : public testing::Test {
  protected:
    void SetUp() override { seam::SetSettingsStore(&m_store); }
    void TearDown() override { seam::SetSettingsStore(nullptr); }

    static LONG Open(const char* path) {
        HKEY key = nullptr;
        const LONG result = RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_ALL_ACCESS, &key);
        EXPECT_EQ(key != nullptr, result == 0);
        if (key != nullptr) RegCloseKey(key);
        return result;
    }
    static void Store(const char* path, const char* name, const char* text) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                                  &key, nullptr),
                  0);
        EXPECT_EQ(RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                                 static_cast<DWORD>(std::strlen(text) + 1)),
                  0);
        EXPECT_EQ(RegCloseKey(key), 0);
    }

    script::MemorySettingsStore m_store;
};

TEST_F(Registry, OpensOnlyKeysThatWereMade) {
    EXPECT_EQ(Open(kList), 2);
    Store(kList, "FontDir 0", "D:\\f");
    EXPECT_EQ(Open(kList), 0);
    EXPECT_EQ(Open("software\\kovesh"), 0) << "missing keys above it are created, and case is ignored";
}

TEST_F(Registry, ReportsTheSizeOfAValueBeforeItsBytes) {
    Store(kList, "FontDir 0", "D:\\f");
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, kList, 0, KEY_ALL_ACCESS, &key), 0);
    DWORD type = 0, size = 0;
    EXPECT_EQ(RegQueryValueExA(key, "fontdir 0", nullptr, &type, nullptr, &size), 0);
    EXPECT_EQ(type, REG_SZ);
    EXPECT_EQ(size, 5u);
    char text[5] = "old";
    size = 4;
    EXPECT_EQ(RegQueryValueExA(key, "FontDir 0", nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size), 234);
    EXPECT_EQ(size, 5u);
    EXPECT_STREQ(text, "old");
    EXPECT_EQ(RegQueryValueExA(key, "FontDir 0", nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size), 0);
    EXPECT_STREQ(text, "D:\\f");
    EXPECT_EQ(RegQueryValueExA(key, "FontDir 1", nullptr, nullptr, nullptr, &size), 2);
    RegCloseKey(key);
}

TEST_F(Registry, DeletesAKeyWithItsValuesUnlessItHasSubKeys) {
    Store(kList, "FontDir 0", "D:\\f");
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Kovesh"), 5);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, kList), 0);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, kList), 2);
    EXPECT_EQ(Open(kList), 2);
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), 0);
}

TEST_F(Registry, KeepsTheProfileApart) {
    CWinApp& app = *AfxGetApp();
    EXPECT_EQ(app.GetProfileIntA("ZELFNTSaveOptions", "SkipWarnings", 7), 7u);
    EXPECT_TRUE(app.WriteProfileInt("ZELFNTSaveOptions", "SkipWarnings", -1));
    EXPECT_EQ(static_cast<int>(app.GetProfileIntA("zelfntsaveoptions", "skipwarnings", 7)), -1);
    EXPECT_STREQ(app.GetProfileStringA("ZELFNTSaveOptions", "SkipWarnings", "none"), "none") << "a number is no text";
    EXPECT_TRUE(app.WriteProfileStringA("ZELFTPSaveOptions", "Password", "\x81\xFE"));
    EXPECT_STREQ(app.GetProfileStringA("ZELFTPSaveOptions", "Password"), "\x81\xFE");
    EXPECT_STREQ(app.GetProfileStringA("ZELFTPSaveOptions", "Username"), "");
}

}  // namespace

}  // namespace zel::test
