# The compiler's run-time DLLs, stripped, beside the library: host and library share them, because strings,
# vectors and exceptions cross the boundary.
set(KVUTILS_RUNTIME_DLLS)
foreach(name IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
    OUTPUT_VARIABLE source OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS "${source}")
    message(FATAL_ERROR "the compiler does not tell where its ${name} lies")
  endif()
  set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
  add_custom_command(OUTPUT ${copy} DEPENDS ${source}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
    COMMAND ${CMAKE_STRIP} --preserve-dates --strip-unneeded -o ${copy} ${source})
  list(APPEND KVUTILS_RUNTIME_DLLS ${copy})
endforeach()
add_custom_target(runtime_libraries ALL DEPENDS ${KVUTILS_RUNTIME_DLLS})
