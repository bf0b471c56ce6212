#pragma once

#include <cstddef>

#include "host/compare/difference.h"
#include "host/compare/message_contents.h"

namespace zel::compare {

/// Whether a change of slot and font is one of its own, not that of the slot's font, which is a difference of the
/// message.
bool IsFontChange(const MessageContents& a, const MessageContents& b, int slot_a, int slot_b, int font_a, int font_b);

/// Compares rows that belong together. Texts differ by runs of characters within words; characters that are in both
/// rows are compared by place, font and colours, and neighbours with the same difference are one run.
class RowComparer {
  public:
    /// @param a, b     kept alive by the caller.
    /// @param swapped  see Align.
    RowComparer(const MessageContents& a, const MessageContents& b, bool swapped)
        : m_a(a), m_b(b), m_swapped(swapped) {}

    void operator()(std::size_t row_a, std::size_t row_b, Differences& differences) const;

  private:
    const MessageContents& m_a;
    const MessageContents& m_b;
    const bool m_swapped;
};

}  // namespace zel::compare
