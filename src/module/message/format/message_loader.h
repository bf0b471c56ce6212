#pragma once

#include <memory>
#include <optional>
#include <span>

#include "module/contract/records/msg_header.h"
#include "module/contract/records/msg_row.h"
#include "module/contract/records/palette.h"
#include "module/contract/records/psos_header.h"
#include "module/contract/records/tab_field.h"
#include "module/message/format/byte_source.h"
#include "module/message/format/section_observer.h"

namespace zel::message {

/// Result of reading a message file. The message boxes are in the same order in zel_message.cpp.
enum class MessageOutcome {
    kRead = 0,
    /// Fewer than 136 bytes.
    kShortFileHeader,
    /// Fewer than 152 bytes.
    kShortFlags,
    /// file_type 714 or 717: a picture, which the import offers to the host.
    kRgbaFile,
    /// Another file_type, without a type_name.
    kUnsupportedType,
    /// Another file_type, with a type_name.
    kUnsupportedNamedType,
    kShortPalette,
    kUnknownBackground,
    kShortBackground,
    kTabVersionAbove2,
    kTabVersionBelow2,
    kTooManyTabs,
};

/// Frees a block of rows, which calloc allocates: the pages of rows beyond the end of a short file are never touched.
struct FreeRows {
    void operator()(tag_msg_row* rows) const noexcept;
};

/// The contents of a message file; owns its blocks. A block is null when reading ended before it.
struct LoadedMessage {
    std::unique_ptr<tag_psos_header> file_header;
    std::unique_ptr<tag_msg_flags> flags;
    std::unique_ptr<tag_msg_header> header;
    /// header->RowCount() rows, with row_y corrected.
    std::unique_ptr<tag_msg_row[], FreeRows> rows;
    std::unique_ptr<tag_palete> palette;
    /// Null without tab records.
    std::unique_ptr<tag_tab_field[]> tabs;
    /// Number of records in `tabs`, without rejected ones.
    int tab_count = 0;
    /// Number of lines by which the rows were moved up; empty when no rows were read.
    std::optional<int> y_offset;
    /// A flash font was skipped.
    bool flash_font = false;
    /// The row of a tab record doesn't exist.
    bool bad_tab_row = false;
    /// The start of a tab record isn't below its end.
    bool bad_tab_field = false;
};

/// Reads a message file, section by section in file order. Beyond the end of a short file, the sections up to the rows
/// read as zeros, as in the legacy importer.
/// @param message   an empty one; receives everything that was read, also when the outcome isn't kRead.
/// @param observer  may be null.
/// @throws std::bad_alloc
MessageOutcome LoadMessage(ByteSource& file, LoadedMessage& message, SectionObserver* observer = nullptr);

/// Reads a message file in memory, as above.
/// @param file  the whole file; needed during the call only.
MessageOutcome LoadMessage(std::span<const std::uint8_t> file, LoadedMessage& message,
                           SectionObserver* observer = nullptr);

}  // namespace zel::message
