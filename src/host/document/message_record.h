#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "module/contract/records/char_inf.h"
#include "module/contract/records/font_memory.h"
#include "module/contract/records/msg_header.h"
#include "module/contract/records/tab_field.h"
#include "module/contract/records/video_standard.h"
#include "platform/system/types.h"

namespace zel::document {

// The host's copies of what it received in one import. Texts are the module's bytes, one character each.

/// One font slot that held a font.
struct FontRecord {
    tag_font_header header{};
    /// The font file's path, in the module's form.
    std::string file_name;
    /// The file isn't in the font directory of the import.
    bool elsewhere = false;
    LOGFONT log_font{};
};

/// One character of a call of the callback. The call for a row without characters isn't recorded.
struct CharacterRecord {
    /// log_font and font_copy are null, since what they refer to is freed earlier.
    tag_CharInf info{};
    LOGFONT log_font{};
    unsigned character = 0;
    /// Of a character in bitmap form.
    std::optional<int> font_slot;
};

/// One row of the message.
struct RowRecord {
    /// In pixels from the picture's top.
    int y = 0;
    /// In pixels below y.
    int top = 0;
    int bottom = 0;
    bool empty = false;
    /// The characters that arrived, in reading order, as FillRowTexts sets it.
    std::string text;
};

struct MessageRecord {
    /// Name of the message file in its directory.
    std::string id;
    /// The message file's path, in the module's form.
    std::string file;
    /// An RGBA picture: nothing but the user's choice is received.
    bool rgba = false;
    /// Of a picture: insert as an object, else as the background.
    bool object = false;
    /// The message's own; of an RGBA picture, whose file names none, the host's.
    VideoStandard standard = VideoStandard::kNtsc;
    tag_msg_header header{};
    std::vector<RowRecord> rows;
    std::vector<CharacterRecord> characters;
    std::vector<tag_tab_field> tabs;
    std::array<std::optional<FontRecord>, kFontSlots> fonts;
    /// Stored entries, 8 sets of 32.
    std::array<std::uint32_t, 256> palette{};
    /// One line for each glyph whose pixels could not be fetched.
    std::vector<std::string> glyph_failures;
};

}  // namespace zel::document
