#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "module/contract/records/video_standard.h"

/// What inspection finds in a file. Texts are ready to print: bytes of the file that aren't printable ASCII stand as
/// \xNN.
namespace zel::inspect {

enum class FileKind { kMessage, kFont, kRgba, kBitstreamList, kTypefaceList, kText, kOther };

enum class Verdict {
    kWhole,     ///< Read to its end, and nothing is wrong with it.
    kReadable,  ///< The module imports it, but something is missing or makes no sense.
    kBroken,    ///< Of a kind that the module knows, but the module refuses it.
    kForeign,   ///< None of the kinds that the module reads.
};

/// A stretch of a file.
struct Section {
    std::string name;
    std::uint64_t offset = 0;   ///< of its first byte.
    std::uint64_t size = 0;     ///< bytes that it should have.
    std::uint64_t present = 0;  ///< bytes of them that the file has.
    int count = 1;              ///< sections of this name that stand back to back and are told as one.
};

struct RowReport {
    int index = 0;
    int y = 0;       ///< lines from the picture's top, as corrected on import.
    int top = 0;     ///< lines below y.
    int bottom = 0;  ///< lines below y.
    bool empty = false;
    int characters = 0;
    std::vector<std::string> runs;  ///< the text in the order of the chain, cut where slot or colour set change.
    std::vector<int> slots;         ///< that its characters use, ascending.
    std::vector<int> colour_sets;   ///< likewise.
};

/// A font slot that names a font or that characters use.
struct SlotReport {
    int slot = 0;
    std::optional<int> number;  ///< of the font; none for a slot that names none.
    int characters = 0;
};

struct TabReport {
    std::string name;  ///< empty for an unnamed field.
    int start = 0;     ///< pixels, as the host gets them.
    int end = 0;
    int row = 0;
    std::optional<int> slot;
    int colour_set = 0;
    std::string rejected;  ///< why the import leaves the field out; empty for one that it keeps.
};

/// Colours of a palette set, 0xRRGGBB.
struct SetColours {
    std::uint32_t face = 0;
    std::uint32_t edge = 0;
};

struct MessageReport {
    std::string type_name;
    VideoStandard standard = VideoStandard::kNtsc;
    int row_count = 0;              ///< rows that the message says it has.
    int y_offset = 0;               ///< lines by which the import moves the rows up.
    std::array<int, 4> frame{};     ///< left, top, right, bottom, as in the file.
    std::vector<RowReport> rows;    ///< those that the file holds at least the beginning of.
    std::vector<SlotReport> slots;  ///< ascending.
    bool own_palette = false;
    std::vector<SetColours> palette;        ///< eight sets; none when the file ends before them.
    std::optional<std::string> background;  ///< its kind; none without a background.
    std::optional<std::string> flash_font;  ///< its sizes; none without a flash font.
    std::vector<TabReport> tabs;            ///< every record that the file holds, rejected ones too.
};

/// A glyph's bitmap, pixels.
struct GlyphReport {
    int code = 0;
    int width = 0;
    int height = 0;
};

struct FontReport {
    std::string type_name;
    std::string name;
    std::string id;          ///< digits, as they stand in the header.
    int height = 0;          ///< lines, edge included.
    int row_top_offset = 0;  ///< lines.
    int row_inset = 0;       ///< lines.
    int edge_type = 0;
    int edge_angle = 0;  ///< degrees.
    int edge_size = 0;   ///< pixels.
    int flags = 0;
    std::string flags_in_words;
    std::uint32_t encoding_size = 0;  ///< bytes.
    int stored_glyphs = 0;
    int run_coded_glyphs = 0;
    int without_glyph = 0;
    std::optional<GlyphReport> smallest;  ///< by area; none when no glyph can be measured.
    std::optional<GlyphReport> largest;
};

/// One of the two name lists.
struct ListReport {
    int lines = 0;
    int entries = 0;  ///< numbers of the Bitstream list, names of the typeface list.
};

/// The picture of an RGBA file, pixels.
struct PictureReport {
    int width = 0;
    int height = 0;
};

struct FileReport {
    std::string name;  ///< as given.
    std::uint64_t size = 0;
    FileKind kind = FileKind::kOther;
    Verdict verdict = Verdict::kForeign;
    std::string reason;                 ///< why it is broken, or what a foreign file looks like.
    std::optional<unsigned> file_type;  ///< the header's, of a file that is long enough for one.
    std::vector<Section> sections;      ///< in file order.
    std::vector<std::string> defects;   ///< what is wrong, and what the import makes of it.
    std::vector<std::string> remarks;   ///< what is unusual, but loses nothing.
    std::optional<MessageReport> message;
    std::optional<FontReport> font;
    std::optional<PictureReport> picture;  ///< none of a broken file.
    std::optional<ListReport> list;
};

}  // namespace zel::inspect
