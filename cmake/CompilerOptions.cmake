# Language level and warnings, and with hardening the options of every target that is shipped or tested,
# as interface targets; a compiler cache where the machine has one.
find_program(KVUTILS_CCACHE ccache DOC "The compiler cache to use, if any")
mark_as_advanced(KVUTILS_CCACHE)
if(KVUTILS_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KVUTILS_CCACHE})
endif()

add_library(kvutils_language INTERFACE)
target_compile_features(kvutils_language INTERFACE cxx_std_20)
target_compile_options(kvutils_language INTERFACE
  -Werror -Wall -Wextra -Wpedantic
  -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wuseless-cast -Wcast-align -Wcast-qual
  -Wduplicated-branches -Wduplicated-cond -Wlogical-op -Wnull-dereference -Wnon-virtual-dtor
  -Woverloaded-virtual -Wformat=2 -Wno-format-nonliteral -Wundef)
target_compile_definitions(kvutils_language INTERFACE UNICODE _UNICODE)

# Places in the sources are told relative to them, so that the same sources give the same bytes in every
# folder, and the compiler cache serves all of them. Counts are found by their absolute paths.
if(NOT KVUTILS_COVERAGE)
  target_compile_options(kvutils_language INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()

add_library(kvutils_options INTERFACE)
target_link_libraries(kvutils_options INTERFACE kvutils_language)
target_compile_options(kvutils_options INTERFACE -fstack-protector-strong)
target_compile_definitions(kvutils_options INTERFACE
  $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>
  $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

# The checks of the stack protector and of fortified calls come from libssp, linked into each program
# so that no further DLL is needed beside it. Position independence, a high-entropy address space and
# a non-executable stack are asked for by name, whatever the linker's defaults are.
target_link_options(kvutils_options INTERFACE
  LINKER:--dynamicbase,--high-entropy-va,--nxcompat
  LINKER:--fatal-warnings)
set(KVUTILS_SSP_LIBRARIES -Wl,-Bstatic -lssp -Wl,-Bdynamic)
