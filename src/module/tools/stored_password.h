#pragma once

#include <cstdint>

class CString;

namespace zel::tools {

// The stored form of a password: a text of 80 bytes. It is filled with random characters from 32 to 122. A length of
// two decimal digits (slots 0 and 1) and the characters of the password (slots 2 and up) replace some of them; a fixed
// table maps slots to positions. Finally each byte is combined with a constant by exclusive or. This hides a password
// from a casual look. It is no encryption.

inline constexpr int kStoredPasswordSize = 80;
inline constexpr int kMaxStoredPassword = kStoredPasswordSize - 2;

/// Position of slot `i` in the stored form; 0 for a slot outside 0 to 79.
std::int32_t PasswordSlot(int i) noexcept;

/// Replaces a password by its stored form. A password that has none (more than 78 characters, or a carriage return
/// among them) becomes the empty text. The random characters are from crt::rand, seeded with the time in seconds.
void ScramblePassword(CString& s);

/// Replaces a stored form by the password. A text whose length is not 80 is unchanged. A damaged one results in an
/// arbitrary or empty text.
void UnscramblePassword(CString& s);

}  // namespace zel::tools
