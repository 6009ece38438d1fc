# What users of the library get: a zip with the release and one with its symbols, the target `zips`.
#
# An installation has the same layout. A further header joins the file set of the target kvutils, a further
# program the install(TARGETS) below, what is linked into either the list package/components.json.
if(KVUTILS_SANITIZE OR KVUTILS_COVERAGE OR NOT CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo")
  return()
endif()

include(CMakePackageConfigHelpers)

# The scripts of the package run natively, by Debian's own Python.
find_program(KVUTILS_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH)
set(package_sources ${PROJECT_SOURCE_DIR}/cmake/package)
set(package_folder ${PROJECT_BINARY_DIR}/package)
set(package_parts ${package_folder}/parts)
set(package_name kvutils-${PROJECT_VERSION}-win64)

# Everything in the package carries the date of the last commit.
set(date ${package_parts}/date)
add_custom_target(package_date
  COMMAND sh ${package_sources}/source_date.sh ${PROJECT_SOURCE_DIR} ${date}
  BYPRODUCTS ${date}
  VERBATIM)

# For compilers whose C++ names differ from this one's: the undecorated functions alone. The import library
# is of the short form, which Microsoft's linker reads as well as the GNU one.
set(undecorated ${package_parts}/kvutils.def)
set(undecorated_library ${package_parts}/kvutils.lib)
add_custom_command(OUTPUT ${undecorated}
  COMMAND sh ${package_sources}/undecorated.sh ${CMAKE_OBJDUMP} $<TARGET_FILE:kvutils> ${undecorated}
  DEPENDS kvutils ${package_sources}/undecorated.sh
  COMMENT "Listing the undecorated functions"
  VERBATIM)
add_custom_command(OUTPUT ${undecorated_library}
  COMMAND llvm-dlltool-14 -m i386:x86-64 -d ${undecorated} -l ${undecorated_library}
  DEPENDS ${undecorated}
  COMMENT "Making kvutils.lib"
  VERBATIM)

set(components ${package_parts}/kvutils.spdx.json)
add_custom_command(OUTPUT ${components}
  COMMAND ${KVUTILS_PYTHON} -B ${package_sources}/spdx.py --version ${PROJECT_VERSION} --date ${date}
    --binaries ${CMAKE_RUNTIME_OUTPUT_DIRECTORY} --dependencies ${KVUTILS_DEPS} --output ${components}
  DEPENDS kvutils ${KVUTILS_RUNTIME_DLLS} package_date ${date}
    ${package_sources}/spdx.py ${package_sources}/components.json ${KVUTILS_DEPS}/lib/libicudata.a
  COMMENT "Listing the components"
  VERBATIM)

# Layout.
set(package_includes include/kvutils)
set(package_config lib/cmake/kvutils)
set(package_texts share/kvutils)
configure_package_config_file(${package_sources}/kvutils-config.cmake.in ${package_parts}/kvutils-config.cmake
  INSTALL_DESTINATION ${package_config} NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${package_parts}/kvutils-config-version.cmake COMPATIBILITY SameMajorVersion)
configure_file(${package_sources}/kvutils.pc.in ${package_parts}/kvutils.pc @ONLY)
configure_file(${package_sources}/README.md.in ${package_parts}/README.md @ONLY)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME release)
install(TARGETS kvutils EXPORT kvutils-targets
  RUNTIME DESTINATION bin ARCHIVE DESTINATION lib FILE_SET HEADERS DESTINATION ${package_includes})
install(FILES ${KVUTILS_RUNTIME_DLLS} DESTINATION bin)
install(FILES ${undecorated} ${undecorated_library} DESTINATION lib)
install(EXPORT kvutils-targets NAMESPACE kvutils:: DESTINATION ${package_config})
install(FILES ${package_parts}/kvutils-config.cmake ${package_parts}/kvutils-config-version.cmake
  DESTINATION ${package_config})
install(FILES ${package_parts}/kvutils.pc DESTINATION lib/pkgconfig)
install(FILES ${package_parts}/README.md DESTINATION .)
install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/SECURITY.md ${components}
  DESTINATION ${package_texts})
install(DIRECTORY ${package_sources}/licences DESTINATION ${package_texts})
install(FILES $<TARGET_FILE:kvutils>.debug DESTINATION bin COMPONENT symbols)

# Both zips hold the same folder, so that the symbols, unpacked over the release, lie beside the DLL.
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME ${package_name})
set(CPACK_PACKAGE_DIRECTORY ${package_folder})
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_COMPONENTS_ALL release symbols)
set(CPACK_ARCHIVE_RELEASE_FILE_NAME ${package_name})
set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME ${package_name}-symbols)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)

# CPack's zips hold what the moment gave: dates, owners, the order of the file system.
set(KVUTILS_ZIPS ${package_folder}/${package_name}.zip ${package_folder}/${package_name}-symbols.zip)
file(GLOB licences CONFIGURE_DEPENDS ${package_sources}/licences/*)
get_target_property(headers kvutils HEADER_SET)
add_custom_command(OUTPUT ${KVUTILS_ZIPS}
  COMMAND ${CMAKE_CPACK_COMMAND} --config ${PROJECT_BINARY_DIR}/CPackConfig.cmake
  COMMAND ${KVUTILS_PYTHON} -B ${package_sources}/steady_zip.py --date ${date} ${KVUTILS_ZIPS}
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${package_folder}/_CPack_Packages
  DEPENDS kvutils ${KVUTILS_RUNTIME_DLLS} ${undecorated} ${undecorated_library} ${components} ${headers}
    ${package_sources}/steady_zip.py ${package_parts}/kvutils-config.cmake ${package_parts}/kvutils.pc
    ${package_parts}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/SECURITY.md ${licences}
  COMMENT "Making the zips of the package"
  VERBATIM)
add_custom_target(zips ALL DEPENDS ${KVUTILS_ZIPS})
