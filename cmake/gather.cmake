# xfc_gather(OUTPUT HEADER ROW_TYPE FUNCTION ACCESSOR DECLARATION NAME...): writes a C++ file that gathers one thing a
# component into a table in the order of the names, so that a new component's folder is all that has to be added.
# DECLARATION is the text that declares the thing; NAME in it stands for the component's.
function(xfc_gather output header scope row_type accessor declaration)
    set(declarations "")
    set(rows "")
    foreach(name ${ARGN})
        string(REPLACE "NAME" "${name}" declared "${declaration}")
        string(APPEND declarations "${declared}\n")
        string(APPEND rows "    {\"${name}\", &${scope}::${name}},\n")
    endforeach()
    file(CONFIGURE OUTPUT ${output} CONTENT "// Written by the build from the folders of the library.
#include \"${header}\"

namespace xfc {
namespace ${scope} {
${declarations}}

std::span<const ${row_type}> ${accessor}() {
    static const ${row_type} rows[] = {
${rows}    };
    return rows;
}
}
")
endfunction()
