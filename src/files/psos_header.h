#pragma once

#include <cstdint>
#include <string>

#include "files/byte_writer.h"

namespace zel::files {

/// The 136-byte header of message and font files.
struct PsosHeader {
    std::uint32_t file_type = 0;  ///<   0  702 a message, 500 a font, 714 and 717 an RGBA file
    std::uint32_t word_4 = 0;     ///<   4
    std::string type_name{};      ///<   8  128 bytes; a name of 128 characters has no terminator
};

/// Appends the header's 136 bytes.
inline void WritePsosHeader(const PsosHeader& header, ByteWriter& out) {
    out.U32(header.file_type).U32(header.word_4).Text(header.type_name, 136 - 8);
}

}  // namespace zel::files
