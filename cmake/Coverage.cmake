# The counting build: it counts which lines and branches of the library the tests run.
#
# Each process adds its counts to a file beside each object file when it ends in order; one that is
# killed, or ends itself at once, leaves none.
option(KVUTILS_COVERAGE "Count which lines and branches of the library run" OFF)
if(NOT KVUTILS_COVERAGE)
  return()
endif()

foreach(target IN ITEMS kvutils kvutils_kernels)
  target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
  target_link_options(${target} PUBLIC --coverage)
endforeach()
