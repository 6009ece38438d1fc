# The sanitized build: every access to memory is checked, and undefined behaviour ends the process.
#
# The compiler has no run-time library of its address sanitizer for this target; of the instrumentation
# for kernels it has, which leaves everything but the stack's margins to functions that it calls.
# tests/sanitizer defines them. Undefined behaviour traps and needs no library.
option(KVUTILS_SANITIZE "Check every access to memory, and trap undefined behaviour" OFF)
if(NOT KVUTILS_SANITIZE)
  return()
endif()

add_subdirectory(tests/sanitizer)

# The offset is tests/sanitizer/shadow.h's.
target_compile_options(kvutils_options INTERFACE
  -fsanitize=kernel-address -fasan-shadow-offset=0x10000000000 -fsanitize-address-use-after-scope
  "SHELL:--param asan-instrumentation-with-call-threshold=0"
  "SHELL:--param asan-stack=1" "SHELL:--param asan-globals=1"
  -fsanitize=undefined,float-cast-overflow,bounds-strict -fsanitize-undefined-trap-on-error)
target_compile_definitions(kvutils_options INTERFACE KVUTILS_SANITIZE)
target_link_libraries(kvutils_options INTERFACE
  $<IF:$<BOOL:$<TARGET_PROPERTY:KVUTILS_HAS_NO_DLLS>>,kvasan_static,kvasan>)
