#pragma once

#include <span>
#include <string_view>

#include "flow/graph/operation.h"

namespace xfc::flow {

/// How a known function comes to its result.
enum class known_way : std::uint8_t {
    component,  ///< one operation
    power,      ///< pow: a whole power
    missing,    ///< C has it, hardware does not
};

/// A function of <math.h> or of xfc.h by its name in double; the name with f behind it works in single.
struct known_function {
    std::string_view name;
    known_way way;
    operation op;
    int arguments;        ///< floating ones, but for the second of ldexp
    bool second_integer;  ///< the second argument is an int
};

[[nodiscard]] std::span<const known_function> known_functions();

struct found_function {
    const known_function* row = nullptr;  ///< null: not known
    bool single = false;                  ///< the form with f
};

[[nodiscard]] found_function find_known_function(std::string_view name);

}  // namespace xfc::flow
