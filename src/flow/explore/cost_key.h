#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flow/passes/schedule.h"

namespace xfc::flow {

/// What drives an operand, as far as synthesis makes less of its reader for it.
enum class operand_kind : std::uint8_t {
    none,       ///< there is no such operand
    any,        ///< a bus whose bits can all be anything
    converted,  ///< a number of a narrower format, many of whose bits inside are known
    constant,
    same,  ///< the bus that the first operand reads
};

struct operand_class {
    operand_kind kind = operand_kind::none;
    component_id from = component_id::wire;  ///< the conversion, of what is converted
    /// Of a constant: 0 when it is zero; of one that is multiplied how many rows the product has; else `uncounted`.
    std::int32_t digits = uncounted;

    static constexpr std::int32_t uncounted = -1;

    friend bool operator==(const operand_class&, const operand_class&) = default;
    friend auto operator<=>(const operand_class&, const operand_class&) = default;
};

/// Everything that decides what an instance costs: its component, the generics that it has, and its operands' kinds.
struct cost_key {
    component_id component = component_id::wire;
    component_generics generics = {};  ///< those that the component does not have are as they are by default
    bool subtract = false;
    /// The difference of two numbers whose sum is there in the same cycle, or the greater one beside the smaller: half
    /// is common.
    bool beside_opposite = false;
    std::array<operand_class, most_operands> operands = {};
};

/// The key of an instance of a design, which stands alone.
[[nodiscard]] cost_key key_of(const design& made, node_id id);

/// The keys of all instances, by node; others have the key of a wire.
[[nodiscard]] std::vector<cost_key> keys_of(const design& made, const schedule& times);

/// The same component with all operands of any kind, adding, alone.
[[nodiscard]] cost_key without_operands(cost_key key);

/// "xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=1 | xfc_castftox constant minus": generics of the component's row,
/// then the operands, `constant:9` with the rows where they count, and `minus` and `beside` where they hold.
[[nodiscard]] std::string text_of(const cost_key& key);

/// The key that a text tells; nothing when it tells none.
[[nodiscard]] std::optional<cost_key> key_of_text(std::string_view text);

/// Whether a constant operand's rows tell what the component costs.
[[nodiscard]] bool counts_digits(component_id component);

/// How many rows a product with this number in two's complement adds up: digits of two bits from -1 to 2 (the highest
/// one from -2 to 2) that are not zero, less those whose sums with their neighbours are there already. Rows are added
/// in pairs, these in pairs and so on, and equal stretches of digits, as 0.1 has them, are added once.
[[nodiscard]] std::int32_t rows_of_product(bus_bits number, std::int32_t width);

}  // namespace xfc::flow
