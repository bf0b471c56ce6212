// The cost of a character: no allocation, and one opened file for a stored bitmap glyph.
#include <atomic>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "module/contract/zel_message.h"
#include "support/module_fixture.h"

#if defined(__SANITIZE_ADDRESS__)
#define COUNT_BY_HOOK 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define COUNT_BY_HOOK 1
#endif
#endif

namespace {

std::atomic<int> g_allocations = 0;
std::atomic<int> g_opened = 0;

int Open(const char* path, int flags, unsigned mode) {
    ++g_opened;
    return static_cast<int>(syscall(SYS_openat, -100 /* the current directory */, path, flags, mode));
}

}  // namespace

// Replaces the system's functions for the platform layer, under both names that a build may use. <fcntl.h> would
// redirect the names, so it isn't included.
extern "C" int CountedOpen(const char* path, int flags, ...) __asm__("open");
extern "C" int CountedOpen64(const char* path, int flags, ...) __asm__("open64");
extern "C" __attribute__((visibility("default"))) int CountedOpen(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const unsigned mode = va_arg(rest, unsigned);
    va_end(rest);
    return Open(path, flags, mode);
}
extern "C" __attribute__((visibility("default"))) int CountedOpen64(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const unsigned mode = va_arg(rest, unsigned);
    va_end(rest);
    return Open(path, flags, mode);
}

#ifdef COUNT_BY_HOOK
// Declared here, since not every compiler has the header.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*malloc_hook)(const volatile void*, std::size_t),
                                                         void (*free_hook)(const volatile void*));
namespace {
const int g_hook = __sanitizer_install_malloc_and_free_hooks([](const volatile void*, std::size_t) { ++g_allocations; },
                                                             [](const volatile void*) {});
}
#else
extern "C" void* __libc_malloc(std::size_t);
extern "C" void* __libc_calloc(std::size_t, std::size_t);
extern "C" void* __libc_realloc(void*, std::size_t);
extern "C" __attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
    ++g_allocations;
    return __libc_malloc(size);
}
extern "C" __attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
    ++g_allocations;
    return __libc_calloc(count, size);
}
extern "C" __attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) noexcept {
    ++g_allocations;
    return __libc_realloc(block, size);
}
#endif

#include "module/state/module_state.h"

using namespace zel;

namespace {

using module_test::FontSet;
using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using module_test::PlainFont;

int g_calls = 0;
void CountCall(CWnd*, tag_CharInf*, unsigned) {
    ++g_calls;
}

struct Cost {
    int calls, allocations, opened;
};

class CostOfTheWalk : public ModuleTest {
  protected:
    CostOfTheWalk() {
        samples::FontFile font = PlainFont("Fam Regular", "A");
        font.header.font_id_text = "5007";
        font.AddStored('S', module_test::SolidGlyph(3, 3), 0, 0);
        WriteFont(1, font);
        CString path("D:\\MACHINE");
        EXPECT_EQ(m_fonts.ReadFont(path, 1, 0, false), 1);
        m_dialog.m_mapBitStreamId.SetAt(7, "Number seven, a name that fits no small buffer, bold BT");
        m_dialog.m_mapBitStreamFamily.SetAt("Fam", "Family of a name that fits no small buffer, bold BT");
        m_dialog.m_mapTypeFace.SetAt("Family of a name that fits no small buffer, bold BT", "Installed");
    }
    Cost Run(std::size_t count, char character, bool tt_convert) {
        WriteMessage(MessageOf({samples::RowFromText(99, std::string(count, character), 0, 9)}));
        CZelMessage message("", "D:\\MESSAGES", ".0001", &m_dialog);
        EXPECT_TRUE(message.ReadMessage(&m_dialog));
        g_pfnOnChar = &CountCall;
        g_calls = g_allocations = g_opened = 0;
        message.EmitCharacters(&Host(), &m_fonts, true, tt_convert);
        return {g_calls, g_allocations, g_opened};
    }

  private:
    OpenDialog m_dialog{nullptr};
    FontSet m_fonts;
};

TEST_F(CostOfTheWalk, RowOf63CharactersAllocatesNoMoreThanARowOfOne) {
    for (const char character : {'A', 'S', '?'}) {
        for (const bool tt_convert : {false, true}) {
            SCOPED_TRACE(character);
            const Cost one = Run(1, character, tt_convert), many = Run(63, character, tt_convert);
            EXPECT_EQ(one.calls, 1);
            EXPECT_EQ(many.calls, 63);
            EXPECT_GT(one.allocations, 0) << "the two records of the walk, so the count works";
            EXPECT_EQ(many.allocations, one.allocations);
        }
    }
}

TEST_F(CostOfTheWalk, StoredGlyphOpensItsFileOnceAndARunCodedNone) {
    EXPECT_EQ(Run(10, 'A', false).opened, 0);
    EXPECT_EQ(Run(10, 'S', false).opened, 10);
    EXPECT_EQ(Run(10, 'S', true).opened, 10);
}

}  // namespace
