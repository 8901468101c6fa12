#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "flow/graph/number_format.h"
#include "flow/graph/operation.h"
#include "flow/graph/source_map.h"

namespace xfc::flow {

/// A value's number in its graph; operands have lower numbers than what is made of them.
using value_id = std::uint32_t;

inline constexpr value_id no_value = 0xFFFFFFFF;

/// A call's number in its graph's table of calls; 0 stands for the top itself.
using call_id = std::uint32_t;

/// One result of one operation. Never changed once made.
struct value {
    operation op = operation::constant;
    number_format format = number_format::integer;
    std::uint16_t reserved = 0;
    /// Operands as far as the operation has them. An input keeps its port's number in the first place, a constant its
    /// bits in the first two, the low half first.
    std::array<value_id, most_operands> operands = {};
    source_range where = {};  ///< the expression that first asked for the value
    call_id call = 0;         ///< through which calls

    [[nodiscard]] std::span<const value_id> operand_span() const {
        return {operands.data(), static_cast<std::size_t>(row_of(op).arity())};
    }
    [[nodiscard]] std::uint64_t constant_bits() const {
        return operands[0] | (static_cast<std::uint64_t>(operands[1]) << 32U);
    }
    [[nodiscard]] std::uint32_t port() const { return operands[0]; }
};

static_assert(sizeof(value) <= 32);

/// A port of the design: a boolean, a 32-bit integer whatever narrower type the C object has, or a floating number.
struct port {
    std::string name = {};  ///< from the C names: y, x_0, m_0_1, p_re, result
    number_format format = number_format::single_float;
    std::string c_type = {};    ///< the element's type as C writes it
    std::string c_access = {};  ///< how C reaches the element: "x[0]", "p.re", "*y", "result.im"
    source_range where = {};    ///< the declaration
    value_id value = no_value;
    bool returned = false;          ///< of what the top returns, not of a variable
    std::uint32_t returned_by = 0;  ///< then the place of the function among those that run
    std::uint32_t c_bytes = 4;      ///< of integers: what the C type has
    bool c_signed = true;           ///< of integers: whether the C type has negative numbers
};

/// One call of an inlined function.
struct call {
    std::string function = {};
    source_range where = {};
    call_id caller = 0;
};

/// Values, each made of earlier ones, no two of them equal, and the ports between them and the world.
class graph {
public:
    graph();

    /// The value of this operation on these operands; an equal one that stands already is given instead. Operands of a
    /// commutative operation may come in either order. The formats must follow the operation's row.
    value_id make(operation op, number_format format, std::span<const value_id> operands, source_range where = {},
                  call_id call = 0);

    /// The constant of these bits: integers in the low 32, booleans 0 or 1, floats as IEEE 754 has them.
    value_id make_constant(number_format format, std::uint64_t bits, source_range where = {}, call_id call = 0);
    value_id make_integer(std::int32_t number) {
        return make_constant(number_format::integer, static_cast<std::uint32_t>(number));
    }
    value_id make_boolean(bool truth) { return make_constant(number_format::boolean, truth ? 1 : 0); }
    value_id make_single(float number, source_range where = {});
    value_id make_double(double number, source_range where = {});

    /// A further input port and its value.
    value_id add_input(port description);
    /// A further output port; its value must be set.
    void add_output(port description);

    call_id add_call(call description);

    [[nodiscard]] const value& operator[](value_id id) const { return values_[id]; }
    [[nodiscard]] value_id size() const { return static_cast<value_id>(values_.size()); }
    [[nodiscard]] std::span<const value> values() const { return values_; }
    [[nodiscard]] std::span<const port> inputs() const { return inputs_; }
    [[nodiscard]] std::span<const port> outputs() const { return outputs_; }
    [[nodiscard]] const call& call_at(call_id id) const { return calls_[id]; }
    [[nodiscard]] std::size_t call_count() const { return calls_.size(); }

    [[nodiscard]] bool is_constant(value_id id) const { return values_[id].op == operation::constant; }
    [[nodiscard]] std::optional<std::int32_t> known_integer(value_id id) const;
    [[nodiscard]] std::optional<bool> known_boolean(value_id id) const;
    [[nodiscard]] float single_of(value_id id) const;   ///< of a constant
    [[nodiscard]] double double_of(value_id id) const;  ///< of a constant of either floating format

    /// Bytes that values and their index take; ports and calls not counted.
    [[nodiscard]] std::size_t memory() const;

private:
    friend graph extracted(const graph& source, std::span<const port> inputs, std::span<const port> outputs);

    value_id find_or_append(const value& wanted);
    value_id append(const value& wanted);
    void build_index(std::size_t size);

    std::vector<value> values_;
    /// Open addressing by hash; a power of two, at most 3/4 full. Empty until somebody looks for an equal value: graphs
    /// that are only read have none.
    struct slot {
        std::uint32_t tag = 0;  ///< of the value's hash: most unequal values are told apart without a look at them
        value_id id = no_value;
    };
    std::vector<slot> index_;
    std::vector<port> inputs_;
    std::vector<port> outputs_;
    std::vector<call> calls_;
};

/// The same graph with only those values that an output needs, numbered anew in the old order. Every input stays a
/// port, read or not.
[[nodiscard]] graph without_unused(const graph& source);

/// A graph of what these outputs need of the source, with these inputs as its only ones. An input's `value` is the
/// source's own for it; an output's too.
[[nodiscard]] graph extracted(const graph& source, std::span<const port> inputs, std::span<const port> outputs);

/// Whether the outputs need a value of the source, by value.
[[nodiscard]] std::vector<bool> needed_for(const graph& source, std::span<const port> outputs);

}  // namespace xfc::flow
