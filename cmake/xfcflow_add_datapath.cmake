# xfcflow_add_datapath(<target>
#     TOP <function>             what to make hardware of; the design is called so
#     SOURCES <source.c> [<file>...]  the program, then files that it includes
#     [LANGUAGE vhdl|verilog|both]    default: both
#     [DRIVER c|python]          also write a model of the design for test benches
#     [OPTIONS <option>...]      further options of "xfcflow build", as in OPTIONS --mantissa 36
#     [OUTPUT_DIRECTORY <dir>])  default: CMAKE_CURRENT_BINARY_DIR/<function>
#
# Adds <target>, a part of "all", which keeps a design up to date: its text in either language, the files of the library
# that it needs in library/, a list of all of them in compile order a language, and a description (<function>.json). A
# program that xfcflow refuses fails the build, every time.
#
# The design's texts are listed in the target's property XFCFLOW_OUTPUTS, the lists in XFCFLOW_FILE_LISTS; both also in
# the variables <target>_OUTPUTS and <target>_FILE_LISTS. With DRIVER, the model's source is in XFCFLOW_MODEL and in
# <target>_MODEL.
function(xfcflow_add_datapath target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TOP;LANGUAGE;DRIVER;OUTPUT_DIRECTORY" "SOURCES;OPTIONS")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "xfcflow_add_datapath(${target}): unexpected ${arg_UNPARSED_ARGUMENTS}")
    elseif(NOT arg_SOURCES)
        message(FATAL_ERROR "xfcflow_add_datapath(${target}): no SOURCES")
    elseif(NOT arg_TOP MATCHES "^[A-Za-z_][A-Za-z0-9_]*$")
        message(FATAL_ERROR "xfcflow_add_datapath(${target}): TOP is no function's name: \"${arg_TOP}\"")
    endif()
    set(language both)
    if(DEFINED arg_LANGUAGE)
        set(language ${arg_LANGUAGE})
    endif()
    if(NOT language MATCHES "^(vhdl|verilog|both)$")
        message(FATAL_ERROR "xfcflow_add_datapath(${target}): LANGUAGE is vhdl, verilog or both, not \"${language}\"")
    endif()
    set(model "")
    set(model_files "")
    set(driver "")
    if(DEFINED arg_DRIVER)
        if(NOT arg_DRIVER MATCHES "^(c|python)$")
            message(FATAL_ERROR "xfcflow_add_datapath(${target}): DRIVER is c or python, not \"${arg_DRIVER}\"")
        endif()
        set(driver --driver ${arg_DRIVER})
    endif()
    set(directory "${CMAKE_CURRENT_BINARY_DIR}/${arg_TOP}")
    if(DEFINED arg_OUTPUT_DIRECTORY)
        cmake_path(ABSOLUTE_PATH arg_OUTPUT_DIRECTORY BASE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}" NORMALIZE
            OUTPUT_VARIABLE directory)
    endif()

    set(depended "")
    foreach(source IN LISTS arg_SOURCES)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
        list(APPEND depended "${source}")
    endforeach()
    list(GET depended 0 program_text)
    set(outputs "")
    set(lists "")
    if(NOT language STREQUAL "verilog")
        list(APPEND outputs "${directory}/${arg_TOP}.vhd")
        list(APPEND lists "${directory}/${arg_TOP}_vhdl.f")
    endif()
    if(NOT language STREQUAL "vhdl")
        list(APPEND outputs "${directory}/${arg_TOP}.v")
        list(APPEND lists "${directory}/${arg_TOP}_verilog.f")
    endif()

    if(driver)
        set(model "${directory}/${arg_TOP}_model.cpp")
        set(model_files "${model}" "${directory}/${arg_TOP}_model.h")
        if(arg_DRIVER STREQUAL "python")
            list(APPEND model_files "${directory}/${arg_TOP}_model.py")
        endif()
    endif()

    # The description is written behind the texts, so what an error leaves is older than the source.
    add_custom_command(
        OUTPUT "${directory}/${arg_TOP}.json"
        BYPRODUCTS ${outputs} ${lists} ${model_files}
        COMMAND xfcflow::xfcflow build "${program_text}" --top ${arg_TOP} --lang ${language} -o "${directory}"
            ${driver} ${arg_OPTIONS}
        DEPENDS ${depended} xfcflow::xfcflow
        COMMENT "Compiling ${arg_TOP}"
        VERBATIM)
    add_custom_target(${target} ALL DEPENDS "${directory}/${arg_TOP}.json" SOURCES ${arg_SOURCES})
    set_target_properties(${target} PROPERTIES XFCFLOW_OUTPUTS "${outputs}" XFCFLOW_FILE_LISTS "${lists}"
        XFCFLOW_MODEL "${model}")
    set(${target}_OUTPUTS "${outputs}" PARENT_SCOPE)
    set(${target}_FILE_LISTS "${lists}" PARENT_SCOPE)
    set(${target}_MODEL "${model}" PARENT_SCOPE)
endfunction()
