# What the set-up cross-builds and leaves in KVUTILS_DEPS: libraries, as imported targets, and unzip.exe.
if(DEFINED ENV{KVUTILS_DEPS})
  set(deps "$ENV{KVUTILS_DEPS}")
else()
  set(deps "${PROJECT_SOURCE_DIR}/build/deps")
endif()
set(KVUTILS_DEPS "${deps}" CACHE PATH "Folder with include/ and lib/ of the cross-built dependencies")
foreach(file IN ITEMS lib/libicu.a bin/unzip.exe)
  if(NOT EXISTS "${KVUTILS_DEPS}/${file}")
    message(FATAL_ERROR "KVUTILS_DEPS holds no ${file}; ./kv setup makes the cross-built dependencies")
  endif()
endforeach()

function(kvutils_import_library target)
  set(libraries ${ARGN})
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} SYSTEM INTERFACE ${KVUTILS_DEPS}/include)
  list(TRANSFORM libraries PREPEND ${KVUTILS_DEPS}/lib/lib)
  list(TRANSFORM libraries APPEND .a)
  target_link_libraries(${target} INTERFACE ${libraries})
endfunction()

kvutils_import_library(icu icu icudata)
target_compile_definitions(icu INTERFACE U_STATIC_IMPLEMENTATION)
kvutils_import_library(gtest_main gtest_main gtest)

# The program that the library unpacks archives with. A host has it in its own folder, which the system
# searches first. Nothing puts it into build/bin, because tests run stand-ins for it: who wants it takes a copy.
set(KVUTILS_UNZIP ${KVUTILS_DEPS}/bin/unzip.exe)
