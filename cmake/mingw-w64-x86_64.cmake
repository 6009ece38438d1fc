# Cross-compiles for 64-bit Windows with the POSIX-threads flavour of mingw-w64, and runs the results
# under Wine in the build folder's own prefix.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_ASM_COMPILER ${triplet}-gcc-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

# Of an inline function that several objects define, the linker keeps one. On this target g++ takes the
# kept one for the one that it sees, so that a caller may leave a value in a register which the other
# object's version of the function changes: objects compiled with different options would not fit together.
foreach(language IN ITEMS C CXX)
  set(CMAKE_${language}_FLAGS_INIT -fno-ipa-ra)
endforeach()

# Headers and libraries come from the cross compiler's folders; only programs may be native.
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run)
