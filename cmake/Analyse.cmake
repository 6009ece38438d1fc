# The target `analyse`: what follows the ways through the library's sources, the analysers of clang and of the
# compiler, and cppcheck. Every finding is an error.

set(clang_analyser clang-tidy-14 --quiet --checks=-*,clang-analyzer-*)
# The compiler's analyser is made for C: it takes what a constructor fills for uninitialised, and what a
# container holds for lost. Both are found by running the tests in the sanitized build.
set(compilers_analyser ${CMAKE_CXX_COMPILER} -std=c++20 ${source_flags} -fanalyzer -Werror
  -Wno-analyzer-use-of-uninitialized-value -Wno-analyzer-malloc-leak -S -o /dev/null)
set(cppcheck cppcheck --quiet --enable=warning,performance,portability,style --error-exitcode=1
  --std=c++20 --language=c++ --platform=win64 --suppressions-list=cmake/cppcheck.txt)

foreach(file IN LISTS all_sources)
  if(NOT file MATCHES "^utils/.*\\.cpp$")
    continue()
  endif()
  set(check_rules ${PROJECT_SOURCE_DIR}/cmake/Analyse.cmake ${PROJECT_SOURCE_DIR}/cmake/cppcheck.txt)
  check_file(analyse analysis ${file} "Following the ways through"
    COMMAND ${list_includes} ${PROJECT_SOURCE_DIR}/${file}
    COMMAND ${cppcheck} ${source_flags} ${file}
    COMMAND ${compilers_analyser} ${PROJECT_SOURCE_DIR}/${file}
    COMMAND ${clang_analyser} ${file} -- ${tidy_flags} ${source_flags}
    DEPFILE @stamp@.d)
endforeach()

get_property(analyse_stamps GLOBAL PROPERTY analyse_stamps)
add_custom_target(analyse DEPENDS ${analyse_stamps})
