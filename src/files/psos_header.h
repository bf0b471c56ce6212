#pragma once

#include <cstdint>
#include <string>

#include "files/record_fields.h"

namespace zel::files {

/// The 136-byte header of message and font files.
struct PsosHeader {
    std::uint32_t file_type = 0;  ///<   0  702 a message, 500 a font, 714 and 717 an RGBA file
    std::uint32_t word_4 = 0;     ///<   4
    /// 8: 128 bytes. The name ends at its first zero; a name of 128 characters has none. What follows the zero is kept.
    std::string type_name{};

    bool operator==(const PsosHeader&) const = default;
};

/// The header's fields.
struct PsosHeaderFields {
    static constexpr std::size_t kSize = 136;
    template <class Io, class Header>
    static void Each(Io& io, Header& header) {
        io.Bits(32, header.file_type);
        io.Bits(32, header.word_4);
        io.Text(header.type_name, kSize - 8);
    }
};

/// Appends the header's 136 bytes.
inline void WritePsosHeader(const PsosHeader& header, ByteWriter& out) {
    out.Append(WriteRecord<PsosHeaderFields>(header));
}

}  // namespace zel::files
