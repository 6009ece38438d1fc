# kvutils_separate_symbols(TARGET): moves the symbols of a DLL into a file of their own beside it, to which
# the DLL keeps a link for debuggers. The date inside stays as it was linked.
function(kvutils_separate_symbols target)
  set(symbols $<TARGET_FILE:${target}>.debug)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug $<TARGET_FILE:${target}> ${symbols}
    COMMAND ${CMAKE_STRIP} --preserve-dates --strip-unneeded $<TARGET_FILE:${target}>
    COMMAND ${CMAKE_OBJCOPY} --preserve-dates --add-gnu-debuglink=${symbols} $<TARGET_FILE:${target}>
    BYPRODUCTS ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${target}.dll.debug
    VERBATIM)
endfunction()
