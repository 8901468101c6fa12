# The Debian packages, one a component of the installation; scripts/package builds them.

set(package_components xfc components)
if(XFC_FLOW)
    list(APPEND package_components xfcflow)
endif()

# These belong to the packages only, not to an installation by hand.
compress(${CMAKE_CURRENT_SOURCE_DIR}/packaging/debian/changelog changelog.Debian)
foreach(component IN LISTS package_components)
    set(package ${component})
    if(component STREQUAL "components")
        set(package xfc-components)
    endif()
    set(documents ${CMAKE_INSTALL_DATADIR}/doc/${package})
    install(FILES ${packaging_dir}/changelog.Debian.gz DESTINATION ${documents}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
    if(NOT component STREQUAL "xfc")
        install(FILES ${packaging_dir}/copyright ${packaging_dir}/changelog.gz DESTINATION ${documents}
            COMPONENT ${component} EXCLUDE_FROM_ALL)
    endif()
    install(FILES packaging/debian/${package}.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME ${package} COMPONENT ${component} EXCLUDE_FROM_ALL)

    string(TOUPPER ${component} name)
    file(STRINGS packaging/debian/${package}.description description)
    list(JOIN description "\n" CPACK_DEBIAN_${name}_DESCRIPTION)
    set(CPACK_DEBIAN_${name}_PACKAGE_NAME ${package})
    set(CPACK_DEBIAN_${name}_PACKAGE_SOURCE xfc)
    set(CPACK_DEBIAN_${name}_PACKAGE_SHLIBDEPS ON)
endforeach()
set(CPACK_DEBIAN_XFC_PACKAGE_SUGGESTS "cmake, ghdl, iverilog, verilator, xfc-components")
set(CPACK_DEBIAN_XFC_PACKAGE_SOURCE "")
set(CPACK_DEBIAN_XFCFLOW_PACKAGE_DEPENDS "xfc-components (= ${PROJECT_VERSION}-1)")
set(CPACK_DEBIAN_XFCFLOW_PACKAGE_RECOMMENDS "ghdl | iverilog | verilator")
set(CPACK_DEBIAN_COMPONENTS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_COMPONENTS_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_COMPONENTS_PACKAGE_SUGGESTS "ghdl, iverilog, verilator, yosys")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${package_components})
set(CPACK_PACKAGE_NAME xfc)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# A package has its own summary, the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_VENDOR "xfc developers")
set(CPACK_PACKAGE_CONTACT "xfc developers <xfc@xfc-project.example>")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
