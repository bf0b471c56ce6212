#include "module/tools/stored_password.h"

#include <algorithm>
#include <array>
#include <ctime>

#include "platform/framework/cstring.h"
#include "platform/system/random.h"

namespace zel::tools {

namespace {

// The stored passwords depend on these two constants: do not change them.
constexpr std::array<std::int32_t, kStoredPasswordSize> kPositions = {
    75, 61, 55, 12, 65, 70, 39, 14, 47, 43,  //
    21, 35, 28, 18, 57, 73, 41, 2,  30, 56,  //
    68, 22, 1,  20, 3,  53, 44, 49, 71, 34,  //
    72, 64, 59, 45, 48, 8,  76, 19, 36, 13,  //
    42, 66, 58, 17, 78, 67, 32, 27, 40, 11,  //
    77, 29, 5,  60, 16, 62, 23, 31, 4,  52,  //
    25, 38, 33, 69, 74, 10, 79, 0,  63, 26,  //
    24, 54, 50, 15, 46, 51, 7,  37, 9,  6,   //
};
// Not a character of a password, since an edit has one line, so no byte of the stored text is 0.
constexpr char kScrambling = '\r';

constexpr int kFirstFiller = 32, kLastFiller = 122;

constexpr bool HasEachPositionOnce() {
    for (std::int32_t position = 0; position < kStoredPasswordSize; ++position) {
        if (std::count(kPositions.begin(), kPositions.end(), position) != 1) return false;
    }
    return true;
}
static_assert(HasEachPositionOnce());
static_assert((kScrambling < kFirstFiller || kScrambling > kLastFiller) && kScrambling != 0);
static_assert(kMaxStoredPassword <= 99, "the length has two digits");

char RandomFiller() {
    int value = crt::rand();
    while (value < kFirstFiller || value > kLastFiller) value = crt::rand();
    return static_cast<char>(value);
}

void ApplyScrambling(char* field) {
    for (int i = 0; i < kStoredPasswordSize; ++i) field[i] = static_cast<char>(field[i] ^ kScrambling);
}

int SignedByte(char byte) {
    const int value = static_cast<unsigned char>(byte);
    return value < 0x80 ? value : value - 0x100;
}

}  // namespace

std::int32_t PasswordSlot(int i) noexcept {
    return i >= 0 && i < kStoredPasswordSize ? kPositions[static_cast<std::size_t>(i)] : 0;
}

void ScramblePassword(CString& s) {
    const int n = s.GetLength();
    if (n > kMaxStoredPassword || s.Find(kScrambling) >= 0) {
        s.Empty();
        return;
    }
    crt::srand(static_cast<unsigned>(std::time(nullptr)));
    CString stored;
    char* const field = stored.GetBufferSetLength(kStoredPasswordSize);
    std::generate_n(field, kStoredPasswordSize, RandomFiller);
    field[PasswordSlot(0)] = static_cast<char>('0' + n / 10);
    field[PasswordSlot(1)] = static_cast<char>('0' + n % 10);
    for (int i = 0; i < n; ++i) field[PasswordSlot(i + 2)] = s[i];
    ApplyScrambling(field);
    s = stored;
}

void UnscramblePassword(CString& s) {
    if (s.GetLength() != kStoredPasswordSize) return;
    char* const field = s.GetBuffer(kStoredPasswordSize);
    ApplyScrambling(field);
    const int length = 10 * SignedByte(field[PasswordSlot(0)]) + SignedByte(field[PasswordSlot(1)]) - 11 * '0';
    const int n = std::max(length, 0);
    CString password;
    char* const out = password.GetBufferSetLength(n);  // of a damaged field, up to more than its slots
    for (int i = 0; i < n; ++i) out[i] = field[PasswordSlot(i + 2)];
    s = password;
}

}  // namespace zel::tools
