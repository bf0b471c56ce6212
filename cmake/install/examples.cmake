# Installs the examples. Variables: root (of the sources), staging, examples_directory (relative to the prefix).
cmake_policy(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/public_source.cmake)
file(GLOB examples RELATIVE "${root}/examples" "${root}/examples/*.cpp")
foreach(example ${examples})
  zel_write_public_source("${root}/examples/${example}" "${staging}/examples/${example}")
endforeach()
cmake_path(ABSOLUTE_PATH examples_directory BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
file(INSTALL DESTINATION "${examples_directory}" TYPE DIRECTORY FILES "${staging}/examples/")
