# xfc_add_datapath(<target>
#     SOURCES <source.c>...
#     [VERILOG]                  write Verilog instead of VHDL
#     [OPTIONS <switch>...]      switches for xfc, as in OPTIONS -rc -mm 36
#     [OUTPUT_DIRECTORY <dir>])  default: CMAKE_CURRENT_BINARY_DIR
#
# Adds <target>, a part of "all", which keeps one hardware description a source up to date. It is named after the entity
# inside: the source's name without folder, cut at 31 bytes and then at its first dot, and .vhd or .v. The log of the run
# stands beside it (fir.vhd.log). A source with an error fails the build, every time, and leaves no output.
#
# The outputs are listed in the target's property XFC_OUTPUTS and in the variable <target>_OUTPUTS.

# Switches that stand alone, and switches that take a value.
set_property(GLOBAL PROPERTY xfc_plain_switches -ds -ni -no -rc -rn -op -ps -da -s3 -s5 -sy)
set_property(GLOBAL PROPERTY xfc_value_switches -mm -fd -ns -xc -mv)

# xfc ignores what is no switch of its own; in a build a misspelt one would go unnoticed for ever.
function(xfc_check_switches target)
    get_property(plain GLOBAL PROPERTY xfc_plain_switches)
    get_property(with_value GLOBAL PROPERTY xfc_value_switches)
    set(waiting "")
    foreach(word IN LISTS ARGN)
        if(waiting)
            if(NOT word MATCHES "^-?[0-9]+$")
                message(FATAL_ERROR "xfc_add_datapath(${target}): ${waiting} needs a number, not \"${word}\"")
            endif()
            set(waiting "")
        elseif(word IN_LIST with_value)
            set(waiting ${word})
        elseif(word STREQUAL "-vlg")
            message(FATAL_ERROR "xfc_add_datapath(${target}): say VERILOG instead of OPTIONS -vlg")
        elseif(NOT word IN_LIST plain)
            message(FATAL_ERROR "xfc_add_datapath(${target}): xfc has no switch \"${word}\"")
        endif()
    endforeach()
    if(waiting)
        message(FATAL_ERROR "xfc_add_datapath(${target}): ${waiting} needs a number")
    endif()
endfunction()

function(xfc_add_datapath target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "VERILOG" "OUTPUT_DIRECTORY" "SOURCES;OPTIONS")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "xfc_add_datapath(${target}): unexpected ${arg_UNPARSED_ARGUMENTS}")
    elseif(NOT arg_SOURCES)
        message(FATAL_ERROR "xfc_add_datapath(${target}): no SOURCES")
    elseif(DEFINED arg_KEYWORDS_MISSING_VALUES AND "OUTPUT_DIRECTORY" IN_LIST arg_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "xfc_add_datapath(${target}): OUTPUT_DIRECTORY has no value")
    endif()
    xfc_check_switches(${target} ${arg_OPTIONS})

    set(options ${arg_OPTIONS})
    set(extension .vhd)
    if(arg_VERILOG)
        list(APPEND options -vlg)
        set(extension .v)
    endif()
    set(directory "${CMAKE_CURRENT_BINARY_DIR}")
    if(DEFINED arg_OUTPUT_DIRECTORY)
        cmake_path(ABSOLUTE_PATH arg_OUTPUT_DIRECTORY BASE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}" NORMALIZE
            OUTPUT_VARIABLE directory)
    endif()
    get_target_property(program xfc::xfc LOCATION)
    get_target_property(version xfc::xfc XFC_VERSION)
    set(compile_script "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/xfc_compile_datapath.cmake")

    set(outputs "")
    foreach(source IN LISTS arg_SOURCES)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
        cmake_path(GET source FILENAME name)
        string(SUBSTRING "${name}" 0 31 entity)
        string(REGEX REPLACE "\\..*" "" entity "${entity}")
        if(NOT entity MATCHES "^[A-Za-z][A-Za-z0-9_]*$")
            message(FATAL_ERROR
                "xfc_add_datapath(${target}): ${source} would give an entity called \"${entity}\"; rename the source")
        endif()
        cmake_path(APPEND directory "${entity}${extension}" OUTPUT_VARIABLE output)
        get_property(other_source GLOBAL PROPERTY "xfc_source_of_${output}")
        if(other_source)
            message(FATAL_ERROR
                "xfc_add_datapath(${target}): ${source} and ${other_source} would both be written to ${output}")
        endif()
        set_property(GLOBAL PROPERTY "xfc_source_of_${output}" "${source}")

        # Written only when it changes, so that other switches or another xfc, and nothing else, count as a change.
        set(settings "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/${entity}${extension}.cmake")
        string(CONCAT content
            "# xfc ${version}\n"
            "set(program [==[${program}]==])\n"
            "set(options [==[${options}]==])\n"
            "set(source [==[${source}]==])\n"
            "set(entity [==[${entity}]==])\n"
            "set(output [==[${output}]==])\n")
        file(CONFIGURE OUTPUT "${settings}" CONTENT "@content@" @ONLY)
        add_custom_command(
            OUTPUT "${output}"
            BYPRODUCTS "${output}.log"
            COMMAND "${CMAKE_COMMAND}" "-Dsettings=${settings}" -P "${compile_script}"
            DEPENDS "${source}" "${settings}" "${compile_script}" "${program}"
            COMMENT "Compiling ${name} to ${entity}${extension}"
            VERBATIM)
        list(APPEND outputs "${output}")
    endforeach()

    add_custom_target(${target} ALL DEPENDS ${outputs} SOURCES ${arg_SOURCES})
    set_target_properties(${target} PROPERTIES XFC_OUTPUTS "${outputs}")
    set(${target}_OUTPUTS "${outputs}" PARENT_SCOPE)
endfunction()
