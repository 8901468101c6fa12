# Compiles one source for xfc_add_datapath: cmake -Dsettings=FILE -P xfc_compile_datapath.cmake
# FILE sets program, options, source, entity and output.
#
# xfc writes into the current folder, under a name that it takes from the source's, and also for a source with syntax
# errors. So it runs in a folder of its own, and only the result of a run without error becomes the output.

include("${settings}")
cmake_path(GET output EXTENSION LAST_ONLY extension)
set(scratch "${output}.tmp")
set(log "${output}.log")

file(REMOVE "${output}")
file(REMOVE_RECURSE "${scratch}")
file(MAKE_DIRECTORY "${scratch}")
# A plain .c behind the name leaves no tail on the output's name.
file(COPY_FILE "${source}" "${scratch}/${entity}.c")

execute_process(
    COMMAND "${program}" "${entity}.c" ${options}
    WORKING_DIRECTORY "${scratch}"
    OUTPUT_FILE "${log}"
    ERROR_FILE "${log}"
    RESULT_VARIABLE status)
if(status EQUAL 0)
    file(RENAME "${scratch}/${entity}${extension}" "${output}")
    file(REMOVE_RECURSE "${scratch}")
    return()
endif()

file(REMOVE_RECURSE "${scratch}")
# Syntax errors stand at the log's head, every other error at its end.
set(shown 3000)
file(SIZE "${log}" size)
file(READ "${log}" text LIMIT ${shown})
if(size GREATER shown)
    math(EXPR rest "${size} - ${shown}")
    if(rest GREATER shown)
        string(APPEND text "\n[...]\n")
        set(rest ${shown})
    endif()
    math(EXPR start "${size} - ${rest}")
    file(READ "${log}" tail OFFSET ${start})
    string(APPEND text "${tail}")
endif()
message("${text}")
message(FATAL_ERROR "${source}: xfc found an error (${status}); the log is ${log}")
