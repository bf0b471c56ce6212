#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "base/field_text.h"

namespace zel {

/// File types in the Psos file header; stored values.
inline constexpr std::uint32_t kFontFileType = 500;
inline constexpr std::uint32_t kMessageFileType = 702;
inline constexpr std::uint32_t kRgbaFileTypeA = 714;
inline constexpr std::uint32_t kRgbaFileTypeB = 717;

constexpr bool IsRgbaFileType(std::uint32_t file_type) noexcept {
    return file_type == kRgbaFileTypeA || file_type == kRgbaFileTypeB;
}

}  // namespace zel

/// The header that opens message, font and RGBA files, 136 bytes.
struct tag_psos_header {
    std::uint32_t file_type;  //   0
    std::uint32_t unread_4;   //   4
    char type_name[128];      //   8  zero-terminated text; without a zero it ends with the header

    /// type_name up to its first NUL, or to the header's end.
    std::string_view TypeName() const noexcept { return zel::base::FieldText(type_name); }
};
static_assert(sizeof(tag_psos_header) == 136 && std::is_trivially_copyable_v<tag_psos_header>);
static_assert(offsetof(tag_psos_header, type_name) == 8);
