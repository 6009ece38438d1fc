# The counting build: it counts which lines and branches of the library the tests run.
#
# Each process adds its counts to a file beside each object file when it ends in order, or when the library
# ends it; one that a test kills leaves none. They are there in whatever folder and drive it ends if
# GCOV_PREFIX is the drive of the object files, Z:.
option(KVUTILS_COVERAGE "Count which lines and branches of the library run" OFF)
if(NOT KVUTILS_COVERAGE)
  return()
endif()

# The library alone is compiled as it is written, without optimisation, which fortified calls need, and
# without the branches of the stack protector. The tests are built as for the release.
foreach(target IN ITEMS kvutils kvutils_kernels)
  target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic -O0 -U_FORTIFY_SOURCE
    -fno-stack-protector)
  target_link_options(${target} PUBLIC --coverage)
endforeach()

# What the counting needs of a program: of each that counts, and of the library.
foreach(part IN ITEMS counts_lock counts_at_end)
  add_library(${part} OBJECT ${PROJECT_SOURCE_DIR}/tests/coverage/${part}.cpp)
  target_link_libraries(${part} PRIVATE kvutils_language)
endforeach()
target_sources(kvutils_kernels INTERFACE $<TARGET_OBJECTS:counts_lock>)
target_link_options(kvutils_kernels INTERFACE LINKER:--wrap=__imp__locking)
target_sources(kvutils PRIVATE $<TARGET_OBJECTS:counts_at_end>)
target_link_options(kvutils PRIVATE LINKER:--wrap=__imp_TerminateProcess)
