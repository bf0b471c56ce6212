#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/file_descriptor.h"
#include "host/picture/picture.h"
#include "module/font/format/font_loader.h"
#include "module/message/format/byte_source.h"

namespace zel::compare {

/// A font file on disk.
class FontFileBytes : public message::FileBytes {
  public:
    /// @throws std::runtime_error  with the file's name and the reason.
    explicit FontFileBytes(const std::string& path);

    std::uint64_t Size() const noexcept override { return m_size; }
    std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> out) override;

  private:
    base::FileDescriptor m_file;
    std::uint64_t m_size = 0;
};

/// Largest bitmap of a glyph that is drawn for a comparison, in bytes: 2048 x 2048 pixels.
inline constexpr std::size_t kLargestDrawnGlyph = std::size_t{16} << 20;

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
    /// The run codes of a run-coded glyph up to its end; valid while its font is.
    std::span<const std::uint8_t> codes{};
    /// Place of a stored glyph's pixels in the file, and how many bytes of them it has.
    std::uint64_t offset = 0;
    std::size_t size = 0;

    bool IsThere() const noexcept { return kind[0] != 'n'; }
    bool IsStored() const noexcept { return kind[0] == 's'; }
    bool IsDrawn() const noexcept { return picture::PixelBytes(width, height) <= kLargestDrawnGlyph; }
};

/// A font that has been read completely, except the pixels of its stored glyphs.
class FontContents {
  public:
    /// @param file  kept alive by the caller.
    explicit FontContents(message::FileBytes& file);

    bool IsRead() const noexcept { return m_outcome == font::FontOutcome::kRead; }
    const tag_font_memory& Slot() const noexcept { return m_loaded.slot; }

    FontGlyph Glyph(int code);
    /// The pixels of a glyph that IsDrawn on a clear ground. Each colour index has a colour of its own.
    picture::Picture Draw(const FontGlyph& glyph);
    /// Whether the codes, or the stored pixels, of two glyphs of the same kind are the same bytes.
    bool HasSameBytes(const FontGlyph& glyph, FontContents& other, const FontGlyph& other_glyph);

  private:
    message::FileBytes& m_file;
    font::LoadedFont m_loaded;
    font::FontOutcome m_outcome = font::FontOutcome::kShortPsosHeader;
};

}  // namespace zel::compare
