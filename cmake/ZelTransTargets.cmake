# Properties that every target of the project shares are on one interface target, zel_build.
add_library(zel_build INTERFACE)
target_compile_options(zel_build INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
# Without unique symbols, which would keep the module loaded for good.
target_compile_options(zel_build INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
# A file that is compiled together with others counts as a header, whose unnamed namespaces the compiler warns of.
if(CMAKE_UNITY_BUILD)
  target_compile_options(zel_build INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
target_include_directories(zel_build INTERFACE ${PROJECT_SOURCE_DIR}/src)

# The same sources make the same files, wherever they are and are built. The later map counts first.
if(ZELTRANS_PACKAGES)
  set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
  add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
endif()
# Width, sanitizers and counters hold for third-party sources (GoogleTest) too, so they are set for the whole tree.
if(ZELTRANS_32BIT)
  add_compile_options(-m32 -msse2 -mfpmath=sse)
  add_compile_definitions(_FILE_OFFSET_BITS=64)
  add_link_options(-m32)
endif()
if(ZELTRANS_SANITIZE)
  # The check of virtual tables would need type information that the module doesn't export.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1 -g1)
  # The sanitizer's dlopen looks for libraries by the older kind of run path only.
  add_link_options(-fsanitize=address,undefined -Wl,--disable-new-dtags)
endif()
if(ZELTRANS_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -O0 -g1)
  add_link_options(-fsanitize=thread -Wl,--disable-new-dtags)
endif()
if(ZELTRANS_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "ZELTRANS_FUZZ needs clang, which libFuzzer comes with")
  endif()
  # Comparisons aren't traced: that halves the speed, and the mutators know the values that count.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp -O2)
endif()
if(ZELTRANS_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# Code that consists mostly of library templates (JSON, command line) is compiled without optimization under the sanitizers.
macro(zel_compile_quickly_when_sanitized)
  if(ZELTRANS_SANITIZE)
    add_compile_options(-O0)
  endif()
endmacro()

# zel_library(<name> [SHARED|STATIC|OBJECT] SOURCES <file>... [LIBS <target>...]): one folder's code as one target, hidden by default.
function(zel_library name kind)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} ${kind} ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC $<BUILD_INTERFACE:zel_build> ${arg_LIBS})
  set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()
