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

/// The host's copies of what arrived in one import. Texts are the module's bytes, one character each.

/// One font slot that held a font.
struct FontRecord {
    tag_font_header header{};
    std::string file_name;
    LOGFONT log_font{};
};

/// One call of the character callback.
struct CharacterRecord {
    tag_CharInf info{};  ///< log_font and font_copy are null: they die with the call and the fonts.
    LOGFONT log_font{};
    unsigned character = 0;        ///< 13 for a row without characters.
    std::optional<int> font_slot;  ///< of a character in bitmap form.
};

/// One row of the message.
struct RowRecord {
    int y = 0;       ///< lines
    int top = 0;     ///< lines below y
    int bottom = 0;  ///< lines below y
    bool empty = false;
    std::string text;  ///< the characters that arrived, in reading order.
};

struct MessageRecord {
    std::string id;                                 ///< name of the message file in its directory.
    std::string file;                               ///< the message file's path, in the module's form.
    bool rgba = false;                              ///< a picture, of which nothing but the choice arrives.
    bool object = false;                            ///< of a picture: insert as object, else as background.
    VideoStandard standard = VideoStandard::kNtsc;  ///< the message's own.
    tag_msg_header header{};
    std::vector<RowRecord> rows;
    std::vector<CharacterRecord> characters;
    std::vector<tag_tab_field> tabs;
    std::array<std::optional<FontRecord>, kFontSlots> fonts;
    std::array<std::uint32_t, 256> palette{};  ///< stored entries, 8 sets of 32.
    std::vector<std::string> glyph_failures;   ///< glyphs whose pixels could not be had.
};

}  // namespace zel::document
