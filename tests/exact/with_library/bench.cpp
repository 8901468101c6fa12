// Usage: bench write VECTORS       bench judge LATENCY VECTORS OUTPUT
// Compiled for one program by `simulate`, with program.inc (the C text), ports.inc (INPUT(name, bits) and OUTPUT) and
// RUN, DESIGN. `write` makes bench.v, bench.vhd and vectors.txt; `judge` compares what a simulator printed.
//
// Every cycle has other operands, at three of four with enable and, of those, at one of two with startin. A result is
// looked at when startout is 1 and must be that of the operands that came with its startin, LATENCY cycles before.

#include <cstring>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "traced.h"

namespace program {
using traced::real;
#define float traced::real<float>
#define double traced::real<double>
#define long traced::integer
#include "program.inc"
#undef float
#undef double
#undef long
}  // namespace program

namespace {

struct port {
    const char* name;
    int bits;
    bool output;
};
constexpr port ports[] = {
#define INPUT(name, bits) {#name, bits, false},
#define OUTPUT(name, bits) {#name, bits, true},
#include "ports.inc"
#undef INPUT
#undef OUTPUT
};

struct cycle {
    bool enable = true;
    bool start = false;
    std::vector<std::uint64_t> inputs;
};

/// Behind the vectors come as many empty cycles as the deepest design needs.
constexpr std::size_t drained_cycles = 400;

std::vector<cycle> make_cycles(std::size_t count) {
    std::mt19937_64 random(1);
    std::vector<cycle> cycles(count + drained_cycles);
    for (std::size_t i = 0; i < cycles.size(); ++i) {
        cycles[i].enable = i >= count || random() % 4 != 0;
        cycles[i].start = i < count && random() % 2 == 0;
#define INPUT(name, bits) cycles[i].inputs.push_back(traced::random_bits(random(), program::name));
#define OUTPUT(name, bits)
#include "ports.inc"
#undef INPUT
#undef OUTPUT
    }
    return cycles;
}

/// `each` for every port, with @name@ replaced by its name and @high@ by its width.
std::string for_ports(const std::string& each, bool inputs, bool outputs) {
    std::string text;
    for (const port& one : ports) {
        if (one.output ? outputs : inputs) {
            std::string line = each;
            for (const auto& [word, value] : {std::pair<std::string, std::string>{"@name@", one.name},
                                              {"@high@", std::to_string(one.bits)},
                                              {"@digits@", std::to_string((one.bits + 3) / 4 * 4)}}) {
                for (std::size_t at = 0; (at = line.find(word, at)) != std::string::npos; at += value.size()) {
                    line.replace(at, word.size(), value);
                }
            }
            text += line;
        }
    }
    return text;
}

void write_verilog() {
    std::ofstream("bench.v") << R"(`timescale 1 ps / 1 ps
module bench;
  reg sysclk, reset, enable, startin;
  reg [7:0] bench_control;
  integer bench_file, bench_code, bench_taken;
  wire startout;
)" << for_ports("  reg [@high@:1] @name@;\n", true, false)
                             << for_ports("  wire [@high@:1] @name@;\n", false, true)
                             << "  " DESIGN
                                " bench_design (.sysclk(sysclk), .reset(reset), .enable(enable), "
                                ".startin(startin)"
                             << for_ports(", .@name@(@name@)", true, true) << R"(, .startout(startout));
  initial begin
    bench_file = $fopen("vectors.txt", "r");
    bench_taken = 0;
    sysclk = 0; enable = 0; startin = 0; reset = 1; #5 reset = 0;
    bench_code = 1;
    while (bench_code > 0) begin
      bench_code = $fscanf(bench_file, "%h", bench_control);
      if (bench_code > 0) begin
)" << for_ports("        bench_code = $fscanf(bench_file, \"%h\", @name@);\n", true, false)
                             << R"(        enable = bench_control[0];
        startin = bench_control[1];
        #5;
        if (enable && startout !== 1'b0) begin
          $write("OUT %0d %b", bench_taken, startout);
)" << for_ports("          $write(\" %b\", @name@);\n", false, true)
                             << R"(          $write("\n");
        end
        if (enable) bench_taken = bench_taken + 1;
        sysclk = 1; #5 sysclk = 0;
      end
    end
    $display("DONE");
    $finish;
  end
endmodule
)";
}

