#include "module/message/format/convert_tab_field.h"

#include <cstring>

#include "module/message/format/big_endian_cursor.h"

namespace zel::message {

tag_tab_field ConvertTabRecord(std::span<const std::uint8_t> bytes) noexcept {
    // The legacy machine writes this name for a field without one. The comparison includes its NUL.
    static constexpr char kUnnamed[] = "un-named";
    BigEndianCursor in(bytes);
    tag_tab_field tab{};
    tab.tab_start = in.U16();                    //  0
    tab.tab_end = in.U16();                      //  2
    tab.tab_byte = in.U8();                      //  4
    const auto name = in.Bytes<kTabNameSize>();  //  5
    if (std::memcmp(name.data(), kUnnamed, sizeof kUnnamed) != 0) std::memcpy(tab.tab_name, name.data(), name.size());
    const auto bits = in.Bytes<3>();  // 22
    tab.tab_bits = RepackTabBits(bits[0], bits[1], bits[2]);
    return tab;  // 25 is unread
}

}  // namespace zel::message
