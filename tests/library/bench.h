#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "components/component_table.h"
#include "model/component_model.h"

// Test benches, generated from a component's row: every set of generics that reads the same operands stands in one
// bench, so that a simulator is started once for all of them.
//
// A bench reads vectors.txt, a clock cycle a line, in hexadecimal:
//     control (bit 0 enable, bit 1 reset)   operands (aa, bb above it, one bit of control on top)
//     results, one a class of sets
// A line with enable 0 must change nothing. Reset comes at random and must change nothing either. The bench compares
// every result at its latency and prints
//     LATENCY set cycles          for every latency that fits all of the first lines
//     MISMATCH set operand bits   once a set: the operand's number among those taken, and what came instead
//     DONE lines

namespace xfc::proof {

struct bench_set {
    component_generics generics;
    std::int32_t latency = 0;      ///< cycles, by the row
    std::size_t result_class = 0;  ///< sets that deliver the same results share a column
};

struct bench {
    const component_row* row = nullptr;
    std::vector<bench_set> sets;
    std::vector<std::int32_t> class_widths;  ///< bits
    std::int32_t aa_width = 0;               ///< bits, flags included
    std::int32_t bb_width = 0;

    [[nodiscard]] std::int32_t control_width() const { return control_port_of(*row).empty() ? 0 : 1; }
    [[nodiscard]] std::int32_t operand_width() const { return aa_width + bb_width + control_width(); }
    [[nodiscard]] std::int32_t result_width() const;
    /// Where a class's column begins, counted from bit 0.
    [[nodiscard]] std::int32_t class_low(std::size_t result_class) const;
};

/// One clock cycle.
struct bench_line {
    bool enable = true;
    bool reset = false;
    component_operands operands;
    std::vector<bus_bits> results;  ///< by class
};

/// Lines in which results are compared with those of every latency, and latencies that are tried.
inline constexpr std::int32_t measured_lines = 512;
inline constexpr std::int32_t latency_limit = 128;

[[nodiscard]] std::string verilog_bench(const bench& layout);
[[nodiscard]] std::string vhdl_bench(const bench& layout);
/// Two modules for measuring: `measured` with all operands on one bus and the result on another, its generics set, and
/// `scan`, which feeds it from a shift register and reads it into one, so that pins limit nothing.
[[nodiscard]] std::string scan_wrapper(const bench& layout);
void write_vectors(const std::filesystem::path& path, const bench& layout, const std::vector<bench_line>& lines);

}  // namespace xfc::proof
