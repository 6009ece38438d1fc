# The target `lint`: clang-format on all sources, clang-tidy on the library's. Every file that passes
# leaves a stamp, so that only what changed, or includes what changed, is checked again.

set(lint_folder ${PROJECT_BINARY_DIR}/lint)
file(MAKE_DIRECTORY ${lint_folder})

# lint_file(KIND FILE MESSAGE COMMAND... [DEPFILE ...]): the stamp of one check of one file.
function(lint_file kind file message)
  string(MAKE_C_IDENTIFIER ${file} name)
  set(stamp ${lint_folder}/${name}.${kind})
  list(TRANSFORM ARGN REPLACE "@stamp@" ${stamp})
  add_custom_command(OUTPUT ${stamp}
    ${ARGN}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${PROJECT_SOURCE_DIR}/${file} ${PROJECT_SOURCE_DIR}/.clang-${kind}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "${message} ${file}"
    VERBATIM COMMAND_EXPAND_LISTS)
  set_property(GLOBAL APPEND PROPERTY lint_stamps ${stamp})
endfunction()

# Clang reads the sources with the cross compiler's headers behind its own. What a source includes is
# asked of the cross compiler.
set(tidy_flags -std=c++20 --target=x86_64-w64-mingw32 -nostdlibinc)
foreach(folder IN LISTS CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES)
  if(folder MATCHES "/c\\+\\+")
    list(APPEND tidy_flags -isystem ${folder})
  elseif(NOT folder MATCHES "^/usr/lib/gcc/")
    list(APPEND tidy_flags -idirafter ${folder})
  endif()
endforeach()
set(source_flags
  "-I$<JOIN:$<TARGET_PROPERTY:kvutils,INCLUDE_DIRECTORIES>,$<SEMICOLON>-I>"
  "-D$<JOIN:$<TARGET_PROPERTY:kvutils,COMPILE_DEFINITIONS>,$<SEMICOLON>-D>")

file(GLOB_RECURSE all_sources CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
  utils/*.h utils/*.cpp tests/*.h tests/*.cpp examples/*.h examples/*.cpp bench/*.h bench/*.cpp)
foreach(file IN LISTS all_sources)
  lint_file(format ${file} "Checking the format of"
    COMMAND clang-format-14 --dry-run --Werror ${file})
  if(file MATCHES "^utils/.*\\.cpp$")
    lint_file(tidy ${file} "Checking the style of"
      COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 ${source_flags} -MM -MT @stamp@ -MF @stamp@.d
        ${PROJECT_SOURCE_DIR}/${file}
      COMMAND clang-tidy-14 --quiet ${file} -- ${tidy_flags} ${source_flags}
      DEPFILE @stamp@.d)
  endif()
endforeach()

get_property(lint_stamps GLOBAL PROPERTY lint_stamps)
add_custom_target(lint DEPENDS ${lint_stamps})
