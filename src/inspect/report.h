#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/finding.h"
#include "module/contract/records/video_standard.h"

/// What inspection finds in a file. Texts are ready to print: bytes of the file other than printable ASCII are written
/// as \xNN.
namespace zel::inspect {

enum class FileKind { kMessage, kFont, kRgba, kBitstreamList, kTypefaceList, kText, kOther };

enum class Verdict {
    /// Read to its end without a defect.
    kWhole,
    /// The module imports it, but something is missing or invalid.
    kReadable,
    /// Of a kind that the module reads, but the module refuses it.
    kBroken,
    /// Not of a kind that the module reads.
    kForeign,
};

/// A section of a file.
struct Section {
    std::string name;
    /// Of its first byte, from the file's beginning.
    std::uint64_t offset = 0;
    /// In bytes, when complete.
    std::uint64_t size = 0;
    /// In bytes, as far as the file contains it.
    std::uint64_t present = 0;
    /// Number of consecutive sections of this name, reported as one.
    int count = 1;
};

struct RowReport {
    int index = 0;
    /// Lines from the picture's top, as corrected on import.
    int y = 0;
    /// Lines below y.
    int top = 0;
    /// Lines below y.
    int bottom = 0;
    bool empty = false;
    int characters = 0;
    /// The text in reading order, divided where the slot or the colour set changes. A gap between words
    /// (base::IsWordGap) is a blank.
    std::vector<std::string> runs;
    /// Slots that its characters use, ascending.
    std::vector<int> slots;
    /// Colour sets that its characters use, ascending.
    std::vector<int> colour_sets;
};

/// A font slot that names a font or that characters use.
struct SlotReport {
    int slot = 0;
    /// Of the font; none for a slot without a font.
    std::optional<int> number;
    int characters = 0;
};

struct TabReport {
    /// Empty for a field without a name.
    std::string name;
    /// In pixels, as the host receives it; so is end.
    int start = 0;
    int end = 0;
    int row = 0;
    std::optional<int> slot;
    int colour_set = 0;
    /// Why the import omits the field; empty if it doesn't.
    std::string rejected;
};

/// Colours of a palette set, 0xRRGGBB.
struct SetColours {
    std::uint32_t face = 0;
    std::uint32_t edge = 0;
};

/// What an import delivers of a message if it finds all of its fonts.
struct Delivery {
    int rows = 0;
    /// Without the blanks for empty tab fields.
    std::uint64_t characters = 0;
    int tab_fields = 0;
};

struct MessageReport {
    std::string type_name;
    VideoStandard standard = VideoStandard::kNtsc;
    /// Number of rows according to the header.
    int row_count = 0;
    /// Lines by which the import moves the rows up.
    int y_offset = 0;
    /// Left, top, right, bottom, as in the file.
    std::array<int, 4> frame{};
    /// The rows that begin in the file.
    std::vector<RowReport> rows;
    /// In ascending order.
    std::vector<SlotReport> slots;
    bool own_palette = false;
    /// Eight sets; empty if the file ends before them.
    std::vector<SetColours> palette;
    /// Its kind and size; none without a background.
    std::optional<std::string> background;
    /// Its size; none without a flash font.
    std::optional<std::string> flash_font;
    /// Every record in the file, including rejected ones.
    std::vector<TabReport> tabs;
    /// None for a broken file.
    std::optional<Delivery> delivery;
};

/// A glyph's bitmap. Sizes are in pixels.
struct GlyphReport {
    int code = 0;
    int width = 0;
    int height = 0;
};

struct FontReport {
    std::string type_name;
    std::string name;
    /// Digits, as in the header.
    std::string id;
    /// In lines, including the edge.
    int height = 0;
    /// In lines.
    int row_top_offset = 0;
    /// In lines.
    int row_inset = 0;
    int edge_type = 0;
    /// In degrees.
    int edge_angle = 0;
    /// In pixels.
    int edge_size = 0;
    int flags = 0;
    std::string flags_in_words;
    /// In bytes.
    std::uint32_t encoding_size = 0;
    int stored_glyphs = 0;
    int run_coded_glyphs = 0;
    int without_glyph = 0;
    /// By area; none if no glyph can be measured.
    std::optional<GlyphReport> smallest;
    std::optional<GlyphReport> largest;
};

/// One of the two name lists.
struct ListReport {
    int lines = 0;
    /// Different numbers in the Bitstream list, or different names in the typeface list.
    int entries = 0;
};

/// The picture of an RGBA file. Sizes are in pixels.
struct PictureReport {
    int width = 0;
    int height = 0;
};

/// How much an inspection looks at.
enum class Depth : std::uint8_t {
    /// What the file contains, and every fault.
    kFaults,
    /// Also what nothing reads.
    kEveryByte,
};

struct FileReport {
    /// As passed to the inspection.
    std::string name;
    Depth depth = Depth::kFaults;
    std::uint64_t size = 0;
    FileKind kind = FileKind::kOther;
    Verdict verdict = Verdict::kForeign;
    /// Why the file is broken; for a foreign file, what it looks like.
    std::string reason;
    /// From the header, if the file is long enough for one.
    std::optional<unsigned> file_type;
    /// In file order.
    std::vector<Section> sections;
    /// Every rule that isn't kept, in the order of the checks.
    std::vector<Finding> findings;
    /// The lines of the faults among them: what is wrong, and its effect on the import.
    std::vector<std::string> defects;
    /// The lines of the notes among them: what is unusual but without effect.
    std::vector<std::string> remarks;
    std::optional<MessageReport> message;
    std::optional<FontReport> font;
    /// None for a broken file.
    std::optional<PictureReport> picture;
    std::optional<ListReport> list;
};

}  // namespace zel::inspect
