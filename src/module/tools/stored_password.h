#pragma once

#include <cstdint>

class CString;

namespace zel::tools {

/// The stored form of a password: a text of 80 bytes, filled with random characters of 32 to 122. Over the filler lie,
/// scattered by a fixed table, a length of two decimal digits (slots 0 and 1) and the password's characters (from slot
/// 2 up). Then every byte is changed by exclusive or with one constant. It keeps a password from a passing glance, not
/// from anyone who has this code.

inline constexpr int kStoredPasswordSize = 80;
inline constexpr int kMaxStoredPassword = kStoredPasswordSize - 2;

/// Position in the stored form of slot `i`, 0 for a slot outside 0 to 79.
std::int32_t PasswordSlot(int i) noexcept;

/// Replaces a password by its stored form. One that the form can't hold (more than 78 characters, or a carriage return
/// among them) becomes the empty text, which stores none. The filler comes from crt::rand, seeded with the time in
/// seconds.
void ScramblePassword(CString& s);

/// Replaces a stored form by the password. A text of another length than 80 is left as it is; a damaged one gives some
/// text or none.
void UnscramblePassword(CString& s);

}  // namespace zel::tools
