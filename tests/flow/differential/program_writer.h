#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace xfc::flow::test {

/// A C program over the language that xfcflow takes: equal numbers give equal programs.
struct written_program {
    std::string text = {};
    std::vector<std::string> options = {};  ///< of xfcflow simulate
};

/// What docs/language.md names, in either style of the top. Everything is set before it is read, divisors of integers
/// are not zero, what becomes an integer is in its range, indices and pointers are known; so every program is accepted
/// and means the same on every host.
[[nodiscard]] written_program write_program(std::uint64_t number);

}  // namespace xfc::flow::test