void write_vhdl() {
    std::ofstream("bench.vhd") << R"(library ieee;
use ieee.std_logic_1164.all;
use std.textio.all;
use work.bench_text.all;

entity bench is
end bench;

architecture test of bench is
  signal sysclk, reset, enable, startin, startout : std_logic := '0';
)" << for_ports("  signal @name@ : std_logic_vector(@high@ downto 1);\n", true, true)
                               << "begin\n  bench_design : entity work." DESIGN
                                  " port map (sysclk => sysclk, reset => reset, enable => enable, startin => startin"
                               << for_ports(", @name@ => @name@", true, true) << R"(, startout => startout);
  process
    procedure put(target : inout line; bits : std_logic_vector) is
    begin
      write(target, ' ');
      for i in bits'range loop
        write(target, std_logic'image(bits(i))(2));
      end loop;
    end put;
    file vectors : text open read_mode is "vectors.txt";
    variable source, found : line;
    variable control : std_logic_vector(7 downto 0);
    variable taken : natural := 0;
)" << for_ports("    variable bench_@name@ : std_logic_vector(@high@ downto 1);\n", true, false)
                               << R"(  begin
    reset <= '1';
    wait for 5 ns;
    reset <= '0';
    while not endfile(vectors) loop
      readline(vectors, source);
      read_hex(source, control);
)" << for_ports("      read_hex(source, bench_@name@);\n      @name@ <= bench_@name@;\n", true, false)
                               << R"(      enable <= control(0);
      startin <= control(1);
      wait for 5 ns;
      if enable = '1' and startout /= '0' then
        write(found, string'("OUT "));
        write(found, taken);
        write(found, ' ');
        write(found, std_logic'image(startout)(2));
)" << for_ports("        put(found, @name@);\n", false, true)
                               << R"(        writeline(output, found);
      end if;
      if enable = '1' then
        taken := taken + 1;
      end if;
      sysclk <= '1';
      wait for 5 ns;
      sysclk <= '0';
    end loop;
    write(found, string'("DONE"));
    writeline(output, found);
    wait;
  end process;
end test;
)";
}

void write_vectors(const std::vector<cycle>& cycles) {
    std::ofstream file("vectors.txt");
    for (const cycle& each : cycles) {
        file << std::hex << "0" << (each.enable ? 1 : 0) + (each.start ? 2 : 0);
        std::size_t input = 0;
        for (const port& one : ports) {
            if (!one.output) {
                std::ostringstream digits;
                digits << std::hex << each.inputs[input++];
                const auto wanted = static_cast<std::size_t>(one.bits + 3) / 4;
                file << ' ' << std::string(wanted - digits.str().size(), '0') << digits.str();
            }
        }
        file << '\n';
    }
}

/// Reads the bits of one output; false, and a word on it, when they are not near enough.
template <class value>
bool compare(std::istream& line, const char* name, std::size_t taken, const value& expected) {
    std::string word;
    line >> word;
    std::uint64_t bits = 0;
    for (const char each : word) {
        if (each != '0' && each != '1') {
            std::cout << name << " of cycle " << taken << " is " << word << '\n';
            return false;
        }
        bits = bits << 1U | static_cast<std::uint64_t>(each == '1');
    }
    if (word.empty() || !traced::agrees(bits, expected)) {
        std::cout << name << " of cycle " << taken << " is " << word << ", not near " << traced::shown(expected)
                  << '\n';
        return false;
    }
    return true;
}

/// Whether every start has its result, in its cycle, near enough, and nothing else came.
bool judge(std::size_t latency, const std::vector<cycle>& cycles, std::istream& output) {
    std::vector<const cycle*> taken;
    std::vector<std::size_t> starts;
    for (const cycle& each : cycles) {
        if (each.enable) {
            if (each.start) {
                starts.push_back(taken.size());
            }
            taken.push_back(&each);
        }
    }
    std::size_t seen = 0;
    bool done = false;
    for (std::string text; std::getline(output, text);) {
        std::istringstream line(text);
        std::string word;
        line >> word;
        done = done || word == "DONE";
        if (word != "OUT") {
            continue;
        }
        std::size_t at = 0;
        line >> at >> word;
        if (word != "1" || seen == starts.size() || at != starts[seen] + latency) {
            std::cout << "startout is " << word << " in cycle " << at << ", for start " << seen << '\n';
            return false;
        }
        std::size_t input = 0;
        const cycle& each = *taken[starts[seen++]];
#define INPUT(name, bits) traced::read(each.inputs[input++], program::name);
#define OUTPUT(name, bits)
#include "ports.inc"
#undef INPUT
#undef OUTPUT
        program::RUN();
#define INPUT(name, bits)
#define OUTPUT(name, bits)                          \
    if (!compare(line, #name, at, program::name)) { \
        return false;                               \
    }
#include "ports.inc"
#undef INPUT
#undef OUTPUT
    }
    if (!done || seen != starts.size()) {
        std::cout << seen << " results of " << starts.size() << (done ? "\n" : ", and the simulation did not end\n");
    }
    return done && seen == starts.size();
}

}  // namespace

int main(int count, char** arguments) {
    if (count == 3 && std::strcmp(arguments[1], "write") == 0) {
        write_verilog();
        write_vhdl();
        write_vectors(make_cycles(std::stoul(arguments[2])));
        return 0;
    }
    if (count == 5 && std::strcmp(arguments[1], "judge") == 0) {
        std::ifstream output(arguments[4]);
        return judge(std::stoul(arguments[2]), make_cycles(std::stoul(arguments[3])), output) ? 0 : 1;
    }
    std::cerr << "usage: bench write VECTORS | bench judge LATENCY VECTORS OUTPUT\n";
    return 2;
}
