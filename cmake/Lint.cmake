# The target `lint`: clang-format on all sources, clang-tidy and clang's own warnings on the library's. Every
# file that passes leaves a stamp, so that only what changed, or includes what changed, is checked again.

set(lint_folder ${PROJECT_BINARY_DIR}/lint)
file(MAKE_DIRECTORY ${lint_folder})

# check_file(TARGET KIND FILE MESSAGE COMMAND... [DEPFILE ...]): the stamp of one check of one file, which
# depends on `check_rules` as well.
function(check_file target kind file message)
  string(MAKE_C_IDENTIFIER ${file} name)
  set(stamp ${lint_folder}/${name}.${kind})
  list(TRANSFORM ARGN REPLACE "@stamp@" ${stamp})
  add_custom_command(OUTPUT ${stamp}
    ${ARGN}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${PROJECT_SOURCE_DIR}/${file} ${check_rules}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "${message} ${file}"
    VERBATIM COMMAND_EXPAND_LISTS)
  set_property(GLOBAL APPEND PROPERTY ${target}_stamps ${stamp})
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

set(list_includes ${CMAKE_CXX_COMPILER} -std=c++20 ${source_flags} -MM -MT @stamp@ -MF @stamp@.d)

# What clang finds, and what is no plain C++: every extension of GNU's that another compiler would refuse. The
# exceptions stand behind the macros of utils/internal/compiler.h, which asks for the compiler. Members that
# are there for the layout of an exported class alone are not read.
set(clang clang++-14 -fsyntax-only ${tidy_flags} -Werror -Wall -Wextra -Wpedantic -Wgnu -Wmicrosoft
  -Wlanguage-extension-token -Wgcc-compat -Wvla -Wcomma -Wunreachable-code -Wimplicit-fallthrough -Wno-unused-private-field)
set(header_flags -std=c++17 -I${PROJECT_SOURCE_DIR})

file(GLOB_RECURSE all_sources CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
  utils/*.h utils/*.cpp tests/*.h tests/*.cpp examples/*.h examples/*.cpp bench/*.h bench/*.cpp)
foreach(file IN LISTS all_sources)
  set(check_rules ${PROJECT_SOURCE_DIR}/.clang-format)
  check_file(lint format ${file} "Checking the format of"
    COMMAND clang-format-14 --dry-run --Werror ${file})
  if(file MATCHES "^utils/.*\\.cpp$")
    set(check_rules ${PROJECT_SOURCE_DIR}/.clang-tidy)
    check_file(lint tidy ${file} "Checking the style of"
      COMMAND ${list_includes} ${PROJECT_SOURCE_DIR}/${file}
      COMMAND clang-tidy-14 --quiet ${file} -- ${tidy_flags} ${source_flags}
      DEPFILE @stamp@.d)
    check_file(lint clang ${file} "Compiling with clang"
      COMMAND ${clang} ${source_flags} -MD -MT @stamp@ -MF @stamp@.d ${file}
      DEPFILE @stamp@.d)
  endif()
endforeach()

include(Analyse)

# A host includes each public header by itself, in the oldest language that it may use.
get_target_property(public_headers kvutils HEADER_SET)
foreach(header IN LISTS public_headers)
  cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
  check_file(lint clang ${header} "Compiling with clang"
    COMMAND ${clang} ${header_flags} -MD -MT @stamp@ -MF @stamp@.d -x c++ ${header}
    DEPFILE @stamp@.d)
endforeach()

get_property(lint_stamps GLOBAL PROPERTY lint_stamps)
add_custom_target(lint DEPENDS ${lint_stamps})
