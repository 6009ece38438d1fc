# The cross-built libraries that the set-up leaves in KVUTILS_DEPS, as imported targets.
set(KVUTILS_DEPS "$ENV{KVUTILS_DEPS}" CACHE PATH "Folder with include/ and lib/ of the cross-built dependencies")
if(NOT EXISTS "${KVUTILS_DEPS}/lib/libicu.a")
  message(FATAL_ERROR "KVUTILS_DEPS does not hold the cross-built dependencies; ./kv setup makes them")
endif()

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
