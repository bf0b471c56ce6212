# Installs the public headers: the contract's directly in include/zeltrans, the readers' and those of the framework in
# directories below. Variables: root (of the sources), staging, headers_directory (relative to the prefix).
cmake_policy(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/public_source.cmake)
set(sources "${root}/src")

# What a host includes besides what the contract includes.
set(open
  platform/framework/cwinapp.h platform/framework/exceptions.h platform/script/dialog_driver.h
  platform/script/headless_desktop.h platform/script/memory_settings_store.h platform/seam/desktop.h
  platform/seam/settings_store.h platform/system/errors.h platform/system/files.h)
file(GLOB headers RELATIVE "${sources}" "${sources}/module/contract/*.h" "${sources}/module/contract/records/*.h"
  "${sources}/module/*/format/*.h")
list(APPEND open ${headers})

# With every header that these include, directly or not.
set(headers)
while(open)
  list(POP_FRONT open header)
  if(header IN_LIST headers)
    continue()
  endif()
  list(APPEND headers ${header})
  file(STRINGS "${sources}/${header}" includes REGEX "^#include \"")
  foreach(include ${includes})
    string(REGEX REPLACE "^#include \"([^\"]+)\".*" "\\1" include "${include}")
    list(APPEND open ${include})
  endforeach()
endwhile()

file(REMOVE_RECURSE "${staging}/headers")
foreach(header ${headers})
  string(REGEX REPLACE "^module/(contract/)?" "" name "${header}")
  zel_write_public_source("${sources}/${header}" "${staging}/headers/${name}")
endforeach()
cmake_path(ABSOLUTE_PATH headers_directory BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
file(INSTALL DESTINATION "${headers_directory}" TYPE DIRECTORY FILES "${staging}/headers/")
