#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "files/message_writer.h"
#include "samples/disk/disk_font.h"

/// Lays out a message on the screen, with the fonts' own advances and kerning.
namespace zel::samples {

/// A video standard: lines of the picture, and the difference between a message's row_y and the picture's line.
struct Standard {
    bool pal = false;
    int lines = 486;
    int line_offset = 20;
};
constexpr Standard kNtsc{false, 486, 20};
constexpr Standard kPal{true, 576, 33};

/// Screen width and the left and right limits of the safe title area, in pixels.
constexpr int kScreenWidth = 720, kSafeLeft = 72, kSafeRight = 648, kScreenCentre = kScreenWidth / 2;

/// Which point of a text its x gives.
enum class Align : std::uint8_t { kLeft, kCentre, kRight };

/// Width of a text in pixels, from its first pen position to its last.
/// @param tracking  is added after each character.
int TextWidth(const DiskFont& font, std::string_view text, int tracking = 0);

/// Builds a message. Positions are those of the host's screen and are converted to the file's. A position that doesn't
/// fit its field, or a row with too many characters, is a programming error.
class Page {
  public:
    explicit Page(Standard standard = kNtsc);

    /// Begins a row with its baseline at a line of the screen and the limits of `font`.
    Page& Row(int baseline, const DiskFont& font);
    /// Begins a row without characters, at the same position as Row does.
    Page& BlankRow(int baseline, const DiskFont& font);
    /// Appends a text to the last row.
    /// @throws std::logic_error without a row, or when the text doesn't fit the row or the screen.
    Page& Text(const DiskFont& font, unsigned colour_set, int x, std::string_view text, Align align = Align::kLeft,
               int tracking = 0);
    /// Adds a text as a row of its own.
    Page& Line(int baseline, const DiskFont& font, unsigned colour_set, int x, std::string_view text,
               Align align = Align::kLeft, int tracking = 0);

    /// The slot of a font, assigned at its first use.
    /// @throws std::logic_error for a 17th font.
    unsigned Slot(const DiskFont& font);

    /// A tab field of the last row between two positions of the screen.
    files::TabField Tab(std::string_view name, int left, int right, const DiskFont& font, unsigned colour_set);

    /// The message so far. The caller may add sections other than rows.
    files::MessageFile& File() noexcept { return m_file; }
    /// The message, with the records of each row chained in order.
    files::MessageFile Finish();

  private:
    Standard m_standard;
    files::MessageFile m_file;
    unsigned m_slots_used = 0;
    /// Of the last row, in lines below its row_y.
    int m_row_baseline = 0;
};

/// Face and edge colour of one set, as 0xRRGGBB.
struct FaceAndEdge {
    std::uint32_t face = 0, edge = 0;
};

/// A palette of eight colour sets. Entries 3 to 31 of a set are a gradient from its edge colour to its face colour.
files::PaletteBlock MakePalette(const std::array<FaceAndEdge, 8>& sets);

}  // namespace zel::samples
