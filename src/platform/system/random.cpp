#include "platform/system/random.h"

#include <cstdint>

using namespace zel;

namespace {

std::uint32_t g_state = 1;

}  // namespace

void crt::srand(unsigned seed) noexcept {
    g_state = seed;
}

// The linear congruential generator that the C standard gives as its example.
int crt::rand() noexcept {
    g_state = g_state * 1103515245U + 12345U;
    return static_cast<int>(g_state >> 16 & kRandMax);
}
