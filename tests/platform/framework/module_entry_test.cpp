#include "platform/framework/module_entry.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "platform/framework/cwinapp.h"
#include "platform/framework/extension_module.h"
#include "platform/system/errors.h"

namespace zel::test {

namespace {

class ModuleLoading : public testing::Test {
  protected:
    void SetUp() override { ::unsetenv("MODULE_TRACE"); }
    static std::string Trace() {
        const char* const trace = std::getenv("MODULE_TRACE");
        return trace != nullptr ? trace : "";
    }
};

TEST_F(ModuleLoading, CallsHookStaticsAndEntryInOrderAndInReverse) {
    void* const library = AfxLoadLibrary(WILLING_MODULE);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(Trace(), "hook1 static entry1 ");
    ASSERT_NE(AfxGetModuleState()->m_libraryList.GetHead(), nullptr);
    EXPECT_STREQ(AfxGetModuleState()->m_libraryList.GetHead()->m_hModule->name, "recording");

    EXPECT_TRUE(AfxFreeLibrary(library));
    EXPECT_EQ(Trace(), "hook1 static entry1 entry0 ~static hook0 ");
    EXPECT_EQ(AfxGetModuleState()->m_libraryList.GetHead(), nullptr);
}

TEST_F(ModuleLoading, RestoresTheHeadsOfTheSharedLists) {
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    int place = 0;
    auto* const head = reinterpret_cast<CRuntimeClass*>(&place);
    state.m_classList.m_pHead = head;
    void* const library = AfxLoadLibrary(WILLING_MODULE);
    EXPECT_EQ(state.m_classList.GetHead(), head);
    AfxFreeLibrary(library);
    state.m_classList.m_pHead = nullptr;
}

TEST_F(ModuleLoading, RefusesAModuleWhoseEntryReturnsZeroAndUnloadsIt) {
    EXPECT_EQ(AfxLoadLibrary(REFUSING_MODULE), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_DLL_INIT_FAILED);
    EXPECT_EQ(Trace(), "hook1 static entry1 entry0 ~static hook0 ");

    void* const library = AfxLoadLibrary(WILLING_MODULE);
    EXPECT_NE(library, nullptr) << "a refusal affects one load only";
    AfxFreeLibrary(library);
}

TEST_F(ModuleLoading, RefusesAMissingFile) {
    EXPECT_EQ(AfxLoadLibrary("/nowhere/libnothing.so"), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_MOD_NOT_FOUND);
    EXPECT_FALSE(AfxFreeLibrary(nullptr));
}

TEST(ExtensionModule, RefusesANullHandle) {
    AFX_EXTENSION_MODULE record{};
    EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
}

}  // namespace

}  // namespace zel::test
