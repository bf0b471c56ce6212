#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "platform/system/types.h"

/// The host's effect record, 3680 bytes. The host defines its layout. The module sets the named fields; every other
/// byte is 0.
struct [[gnu::packed, gnu::aligned(4)]] EFFPAR {
    COLORREF face_colour;               //   0  entry 1 of colour set 7
    std::uint8_t host_4[36];            //   4
    double effect_ratio;                //  40  0.75
    std::int32_t effect_const;          //  48  4
    std::uint8_t host_52[180];          //  52
    std::int32_t edge_size;             // 232  pixels
    std::uint8_t host_236[20];          // 236
    std::int32_t edge_angle;            // 256  degrees
    std::uint8_t host_260[44];          // 260
    std::int32_t edge_type;             // 304  0 to 15
    std::uint8_t host_308[20];          // 308
    COLORREF edge_colour;               // 328  entry 2 of colour set 7
    std::uint8_t host_332[116];         // 332
    std::int32_t edge_on;               // 448  1 for edge types 1 to 3, else 0
    std::uint8_t host_452[3680 - 452];  // 452
};
static_assert(sizeof(EFFPAR) == 3680 && std::is_trivially_copyable_v<EFFPAR>);
static_assert(offsetof(EFFPAR, effect_ratio) == 40 && offsetof(EFFPAR, effect_const) == 48 &&
              offsetof(EFFPAR, edge_size) == 232 && offsetof(EFFPAR, edge_angle) == 256 &&
              offsetof(EFFPAR, edge_type) == 304 && offsetof(EFFPAR, edge_colour) == 328 &&
              offsetof(EFFPAR, edge_on) == 448);
