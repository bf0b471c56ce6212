// The stored password: a damaged form gives some text, and a password that is stored and read is the same.
#include <algorithm>
#include <string>

#include "fuzz_target.h"
#include "module/tools/stored_password.h"
#include "platform/framework/cstring.h"

using namespace zel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CString stored(reinterpret_cast<const char*>(data), static_cast<int>(std::min<std::size_t>(size, 200)));
    const CString password = stored;
    tools::UnscramblePassword(stored);
    fuzz::Require(size == tools::kStoredPasswordSize || stored == password, "a text of another length is unchanged");

    CString kept = password;
    tools::ScramblePassword(kept);
    if (kept.IsEmpty()) return 0;
    fuzz::Require(kept.GetLength() == tools::kStoredPasswordSize && kept.Find('\0') < 0, "the stored form is a text");
    tools::UnscramblePassword(kept);
    fuzz::Require(kept == password, "a password stored and read");
    return 0;
}
