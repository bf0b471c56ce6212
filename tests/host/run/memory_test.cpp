#include <malloc.h>

#include "host/host_disk.h"

namespace zel::test {

namespace {

/// Bytes allocated from the heap.
std::size_t HeapInUse() {
    return mallinfo2().uordblks;
}

class Memory : public HostDisk {
  protected:
    /// The growth of the heap by `count` imports after as many that are not measured.
    std::ptrdiff_t GrowthOf(int count) {
        std::size_t before = 0;
        for (int n = 0; n < 2 * count; ++n) {
            if (n == count) before = HeapInUse();
            Import();
        }
        return static_cast<std::ptrdiff_t>(HeapInUse() - before);
    }
};

// mallinfo2 does not count the heap of a sanitizer; its leak check replaces this test there.
TEST_F(Memory, DoesNotGrowWithTheNumberOfImports) {
    WriteMessage(OneRow("ABC"));
    for (const run::ImportMode mode : {run::ImportMode::kSilent, run::ImportMode::kDialog}) {
        m_request.mode = mode;
        WriteFont(BlockFont());
        EXPECT_LT(GrowthOf(500), 4096);
        // An exception ends each of these.
        WriteStoredFont(18);
        EXPECT_LT(GrowthOf(200), 4096);
    }
}

}  // namespace

}  // namespace zel::test
