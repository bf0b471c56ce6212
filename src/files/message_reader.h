#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "files/message_writer.h"

namespace zel::files {

/// Why a file has no description.
enum class NoDescription : std::uint8_t {
    kNone,
    /// It is shorter than its headers: 152 bytes of a message, 2184 of a font.
    kShort,
    /// It has another file_type.
    kOtherType,
};

/// A file's description, or the reason why it has none.
template <class File>
struct Description {
    std::optional<File> file{};
    NoDescription reason = NoDescription::kNone;
    /// The file's type, if the file has at least four bytes.
    std::uint32_t file_type = 0;

    explicit operator bool() const noexcept { return file.has_value(); }
    const File& operator*() const noexcept { return *file; }
    const File* operator->() const noexcept { return &*file; }
};

/// Reads a message file without loss: WriteMessage of the description gives the same bytes, whatever they are.
///
/// The sections are where an import reads them. Where an import stops (an empty palette, an unknown background, a tab
/// table of another version or of more than 200 records), the rest is `tail`. What the end of the file cuts off is
/// zero, as in an import, and `size` is set; rows, characters and records that begin beyond the end aren't in the
/// description. An optional field has a value only if it differs from the computed one.
/// @param file  needed during the call only.
Description<MessageFile> ReadMessage(std::span<const std::uint8_t> file);

}  // namespace zel::files
