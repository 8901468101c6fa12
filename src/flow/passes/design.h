#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "flow/graph/graph.h"
#include "flow/passes/coding.h"
#include "model/component_model.h"

namespace xfc::flow {

/// A node's number in its design; operands have lower numbers than what is made of them.
using node_id = std::uint32_t;

inline constexpr node_id no_node = 0xFFFFFFFF;

/// The most operands that may meet in one sum without a normalisation: as many as the guard bits hold.
inline constexpr std::int32_t most_summands = 16;

enum class node_kind : std::uint8_t {
    input,     ///< a port of the design
    constant,  ///< known bits, in the coding of whoever reads them
    instance,  ///< a component of the library
};

/// A component with its generics: what many instances of a design have in common.
struct component_setting {
    component_id component = component_id::wire;
    component_generics generics = {};
    std::int32_t latency = 0;  ///< cycles from the operands to the bus
    std::uint32_t number = 0;  ///< its place among those of the design
};

/// The settings of a design, each once; they stay where they are.
class component_settings {
public:
    /// The setting with these generics, made if there is none.
    const component_setting& find_or_make(component_id component, const component_generics& generics);

private:
    std::deque<component_setting> all_;
};

/// One bus of the hardware and what drives it. Never changed once made.
struct design_node {
    node_kind kind = node_kind::instance;
    coding code = coding::single_ieee;
    bool subtract = false;                        ///< an adder's: aa - bb
    component_id component = component_id::wire;  ///< of an instance
    std::int32_t summands = 1;  ///< operands summed since the last normalisation; 1 where there are no guard bits
    const component_setting* setting = nullptr;  ///< of an instance
    /// What aa and bb read; the third is a selection's condition.
    std::array<node_id, most_operands> operands = {no_node, no_node, no_node};
    bus_bits bits = 0;          ///< of a constant
    std::uint32_t port = 0;     ///< of an input
    value_id value = no_value;  ///< the graph's value that the bus carries

    [[nodiscard]] std::span<const node_id> operand_span() const {
        std::size_t count = 0;
        while (count < operands.size() && operands.at(count) != no_node) {
            ++count;
        }
        return {operands.data(), count};
    }
    /// Cycles from the operands to the bus.
    [[nodiscard]] std::int32_t latency() const { return setting != nullptr ? setting->latency : 0; }
    /// Of an instance.
    [[nodiscard]] const component_generics& generics() const { return setting->generics; }
};

/// Hardware without its timing: components and who reads whom.
struct design {
    library_options options = {};
    std::shared_ptr<component_settings> settings = std::make_shared<component_settings>();  ///< that nodes point to
    std::vector<design_node> nodes = {};
    std::vector<node_id> outputs = {};  ///< in the order of the graph's output ports

    [[nodiscard]] const design_node& operator[](node_id id) const { return nodes[id]; }
    [[nodiscard]] node_id size() const { return static_cast<node_id>(nodes.size()); }
    /// Bits of a node's bus.
    [[nodiscard]] std::int32_t width_of(node_id id) const { return layout_of(nodes[id].code, options.mantissa).width; }
};

/// The component's name, without the generics' values.
[[nodiscard]] inline std::string_view component_name(const design_node& node) { return row_of(node.component).name; }

/// What is wrong with a design, a sentence each; empty when all is well. Operands are earlier and coded as their
/// component reads them, results as it delivers them; sums stay within the guard bits; constants fit their bus; every
/// output is IEEE, an integer or a boolean, as its port's format says.
[[nodiscard]] std::vector<std::string> faults_of(const design& made, const graph& source);

/// The design as text that people and tests compare, one line a node:
///
///     #3 = xfc_alufp1x XFloat #1 - #2 [2 summands] {mantissa=32 shiftspeed=1 outputpipe=1} 5 cycles ; %4
[[nodiscard]] std::string dump(const design& made, const graph& source);

}  // namespace xfc::flow
