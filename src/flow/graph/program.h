#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "flow/graph/graph.h"
#include "flow/graph/source_map.h"

namespace xfc::flow {

/// The two ways to write the top of a program.
enum class top_style : std::uint8_t {
    function,    ///< one function whose parameters and result are the ports
    whole_file,  ///< functions without parameters that run in the order of the source; variables are the ports
};

/// A parameter of the top as the C program declares it, for whoever calls the program as C.
struct parameter {
    std::string name = {};      ///< empty where it has none
    std::string element = {};   ///< type of the object that can be given, or of its elements: "float", "struct point"
    std::string sizes = {};     ///< "[8]", "[2][3]"; empty where the object is no array
    bool by_address = false;    ///< the call takes the object's address: a pointer to one element
    bool has_own_type = false;  ///< which nothing outside the parameters can name; `element` is its whole definition
};

/// A C program as hardware sees it: what enters, what leaves, and how one comes from the other.
struct program {
    std::string name = {};  ///< the top function's, or the source file's base name for the older style
    top_style style = top_style::function;
    std::vector<std::string> functions = {};  ///< what runs, in order: the top alone, or all of the older style
    std::vector<parameter> parameters = {};   ///< of the top; empty for the older style
    std::string result_type = {};             ///< as C writes it; empty for void
    /// Asks for the size of what has pointers in it, which is another one on a machine of 64 bits.
    bool measures_pointers = false;
    graph values = {};
    source_map places = {};
};

}  // namespace xfc::flow
