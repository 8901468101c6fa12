#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Source programs of any size for measurements. Equal arguments give equal programs.

namespace xfc::bench {

struct program_shape {
    std::string_view name;
    std::string_view description;
    /// A program with about that many operators.
    std::string (*generate)(std::int64_t operators);
    /// Largest size that the table measures unless a size is asked for.
    std::int64_t largest_size;
};

[[nodiscard]] std::span<const program_shape> program_shapes();

/// The shape of that name, or null.
[[nodiscard]] const program_shape* find_shape(std::string_view name);

}  // namespace xfc::bench
