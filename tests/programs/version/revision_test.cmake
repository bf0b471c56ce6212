# The revision of a repository, and of directories without one of their own: cmake -DSOURCE=... -DWORK=... -P
function(expect_revision source expected)
  set(HEADER ${WORK}/revision.h)
  execute_process(COMMAND ${CMAKE_COMMAND} -DSOURCE=${source} -DHEADER=${HEADER} -P ${SOURCE}/cmake/write_revision.cmake
    COMMAND_ERROR_IS_FATAL ANY)
  file(READ ${HEADER} text)
  if(NOT text MATCHES "^#define ZELTRANS_REVISION \"${expected}\"\n$")
    message(FATAL_ERROR "${source}: not ${expected}: ${text}")
  endif()
endfunction()

find_program(git git REQUIRED)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/repository/unpacked ${WORK}/alone)
foreach(arguments "init;-q" "-c;user.name=Test;-c;user.email=test@example.invalid;commit;-q;--allow-empty;-m;First" "rev-parse;--short=12;HEAD")
  execute_process(COMMAND ${git} -C ${WORK}/repository ${arguments} OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
expect_revision(${WORK}/repository ${commit})
expect_revision(${WORK}/repository/unpacked unknown)  # an unpacked archive within another repository
file(WRITE ${WORK}/repository/file "1")
execute_process(COMMAND ${git} -C ${WORK}/repository add file COMMAND_ERROR_IS_FATAL ANY)
expect_revision(${WORK}/repository ${commit}-modified)
set(ENV{GIT_CEILING_DIRECTORIES} ${WORK})
expect_revision(${WORK}/alone unknown)
