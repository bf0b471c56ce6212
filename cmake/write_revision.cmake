# Writes the revision of the sources as a header, only when it has changed: cmake -DSOURCE=... -DHEADER=... -P
# A tree without a repository of its own, such as an unpacked archive, has the revision "unknown", also where it lies
# within the repository of something else.
cmake_policy(VERSION 3.25)
set(revision unknown)
find_program(git git)
if(git)
  execute_process(COMMAND ${git} -C ${SOURCE} rev-parse --show-toplevel OUTPUT_VARIABLE top
    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  file(REAL_PATH "${SOURCE}" source)
  if(top STREQUAL source)
    execute_process(COMMAND ${git} -C ${SOURCE} describe --always --exclude=* --abbrev=12 --dirty=-modified
      OUTPUT_VARIABLE described OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(described)
      set(revision ${described})
    endif()
  endif()
endif()
file(CONFIGURE OUTPUT "${HEADER}" CONTENT "#define ZELTRANS_REVISION \"@revision@\"\n" @ONLY)
