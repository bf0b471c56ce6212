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
    void ImportMany(int count) {
        for (int n = 0; n < count; ++n) Import();
    }
};

// mallinfo2 does not count the heap of a sanitizer; its leak check replaces this test there.
TEST_F(Memory, DoesNotGrowWithTheNumberOfImports) {
    WriteFont(BlockFont());
    WriteMessage(OneRow("ABC"));
    for (const run::ImportMode mode : {run::ImportMode::kSilent, run::ImportMode::kDialog}) {
        m_request.mode = mode;
        ImportMany(20);
        const std::size_t before = HeapInUse();
        ImportMany(1000);
        EXPECT_LT(HeapInUse(), before + 4096);
    }
}

TEST_F(Memory, DoesNotGrowWhenAnExceptionEndsEachImport) {
    samples::FontOffsets offsets;
    samples::Bytes bytes = samples::WriteFont(StoredFont(), &offsets);
    samples::WriteWholeFile(Path("MACHINE/.0001"), std::span(bytes).first(offsets.stored.at('A') + 6));
    WriteMessage(OneRow("A"));
    for (const run::ImportMode mode : {run::ImportMode::kSilent, run::ImportMode::kDialog}) {
        m_request.mode = mode;
        ImportMany(5);
        const std::size_t before = HeapInUse();
        ImportMany(200);
        EXPECT_LT(HeapInUse(), before + 4096);
    }
}

}  // namespace

}  // namespace zel::test
