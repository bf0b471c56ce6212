#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/picture/picture.h"
#include "module/font/format/font_loader.h"

namespace zel::compare {

/// A glyph of a font, as far as it is compared.
struct FontGlyph {
    /// "none", "run-coded" or "stored".
    const char* kind = "none";
    /// Lines and pixels, as in the directory.
    int top = 0, metric = 0;
    /// Of the bitmap, in pixels.
    int width = 0, height = 0;
    /// Of a stored glyph.
    bool flag = false;
    /// The run codes up to the glyph's end, or the pixels of a stored glyph that the file has, as stored.
    std::span<const std::uint8_t> stored{};

    bool IsThere() const noexcept { return kind[0] != 'n'; }
};

/// A font in memory that has been read completely.
class FontContents {
  public:
    /// @param bytes  the whole file, kept alive by the caller.
    explicit FontContents(std::span<const std::uint8_t> bytes);

    bool IsRead() const noexcept { return m_outcome == font::FontOutcome::kRead; }
    const tag_font_memory& Slot() const noexcept { return m_loaded.slot; }

    FontGlyph Glyph(int code) const;
    /// The pixels of a glyph on a clear ground, without clear rows that a stored one has at its end. Each colour index
    /// has a colour of its own.
    picture::Picture Draw(const FontGlyph& glyph) const;

  private:
    std::span<const std::uint8_t> m_bytes;
    font::LoadedFont m_loaded;
    font::FontOutcome m_outcome;
};

}  // namespace zel::compare
