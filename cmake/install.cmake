# Where the programs, their manuals, completion, examples, the component library and the CMake package go. Each part is
# a component of the installation and a Debian package: xfc, xfcflow (built with XFC_FLOW) and components.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(man_docdir ${CMAKE_INSTALL_FULL_DOCDIR})
set(man_datadir ${CMAKE_INSTALL_FULL_DATADIR})
set(package_dir ${CMAKE_INSTALL_DATADIR}/cmake/xfc)
set(packaging_dir ${CMAKE_CURRENT_BINARY_DIR}/packaging)
set(flow_docdir ${CMAKE_INSTALL_DATADIR}/doc/xfcflow)
set(components_docdir ${CMAKE_INSTALL_DATADIR}/doc/xfc-components)
set(library_dir ${CMAKE_INSTALL_DATADIR}/xfc/library)
set(completion_dir ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
find_program(GZIP_PROGRAM gzip REQUIRED)
mark_as_advanced(GZIP_PROGRAM)

# Debian wants manual pages and longer documents compressed, always to the same bytes.
set(made_files)
function(compress source name)
    add_custom_command(
        OUTPUT ${packaging_dir}/${name}.gz
        COMMAND ${GZIP_PROGRAM} -9nc ${source} > ${packaging_dir}/${name}.gz
        DEPENDS ${source}
        VERBATIM)
    set(made_files ${made_files} ${packaging_dir}/${name}.gz PARENT_SCOPE)
endfunction()

# --- xfc: program, manual, completion

install(TARGETS xfc EXPORT xfcTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT xfc)

configure_file(packaging/xfc.1.in ${packaging_dir}/xfc.1 @ONLY)
compress(${packaging_dir}/xfc.1 xfc.1)
install(FILES ${packaging_dir}/xfc.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT xfc)

install(FILES packaging/xfc.bash-completion DESTINATION ${completion_dir} RENAME xfc COMPONENT xfc)

# --- xfc: documents and examples

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
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT xfc)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT xfc
    FILES_MATCHING PATTERN "*.c" PATTERN "README.md" PATTERN "flow" EXCLUDE PATTERN "cocotb" EXCLUDE)

# --- xfc: CMake package for find_package(xfc)

