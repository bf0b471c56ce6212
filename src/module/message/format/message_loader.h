#pragma once

#include <memory>
#include <optional>

#include "module/contract/records/msg_header.h"
#include "module/contract/records/msg_row.h"
#include "module/contract/records/palette.h"
#include "module/contract/records/psos_header.h"
#include "module/contract/records/tab_field.h"
#include "module/message/format/byte_source.h"
#include "module/message/format/section_observer.h"

namespace zel::message {

/// How the reading of a message file ended; 0 is the only success. Box texts stand in the same order in
/// zel_message.cpp.
enum class MessageOutcome {
    kRead = 0,
    kShortFileHeader,       ///< Fewer than 136 bytes.
    kShortFlags,            ///< Fewer than 152 bytes.
    kRgbaFile,              ///< file_type 714 or 717: a picture, which the import offers to the host.
    kUnsupportedType,       ///< Another file_type, without a type_name.
    kUnsupportedNamedType,  ///< Another file_type, with a type_name.
    kShortPalette,
    kUnknownBackground,
    kShortBackground,
    kTabVersionAbove2,
    kTabVersionBelow2,
    kTooManyTabs,
};

/// Frees a block of rows, which is taken zeroed from the system so that a file of few bytes costs few pages.
struct FreeRows {
    void operator()(tag_msg_row* rows) const noexcept;
};

/// What a message file holds. A block is null when the file ended, or was refused, before it.
struct LoadedMessage {
    std::unique_ptr<tag_psos_header> file_header;
    std::unique_ptr<tag_msg_flags> flags;
    std::unique_ptr<tag_msg_header> header;
    std::unique_ptr<tag_msg_row[], FreeRows> rows;  ///< header->RowCount() of them, row_y corrected.
    std::unique_ptr<tag_palete> palette;
    std::unique_ptr<tag_tab_field[]> tabs;  ///< null without tab records.
    int tab_count = 0;                      ///< records in tabs, rejected ones left out.
    std::optional<int> y_offset;            ///< lines that the rows were moved up by; empty when none was read.
    bool flash_font = false;                ///< a flash font was passed over.
    bool bad_tab_row = false;               ///< a tab record named a row that the message doesn't have.
    bool bad_tab_field = false;             ///< a tab record's start wasn't below its end.
};

/// Reads a message file, section by section in file order. Needs no path, dialog or host. Past the end of the file the
/// sections up to the rows read as zeros, as the legacy importer read on there.
/// @param message   filled as far as the file goes, also when the outcome isn't kRead.
/// @param observer  may be null.
/// @throws std::bad_alloc
MessageOutcome LoadMessage(ByteSource& file, LoadedMessage& message, SectionObserver* observer = nullptr);

}  // namespace zel::message
