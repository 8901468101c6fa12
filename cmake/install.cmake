# Where the compiler, its manual, completion, examples and CMake package go, and the Debian package made of them.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(man_docdir ${CMAKE_INSTALL_FULL_DOCDIR})
set(man_datadir ${CMAKE_INSTALL_FULL_DATADIR})
set(package_dir ${CMAKE_INSTALL_DATADIR}/cmake/xfc)
set(packaging_dir ${CMAKE_CURRENT_BINARY_DIR}/packaging)
find_program(GZIP_PROGRAM gzip REQUIRED)
mark_as_advanced(GZIP_PROGRAM)

# Debian wants manual pages and longer documents compressed, always to the same bytes.
set(compressed_files)
function(compress source name)
    add_custom_command(
        OUTPUT ${packaging_dir}/${name}.gz
        COMMAND ${GZIP_PROGRAM} -9nc ${source} > ${packaging_dir}/${name}.gz
        DEPENDS ${source}
        VERBATIM)
    set(compressed_files ${compressed_files} ${packaging_dir}/${name}.gz PARENT_SCOPE)
endfunction()

# --- program, manual, completion

install(TARGETS xfc EXPORT xfcTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

configure_file(packaging/xfc.1.in ${packaging_dir}/xfc.1 @ONLY)
compress(${packaging_dir}/xfc.1 xfc.1)
install(FILES ${packaging_dir}/xfc.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

install(FILES packaging/xfc.bash-completion
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME xfc)

# --- documents and examples

# Debian's copyright file holds the licence; its text stands once, in LICENSE.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/LICENSE)
file(READ LICENSE licence_text)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)\n+(.*)" _ "${licence_text}")
set(copyright_holder "${CMAKE_MATCH_1}")
string(STRIP "${CMAKE_MATCH_2}" licence_text)
string(REPLACE "\n\n" "\n.\n" licence_text "${licence_text}")
string(REPLACE "\n" "\n " licence_text " ${licence_text}")
configure_file(packaging/debian/copyright.in ${packaging_dir}/copyright @ONLY)

compress(${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md changelog)
compress(${CMAKE_CURRENT_SOURCE_DIR}/README.md README.md)
compress(${CMAKE_CURRENT_SOURCE_DIR}/docs/build-flows.md build-flows.md)
install(FILES
    ${packaging_dir}/copyright
    ${packaging_dir}/changelog.gz
    ${packaging_dir}/README.md.gz
    ${packaging_dir}/build-flows.md.gz
    DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
    FILES_MATCHING PATTERN "*.c" PATTERN "README.md")

# --- CMake package: find_package(xfc)

configure_package_config_file(cmake/xfcConfig.cmake.in ${packaging_dir}/xfcConfig.cmake
    INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${packaging_dir}/xfcConfigVersion.cmake
    COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(EXPORT xfcTargets NAMESPACE xfc:: DESTINATION ${package_dir})
install(FILES
    ${packaging_dir}/xfcConfig.cmake
    ${packaging_dir}/xfcConfigVersion.cmake
    cmake/xfc_add_datapath.cmake
    cmake/xfc_compile_datapath.cmake
    DESTINATION ${package_dir})

# --- Debian package; scripts/package builds it

# These two belong to the package only, not to an installation by hand.
compress(${CMAKE_CURRENT_SOURCE_DIR}/packaging/debian/changelog changelog.Debian)
install(FILES ${packaging_dir}/changelog.Debian.gz DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES packaging/debian/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME xfc
    COMPONENT debian EXCLUDE_FROM_ALL)

add_custom_target(compressed_documents ALL DEPENDS ${compressed_files})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME xfc)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "xfc developers")
set(CPACK_PACKAGE_CONTACT "xfc developers <xfc@xfc-project.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "compiler from C to pipelined floating-point datapaths")
set(CPACK_PACKAGE_DESCRIPTION_FILE ${CMAKE_CURRENT_SOURCE_DIR}/packaging/debian/description)
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};xfc;ALL;/" "${CMAKE_BINARY_DIR};xfc;debian;/")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cmake, ghdl, iverilog, verilator")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
