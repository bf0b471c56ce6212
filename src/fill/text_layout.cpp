#include "fill/text_layout.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "base/text.h"
#include "module/contract/records/tab_field.h"

namespace zel::fill {

namespace {

/// The largest char_x, which has 10 bits.
constexpr int kLastX = 1023;

/// The places of a field for characters, in pixels.
struct Span {
    explicit Span(const Field& field)
        : first(static_cast<int>(field.start) + kXOffset),
          last(std::min(static_cast<int>(field.end), kLastX)),
          room(field.Room()) {}

    /// Whether a text fits.
    /// @param before  advances of all characters but the last one, and `advance` of that one.
    bool Fits(std::int64_t before, int advance) const noexcept {
        return before + advance <= room && first + before <= last;
    }

    int first, last, room;
};

std::size_t CountOfFitting(std::span<const int> advances, const Span& span) {
    std::int64_t before = 0;
    std::size_t count = 0;
    while (count < advances.size() && span.Fits(before, advances[count])) before += advances[count++];
    return count;
}

std::vector<unsigned> Natural(std::span<const int> advances, const Span& span) {
    std::vector<unsigned> x;
    int at = span.first;
    for (const int advance : advances) {
        x.push_back(static_cast<unsigned>(at));
        at += advance;
    }
    return x;
}

/// The positions with all distances reduced in the same proportion; none if they would be less than half.
std::vector<unsigned> Squeezed(std::span<const int> advances, const Span& span) {
    const auto before = advances.first(advances.size() - 1);
    const std::int64_t natural = std::accumulate(before.begin(), before.end(), std::int64_t{0});
    const std::int64_t present = std::min(span.room - advances.back(), span.last - span.first);
    if (present < 0 || 2 * present < natural) return {};
    std::vector<unsigned> x;
    std::int64_t at = 0;
    for (const int advance : advances) {
        x.push_back(static_cast<unsigned>(span.first +
                                          (natural > present ? (2 * at * present + natural) / (2 * natural) : at)));
        at += advance;
    }
    return x;
}

}  // namespace

TextLayout LayOut(std::span<const int> advances, const Field& field, std::size_t most, Overflow overflow) {
    const Span span(field);
    const std::size_t fitting = CountOfFitting(advances, span);
    const std::size_t allowed = std::min(fitting, most);
    if (allowed == advances.size()) return {Natural(advances, span), {}};
    if (overflow == Overflow::kCut && allowed > 0) return {Natural(advances.first(allowed), span), {}};
    if (advances.size() > most) {
        return {{},
                "the text has " + base::Counted(advances.size(), "character") + ", and its row has room for " +
                    std::to_string(most)};
    }
    const std::int64_t width = std::accumulate(advances.begin(), advances.end(), std::int64_t{0});
    std::string fault = width <= span.room
                            ? "its last character would begin after the field's end"
                            : "the text is " + std::to_string(width) + " pixels wide, and the field has room for " +
                                  std::to_string(span.room);
    if (overflow == Overflow::kSqueeze) {
        std::vector<unsigned> x = Squeezed(advances, span);
        if (!x.empty()) return {std::move(x), {}};
        fault += ", which is too little even with its characters at half of their distances";
    }
    return {{}, std::move(fault)};
}

}  // namespace zel::fill
