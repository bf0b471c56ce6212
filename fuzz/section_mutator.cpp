#include "section_mutator.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace zel::fuzz {

namespace {

// A font may have many stored glyphs.
constexpr std::size_t kMaxListed = 64;

struct ByteRange {
    std::size_t offset, size;
};

class Sections : public message::SectionObserver {
  public:
    void OnSection(const char*, std::uint64_t offset, std::uint64_t, std::uint64_t present) override {
        if (present != 0 && list.size() < kMaxListed)
            list.push_back({static_cast<std::size_t>(offset), static_cast<std::size_t>(present)});
    }
    std::vector<ByteRange> list;
};

void WriteBigEndian(std::uint8_t* out, std::size_t width, unsigned value) {
    for (std::size_t i = width; i-- > 0; value >>= 8) out[i] = static_cast<std::uint8_t>(value);
}

}  // namespace

std::size_t Below(Random& random, std::size_t end) {
    return random() % end;
}

unsigned HostileValue(Random& random) {
    constexpr unsigned kLimits[] = {0,   4,    8,      12,     16,    18,       20,         26,  32,  33,
                                    63,  64,   128,    170,    192,   200,      255,        256, 500, 512,
                                    702, 1023, 0x4000, 0x8000, 65535, 1U << 20, 0x7FFFFFFF, ~0U};
    return kLimits[Below(random, std::size(kLimits))] + static_cast<unsigned>(Below(random, 3)) - 1;
}

std::size_t MutateSections(const Format& format, std::uint8_t* data, std::size_t size, std::size_t max_size,
                           unsigned seed) {
    Random random(seed + 1);
    const std::size_t choice = Below(random, 32);
    if (choice == 0) {
        const files::Bytes fresh = format.describe(random);
        size = std::min(fresh.size(), max_size);
        std::memcpy(data, fresh.data(), size);
        return size;
    }
    Sections sections;
    format.observe({data, size}, sections);
    if (choice < 4 || sections.list.empty()) return LLVMFuzzerMutate(data, size, max_size);
    const ByteRange section = sections.list[Below(random, sections.list.size())];
    std::uint8_t* const start = data + section.offset;
    if (choice == 4) return section.offset + Below(random, section.size);  // cut
    if (choice < 12) {
        LLVMFuzzerMutate(start, section.size, section.size);
        return size;
    }
    for (std::size_t values = 1 + Below(random, 3); values-- > 0;) {
        const std::size_t width = std::min(std::size_t{1} << Below(random, 3), section.size);
        WriteBigEndian(start + Below(random, section.size - width + 1) / width * width, width, HostileValue(random));
    }
    return size;
}

}  // namespace zel::fuzz
