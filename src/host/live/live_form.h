#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fill/form.h"
#include "host/live/live_font.h"
#include "module/contract/records/palette.h"
#include "module/contract/records/video_standard.h"

namespace zel::live {

/// A row of a message as an import has it, before it makes templates for tab fields.
struct LiveRow {
    /// In lines; `top` and `bottom` below `y`.
    int y = 0, top = 0, bottom = 0;
    bool is_empty = false;
    /// Index of the first character in reading order.
    int first = 0;
    struct Cell {
        int x = 0, y = 0, colour_set = 0, slot = 0, code = 0, next = 0;
    };
    /// In the file's order.
    std::vector<Cell> cells{};
};

/// A tab field of a template.
struct LiveField {
    fill::Field field;
    /// Of the file's record; from kFontSlots up there is none.
    unsigned tab_slot = 0;
    /// UTF-8.
    std::string text;
    /// Why it can't be filled; empty if it can.
    std::string fault;
};

/// A message as a page draws it and fills its fields, without the module.
struct LiveForm {
    VideoStandard standard = VideoStandard::kNtsc;
    std::vector<LiveRow> rows{};
    /// In the order of the tab table, so that f0 is the first one.
    std::vector<LiveField> fields{};
    std::vector<LiveFont> fonts{};
    /// Index in `fonts` of each slot's font; empty for a slot without one.
    std::array<std::optional<std::size_t>, kFontSlots> slots{};
    tag_palete palette{};
    /// PNG with straight alpha of an RGBA picture, which has no rows.
    std::string picture{};
};

/// Contents of a font file by its number; null if there is none.
using FontFile = std::function<std::shared_ptr<const std::string>(int number)>;

/// Makes the form of a message. It has the glyphs of its characters, and all those of the fonts of its fields.
/// @param message  the file's contents; needed during the call only.
/// @throws std::runtime_error with the reason, for a message that an import doesn't read and for one whose glyphs are
///         too large for a host.
LiveForm MakeLiveForm(std::span<const std::uint8_t> message, const FontFile& font_file);

}  // namespace zel::live
