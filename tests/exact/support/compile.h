#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"

// What the tests share: running the compiler, or its first phases, in this process with both streams caught.

namespace xfc::test {

/// What a run left behind. Files are those in the run's folder besides the source, by name.
struct run_result {
    int status = 0;
    std::string standard_output;
    std::string standard_error;
    std::map<std::string, std::string> files;
};

/// How a run is started. `source_name` is the first argument; its folders are not made.
struct run_request {
    std::string source;
    std::vector<std::string> switches = {};
    std::string source_name = "prog.c";
};

/// The whole compiler on one source in a fresh temporary folder, in this process.
run_result compile(const run_request& request);

/// The arguments as they stand, without a source file of its own.
run_result run_with_arguments(const std::vector<std::string>& arguments);

/// Calls `action` with both streams caught; a fatal error ends the action with status 1, else the status is 0.
run_result catch_output(const std::function<void()>& action);

/// Forgets the run so far and opens a file with this text as the source program.
void open_source_text(const std::string& source);

// The phases up to a point, on a source text; the records of that phase can then be looked at. The state of an
// earlier call is forgotten. Each returns what was printed; a fatal error gives status 1.

run_result parse_text(const std::string& source);
run_result flatten_text(const std::string& source);
run_result declare_text(const std::string& source);
run_result translate_text(const std::string& source);

/// The optimizer's passes up to and with `last`, for instance `insert_delays`.
run_result optimize_text(const std::string& source, void (*last)(), const std::vector<std::string>& switches = {});

/// Puts the options at their defaults and applies the switches.
void set_options(const std::vector<std::string>& switches = {});

/// An empty graph and default options, for graphs built by hand.
void start_graph();

/// A new node with that format and component.
std::int32_t add_node(std::string_view name, std::int32_t inputs, number_format format = number_format::none,
                      std::string_view component = "");

/// The only node of that name, or the one with that position among equal names; fails the test when there is none.
std::int32_t slot_named(std::string_view name, std::size_t position = 0);

/// Gives a node another name, and makes it what that name makes it.
void rename_node(std::int32_t slot, std::string_view name);

/// The component of that name; `wire` for an empty one. An unknown name fails the test.
component_id component_named(std::string_view name);

/// Name of the node's component, empty for a wire.
std::string_view component_name(std::int32_t slot);

/// Slots of all nodes with that component, ascending.
std::vector<std::int32_t> slots_with_component(std::string_view component);

/// Slots of a node's consumers in order.
std::vector<std::int32_t> consumers(std::int32_t slot);

/// Slot that drives the input, or `no_slot`.
std::int32_t driver(std::int32_t slot, std::int32_t port = 0);

/// The texts of the label list, without the closing empty one.
std::vector<std::string> labels();

}  // namespace xfc::test
