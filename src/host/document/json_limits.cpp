#include "host/document/json_limits.h"

#include <array>
#include <cstddef>

#include "host/document/json_string.h"

namespace zel::document {

namespace {

/// In bytes. A character takes about 400, and a screen has room for a few thousand of them.
constexpr std::size_t kLargest = std::size_t{8} << 20;
/// A character has some 25, so this is enough for 12,000 of them. Parsed values take ten times the size of the text.
constexpr std::size_t kMostValues = 300000;
/// Writers of JSON recurse into what is nested; a document has 5 levels.
constexpr std::size_t kDeepest = 64;
/// A character has 14 members.
constexpr int kMostMembers = 256;

/// An object or an array that is open.
struct Level {
    bool is_object = false;
    /// Of an object: commas between its members.
    int commas = 0;
};

}  // namespace

const char* JsonExcess(std::string_view text) noexcept {
    if (text.size() > kLargest) return "is larger than 8 MiB";
    std::array<Level, kDeepest> levels;
    std::size_t depth = 0, values = 1;
    for (std::size_t n = 0; n < text.size() && values <= kMostValues; ++n) {
        switch (text[n]) {
            case '"':
                n = EndOfJsonString(text, n + 1);
                break;
            case '{':
            case '[':
                if (depth == kDeepest) return "is nested deeper than 64 levels";
                levels[depth++] = {text[n] == '{', 0};
                ++values;
                break;
            case '}':
            case ']':
                if (depth > 0) --depth;
                break;
            case ',':
                ++values;
                if (depth > 0 && levels[depth - 1].is_object && ++levels[depth - 1].commas == kMostMembers)
                    return "has an object with more than 256 members";
                break;
            default:
                break;
        }
    }
    return values > kMostValues ? "has more than 300,000 values" : nullptr;
}

}  // namespace zel::document
