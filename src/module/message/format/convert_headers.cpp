#include "module/message/format/convert_headers.h"

#include <cstring>

#include "module/message/format/big_endian_cursor.h"

namespace zel::message {

tag_psos_header ConvertPsosHeader(std::span<const std::uint8_t> file) noexcept {
    tag_psos_header header;
    if (file.size() >= sizeof header) {  // a copy of constant length compiles to a few instructions
        std::memcpy(&header, file.data(), sizeof header);
    } else {
        header = {};
        if (!file.empty()) std::memcpy(&header, file.data(), file.size());
    }
    header.file_type = SwapLong(header.file_type);  // 0
    header.unread_4 = SwapLong(header.unread_4);    // 4
    return header;                                  // 8  type_name, unchanged
}

tag_msg_flags ConvertMsgFlags(std::span<const std::uint8_t> bytes) noexcept {
    BigEndianCursor in(bytes);
    tag_msg_flags flags{};
    flags.section_flags = in.U16();                              // 0
    for (std::uint16_t& word : flags.unread_2) word = in.U16();  // 2
    return flags;
}

tag_msg_header ConvertMsgHeader(std::span<const std::uint8_t> bytes, std::uint16_t line_offset) noexcept {
    BigEndianCursor in(bytes);
    tag_msg_header header{};
    header.unread_0 = in.U16();                                                //  0
    header.unread_2 = in.U16();                                                //  2
    header.last_row = in.U16();                                                //  4
    header.frame_left = in.U16();                                              //  6
    header.frame_top = static_cast<std::uint16_t>(in.U16() - line_offset);     //  8
    header.frame_right = in.U16();                                             // 10
    header.frame_bottom = static_cast<std::uint16_t>(in.U16() - line_offset);  // 12
    for (std::uint16_t& word : header.unread_14) word = in.U16();              // 14
    for (std::uint16_t& number : header.font_numbers) number = in.U16();       // 20
    return header;
}

}  // namespace zel::message
