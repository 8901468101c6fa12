#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/emit/names.h"
#include "flow/passes/schedule.h"

namespace xfc::flow {

/// Everything that is written about a design, without a language: what VHDL and Verilog say alike stands here once.

/// A port of the datapath, or a bus inside; bits are counted from 1.
struct bus_text {
    std::string name = {};
    std::int32_t width = 0;
    std::string comment = {};
};

/// A bus with known bits, the highest first.
struct constant_bus {
    bus_text bus = {};
    std::string bits = {};
};

/// What an instance's port is connected to.
struct connection {
    std::string port = {};
    std::string signal = {};
    std::int32_t high = 0;  ///< bits of the signal; 0: all of it
    std::int32_t low = 0;
    bool single_bit = false;  ///< the port is one bit, no vector
    bool output = false;
};

struct instance_text {
    std::string label = {};
    std::string comment = {};
    std::string_view component = {};
    std::vector<std::pair<std::string_view, std::int32_t>> generics = {};
    bool clocked = true;                       ///< has sysclk, reset and enable
    std::vector<std::string> fixed_low = {};   ///< one-bit inputs that are 0
    std::vector<std::string> fixed_high = {};  ///< one-bit inputs that are 1
    std::vector<connection> connections = {};
    std::vector<std::string> open = {};  ///< one-bit outputs that nobody reads
    std::string unread = {};             ///< what to call these where they need a name
};

/// An output port and the bus that drives it.
struct output_text {
    bus_text bus = {};
    std::string driver = {};
};

struct datapath {
    std::string name = {};
    std::int32_t latency = 0;              ///< cycles
    std::vector<std::string> header = {};  ///< lines of the comment on top
    std::vector<bus_text> inputs = {};
    std::vector<output_text> outputs = {};
    std::vector<constant_bus> constants = {};
    std::vector<bus_text> signals = {};
    std::vector<instance_text> instances = {};  ///< in the order of their nodes, each bus's delays behind it
    std::string start_chain = {};               ///< name of the chain from startin to startout
};

/// Puts names, components and delays together. `header` becomes the comment on top.
[[nodiscard]] datapath make_datapath(const graph& values, const design& made, const schedule& times,
                                     const design_names& names, const source_map& places,
                                     std::vector<std::string> header);

/// The same design in a language. VHDL-93 with numeric_std alone; Verilog-2001.
[[nodiscard]] std::string vhdl_text(const datapath& what);
[[nodiscard]] std::string verilog_text(const datapath& what);

}  // namespace xfc::flow
