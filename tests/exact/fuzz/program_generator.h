#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace xfc::fuzz {

/// A program made from bytes, with what is known about it.
struct generated_program {
    std::string source;
    std::vector<std::string> switches;  ///< valid ones, without -vlg
    bool is_valid = false;              ///< must compile without an error
    bool single_writer = false;         ///< no variable is assigned twice, and none is named like a function
};

/// The program that the bytes choose. Equal bytes give equal programs; any bytes give some program.
[[nodiscard]] generated_program generate_program(std::span<const std::uint8_t> bytes);

}  // namespace xfc::fuzz
