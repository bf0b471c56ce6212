# Writes scripts.cpp, with the scripts of js/ as texts.
function(read_all result)
  set(text "")
  foreach(name IN LISTS ARGN)
    file(READ ${FOLDER}/${name} content)
    string(APPEND text "${content}")
  endforeach()
  if(text MATCHES "\\)zeltrans\"")
    message(FATAL_ERROR "${ARGN}: the text can't contain )zeltrans\"")
  endif()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

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
