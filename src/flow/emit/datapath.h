#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "flow/emit/names.h"
#include "flow/passes/schedule.h"

namespace xfc::flow {

/// Everything that is written about a design, without a language: what VHDL and Verilog say alike stands here once.

/// A port of the datapath, or a bus inside; bits are counted from 1.
struct bus_text {
    std::string_view name = {};
    std::int32_t width = 0;
    std::string_view comment = {};
};

/// A bus with known bits, the highest first.
struct constant_bus {
    bus_text bus = {};
    std::string_view bits = {};
};

/// One port of an instance, and the bits of a bus that belong to it.
struct port_bits {
    std::string port = {};
    std::int32_t high = 0;  ///< bits of the signal; 0: all of it
    std::int32_t low = 0;
    bool single_bit = false;  ///< the port is one bit, no vector
};

/// How a bus is spread over an instance's ports.
struct port_group {
    std::vector<port_bits> ports = {};
    std::vector<std::string> open = {};  ///< one-bit outputs that nobody reads
};

/// What a group of ports is connected to.
struct connection {
    const port_group* ports = nullptr;
    std::string_view signal = {};
};

/// What instances of a component with the same generics have in common.
struct instance_kind {
    std::vector<std::pair<std::string_view, std::int32_t>> generics = {};
    bool clocked = true;               ///< has sysclk, reset and enable
    std::string_view fixed_low = {};   ///< a one-bit input that is 0
    std::string_view fixed_high = {};  ///< a one-bit input that is 1
};

struct instance_text {
    std::string_view label = {};
    std::string_view comment = {};
    std::string_view component = {};
    const instance_kind* kind = nullptr;
    std::array<connection, most_operands + 1> connections = {};  ///< operands, then the result
    std::size_t connection_count = 0;
    std::string_view unread = {};  ///< what to call outputs that nobody reads where they need a name

    [[nodiscard]] std::span<const connection> used_connections() const {
        return {connections.data(), connection_count};
    }
};

/// An output port and the bus that drives it.
struct output_text {
    bus_text bus = {};
    std::string_view driver = {};
};

/// Are given buses and instances one by one; what they name stands as long as the call lasts.
using signal_taker = std::function<void(const bus_text&)>;
using instance_taker = std::function<void(const instance_text&)>;

/// There may be hundreds of thousands of signals and instances, so they are told when they are asked for: from the
/// compilation that the datapath was made of, which must stay as long.
struct datapath {
    std::string name = {};
    std::int32_t latency = 0;              ///< cycles
    std::vector<std::string> header = {};  ///< lines of the comment on top
    std::vector<bus_text> inputs = {};
    std::vector<output_text> outputs = {};
    std::vector<constant_bus> constants = {};
    std::string start_chain = {};                ///< name of the chain from startin to startout
    std::set<std::string_view> components = {};  ///< that have an instance
    std::function<void(const signal_taker&)> for_each_signal = {};
    /// In the order of their nodes, each bus's delays behind it.
    std::function<void(const instance_taker&)> for_each_instance = {};
    std::shared_ptr<const void> store = {};  ///< texts that the members name
};

/// Puts names, components and delays together. `header` becomes the comment on top.
[[nodiscard]] datapath make_datapath(const graph& values, const design& made, const schedule& times,
                                     const std::shared_ptr<const design_names>& names, const source_map& places,
                                     std::vector<std::string> header);

/// The same design in a language. VHDL-93 with numeric_std alone; Verilog-2001.
[[nodiscard]] std::string vhdl_text(const datapath& what);
[[nodiscard]] std::string verilog_text(const datapath& what);

/// Is given a text piece by piece.
using text_taker = std::function<void(std::string_view)>;

/// The same without the whole text in memory.
void write_vhdl(const datapath& what, const text_taker& take);
void write_verilog(const datapath& what, const text_taker& take);

}  // namespace xfc::flow
