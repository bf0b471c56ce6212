#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "samples/disk/disk_font.h"
#include "samples/message_writer.h"

/// Lays a message out on the screen, with the fonts' own advances and kerning.
namespace zel::samples {

/// A video standard: lines of the picture, and by how much a message's row_y stands below the picture's lines.
struct Standard {
    bool pal = false;
    int lines = 486;
    int line_offset = 20;
};
constexpr Standard kNtsc{false, 486, 20};
constexpr Standard kPal{true, 576, 33};

/// Screen width, and the upright limits of the safe title area, in pixels.
constexpr int kScreenWidth = 720, kSafeLeft = 72, kSafeRight = 648, kScreenCentre = kScreenWidth / 2;

/// To which point of a text its x belongs.
enum class Align : std::uint8_t { kLeft, kCentre, kRight };

/// The pixels from a text's first pen position to its last, with `tracking` more after each character.
int TextWidth(const DiskFont& font, std::string_view text, int tracking = 0);

/// A message in the making. Positions are those of the screen that the host shows; the page turns them into the file's.
/// A character too far out for its field, or one too many in a row, is a mistake in the design.
class Page {
  public:
    explicit Page(Standard standard = kNtsc);

    /// Begins a row with its baseline at this line of the screen; the row's limits are those of `font`.
    Page& Row(int baseline, const DiskFont& font);
    /// Begins a row without characters, at the place that Row would give it.
    Page& BlankRow(int baseline, const DiskFont& font);
    /// Appends a text to the row last begun.
    /// @throws std::logic_error when no row is begun, or the text doesn't fit the row or the screen.
    Page& Text(const DiskFont& font, unsigned colour_set, int x, std::string_view text, Align align = Align::kLeft,
               int tracking = 0);
    /// The same text as a row of its own.
    Page& Line(int baseline, const DiskFont& font, unsigned colour_set, int x, std::string_view text,
               Align align = Align::kLeft, int tracking = 0);

    /// The slot of a font, given on its first use.
    /// @throws std::logic_error when 16 fonts are in use.
    unsigned Slot(const DiskFont& font);

    /// A tab field of the row last begun between two positions of the screen, in the units of the file.
    TabField Tab(std::string_view name, int left, int right, const DiskFont& font, unsigned colour_set);

    /// What has been laid out so far; sections other than rows may be added to it.
    MessageFile& File() noexcept { return m_file; }
    /// The message, with the records of each row chained in order.
    MessageFile Finish();

  private:
    Standard m_standard;
    MessageFile m_file;
    unsigned m_slots_used = 0;
    int m_row_baseline = 0;  ///< of the row last begun, in lines below its row_y
};

/// Face and edge colour of one set, as 0xRRGGBB.
struct FaceAndEdge {
    std::uint32_t face = 0, edge = 0;
};

/// A palette of eight colour sets; entries 3 to 31 of a set lead from its edge colour to its face colour.
PaletteBlock MakePalette(const std::array<FaceAndEdge, 8>& sets);

}  // namespace zel::samples
