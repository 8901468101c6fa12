#pragma once

#include <cstdint>
#include <string>

namespace xfc::flow::test {

/// A C program over the language that xfcflow takes: equal numbers give equal programs.
struct written_program {
    std::string text = {};
    bool c_constants = false;  ///< to be compiled with C's meaning of constants
};

/// Loops, arrays, structures, functions, choices, integers and conversions, in either style of the top. Everything is
/// set before it is read, divisors of integers are guarded, indices known; so every program is accepted.
[[nodiscard]] written_program write_program(std::uint64_t number);

}  // namespace xfc::flow::test