configure_package_config_file(cmake/xfcConfig.cmake.in ${packaging_dir}/xfcConfig.cmake
    INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${packaging_dir}/xfcConfigVersion.cmake
    COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(EXPORT xfcTargets NAMESPACE xfc:: DESTINATION ${package_dir} COMPONENT xfc)
install(FILES
    ${packaging_dir}/xfcConfig.cmake
    ${packaging_dir}/xfcConfigVersion.cmake
    cmake/xfc_add_datapath.cmake
    cmake/xfc_compile_datapath.cmake
    DESTINATION ${package_dir} COMPONENT xfc)

# --- components: the hardware texts, a folder a language, and a list of the files in compile order in each

foreach(language IN ITEMS vhdl verilog)
    set(list ${packaging_dir}/xfc_${language}.f)
    if(language STREQUAL "vhdl")
        file(GLOB texts CONFIGURE_DEPENDS library/*/*.vhd)
    else()
        file(GLOB texts CONFIGURE_DEPENDS library/*/*.v)
    endif()
    add_custom_command(
        OUTPUT ${list}
        COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/scripts/list-library ${language} | sed "s,.*/,," > ${list}
        DEPENDS ${texts} scripts/list-library)
    list(APPEND made_files ${list})
    install(FILES ${texts} ${list} DESTINATION ${library_dir}/${language} COMPONENT components)
endforeach()

# The models' sources, of which xfcflow makes models of whole designs: NAME.cpp for each component, its tables, and the
# headers in the folders that they are included from.
file(GLOB models CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}/library library/*/model.cpp)
foreach(model IN LISTS models)
    get_filename_component(component ${model} DIRECTORY)
    install(FILES library/${model} DESTINATION ${library_dir}/model RENAME ${component}.cpp COMPONENT components)
endforeach()
file(GLOB tables CONFIGURE_DEPENDS library/*/*_table.h)
install(FILES ${tables} DESTINATION ${library_dir}/model COMPONENT components)
file(GLOB headers CONFIGURE_DEPENDS src/model/*.h)
list(FILTER headers EXCLUDE REGEX "model_list.h$")
install(FILES ${headers} DESTINATION ${library_dir}/model/model COMPONENT components)
install(FILES src/components/library_options.h src/components/number_format.h
    DESTINATION ${library_dir}/model/components COMPONENT components)

compress(${CMAKE_CURRENT_SOURCE_DIR}/docs/components.md components.md)
install(FILES ${packaging_dir}/components.md.gz DESTINATION ${components_docdir} COMPONENT components)

# --- xfcflow: program, header, and the manual and completion that the program itself prints

if(XFC_FLOW)
    install(TARGETS xfcflow EXPORT xfcflowTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT xfcflow)
    install(FILES include/xfc.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT xfcflow)

    add_custom_command(
        OUTPUT ${packaging_dir}/xfcflow.1
        COMMAND xfcflow --man > ${packaging_dir}/xfcflow.1
        DEPENDS xfcflow
        VERBATIM)
    compress(${packaging_dir}/xfcflow.1 xfcflow.1)
    install(FILES ${packaging_dir}/xfcflow.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT xfcflow)
    add_custom_command(
        OUTPUT ${packaging_dir}/xfcflow.bash-completion
        COMMAND xfcflow --completion > ${packaging_dir}/xfcflow.bash-completion
        DEPENDS xfcflow
        VERBATIM)
    list(APPEND made_files ${packaging_dir}/xfcflow.bash-completion)
    install(FILES ${packaging_dir}/xfcflow.bash-completion DESTINATION ${completion_dir} RENAME xfcflow COMPONENT xfcflow)

    set(flow_package_dir ${CMAKE_INSTALL_DATADIR}/cmake/xfcflow)
    configure_package_config_file(cmake/xfcflowConfig.cmake.in ${packaging_dir}/xfcflowConfig.cmake
        INSTALL_DESTINATION ${flow_package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
    write_basic_package_version_file(${packaging_dir}/xfcflowConfigVersion.cmake
        COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
    install(EXPORT xfcflowTargets NAMESPACE xfcflow:: DESTINATION ${flow_package_dir} COMPONENT xfcflow)
    install(FILES
        ${packaging_dir}/xfcflowConfig.cmake
        ${packaging_dir}/xfcflowConfigVersion.cmake
        cmake/xfcflow_add_datapath.cmake
        DESTINATION ${flow_package_dir} COMPONENT xfcflow)

    install(DIRECTORY examples/flow/ DESTINATION ${flow_docdir}/examples COMPONENT xfcflow
        FILES_MATCHING PATTERN "*.c" PATTERN "README.md")
    install(DIRECTORY examples/cocotb DESTINATION ${flow_docdir}/examples COMPONENT xfcflow
        FILES_MATCHING PATTERN "*.c" PATTERN "*.py" PATTERN "Makefile" PATTERN "README.md"
        PATTERN "hardware" EXCLUDE PATTERN "__pycache__" EXCLUDE)
    install(DIRECTORY docs/pictures DESTINATION ${flow_docdir} COMPONENT xfcflow FILES_MATCHING PATTERN "*.svg")
    foreach(document IN ITEMS tutorial from-other-tools language accuracy gallery)
        if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/docs/${document}.md)
            compress(${CMAKE_CURRENT_SOURCE_DIR}/docs/${document}.md ${document}.md)
            install(FILES ${packaging_dir}/${document}.md.gz DESTINATION ${flow_docdir} COMPONENT xfcflow)
        endif()
    endforeach()
endif()

include(cmake/packages.cmake)

add_custom_target(installed_documents ALL DEPENDS ${made_files})
