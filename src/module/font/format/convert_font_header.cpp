#include "module/font/format/convert_font_header.h"

#include <cstring>

#include "module/message/format/big_endian_cursor.h"

namespace zel::font {

namespace {

std::int16_t S16(message::BigEndianCursor& in) noexcept {
    return static_cast<std::int16_t>(in.U16());
}

template <std::size_t N, typename T>
void CopyBytes(message::BigEndianCursor& in, T (&out)[N]) noexcept {
    static_assert(sizeof(T) == 1);
    const auto bytes = in.Bytes<N>();
    std::memcpy(out, bytes.data(), N);
}

}  // namespace

tag_font_header ConvertFontHeader(std::span<const std::uint8_t> bytes) noexcept {
    message::BigEndianCursor in(bytes);
    tag_font_header header{};
    CopyBytes(in, header.font_name);     //   0
    CopyBytes(in, header.font_id_text);  //  70
    CopyBytes(in, header.unread_74);     //  74
    header.font_height = S16(in);        //  78
    header.row_top_offset = S16(in);     //  80
    header.unread_82 = in.U16();         //  82
    const std::uint8_t edge = in.U8();   //  84
    header.edge_bits = static_cast<std::uint8_t>(edge >> 4 | edge << 4);
    header.edge_size = in.U8();            //  85
    const std::uint16_t split = in.U16();  //  86
    header.unread_86 = static_cast<std::uint16_t>(split >> 9 | (split & 0x1FF) << 7);
    CopyBytes(in, header.unread_88);                              //  88
    header.unread_94 = in.U32();                                  //  94
    header.encoding_size = in.U32();                              //  98
    header.aux_block_size = S16(in);                              // 102
    header.font_flags = in.U16();                                 // 104
    for (int i = 0; i < 6; ++i) header.unread_106[i] = in.U16();  // 106
    header.row_inset = S16(in);                                   // 118
    header.word_table_size = in.U32();                            // 120
    header.sample_present = in.U16();                             // 124
    CopyBytes(in, header.unread_126);                             // 126
    return header;
}

tag_samp_struct ConvertSampleHead(std::span<const std::uint8_t> bytes) noexcept {
    message::BigEndianCursor in(bytes);
    tag_samp_struct head{};
    head.samp_first_word = S16(in);  // 0
    head.width_a = S16(in);          // 2
    head.height_a = S16(in);         // 4
    head.width_b = S16(in);          // 6
    head.height_b = S16(in);         // 8
    return head;
}

}  // namespace zel::font
