# Writes scripts.cpp, with the scripts of js/ as texts.
include(${CMAKE_CURRENT_LIST_DIR}/../../../cmake/read_texts.cmake)

read_all(page ${COMMON} ${PAGE})
read_all(module ${COMMON} ${MODULE})
read_all(style ${STYLE})
file(CONFIGURE OUTPUT ${OUTPUT} @ONLY CONTENT [==[
// Made of the files in js/ by embed_scripts.cmake.
#include "host/live/scripts.h"

namespace zel::live {

std::string_view PageScript() noexcept {
    return R"zeltrans((function () {
"use strict";
@page@}());
)zeltrans";
}

std::string_view ModuleScript() noexcept {
    return R"zeltrans(@module@)zeltrans";
}

std::string_view PageStyle() noexcept {
    return R"zeltrans(
@style@)zeltrans";
}

}  // namespace zel::live
]==])
