#include "flow/simulate/bench.h"

#include <algorithm>

#include "flow/emit/template.h"

namespace xfc::flow {

namespace {

constexpr std::string_view verilog_bench = R"(`timescale 1ns / 1ps
module xfc_bench;
  reg sysclk, reset, enable, startin;
  reg [@inputs@:1] inputs;
  wire [@outputs@:1] outputs;
  wire startout;
  reg [@line@:1] stimulus;
  integer vectors, results, code;

  @name@ under_test
    (.sysclk(sysclk), .reset(reset), .enable(enable), .startin(startin),
@ports@     .startout(startout));

  initial begin
@wave@    vectors = $fopen("vectors.txt", "r");
    results = $fopen("results.txt", "w");
    sysclk = 0;
    reset = 0;
    enable = 0;
    startin = 0;
    inputs = 0;
    code = $fscanf(vectors, "%b\n", stimulus);
    while (code == 1) begin
      {reset, enable, startin, inputs} = stimulus;
      #5;
      $fwrite(results, "%b%b\n", startout, outputs);
      sysclk = 1;
      #5;
      sysclk = 0;
      code = $fscanf(vectors, "%b\n", stimulus);
    end
    $fclose(results);
    $finish;
  end
endmodule
)";

constexpr std::string_view wave_lines = "    $dumpfile(\"wave.vcd\");\n    $dumpvars(2, xfc_bench);\n";

constexpr std::string_view vhdl_bench = R"(library ieee;
use ieee.std_logic_1164.all;
use std.textio.all;

entity xfc_bench is
end xfc_bench;

architecture test of xfc_bench is
  signal sysclk, reset, enable, startin : std_logic := '0';
  signal inputs : std_logic_vector(@inputs@ downto 1) := (others => '0');
  signal outputs : std_logic_vector(@outputs@ downto 1);
  signal startout : std_logic;

  function value_of(letter : character) return std_logic is
  begin
    if letter = '1' then return '1'; else return '0'; end if;
  end value_of;
  function letter_of(value : std_logic) return character is
    constant image : string(1 to 3) := std_logic'image(value);
  begin
    return image(2);
  end letter_of;
begin
  under_test : entity work.@name@
    port map (sysclk => sysclk, reset => reset, enable => enable, startin => startin,
@ports@              startout => startout);

  run : process
    file vectors : text open read_mode is "vectors.txt";
    file results : text open write_mode is "results.txt";
    variable source, target : line;
    variable stimulus : string(1 to @line@);
    variable seen : string(1 to @outputs@ + 1);
  begin
    while not endfile(vectors) loop
      readline(vectors, source);
      read(source, stimulus);
      reset <= value_of(stimulus(1));
      enable <= value_of(stimulus(2));
      startin <= value_of(stimulus(3));
      for place in 1 to @inputs@ loop
        inputs(@inputs@ + 1 - place) <= value_of(stimulus(3 + place));
      end loop;
      wait for 5 ns;
      seen(1) := letter_of(startout);
      for place in 1 to @outputs@ loop
        seen(1 + place) := letter_of(outputs(@outputs@ + 1 - place));
      end loop;
      write(target, seen);
      writeline(results, target);
      sysclk <= '1';
      wait for 5 ns;
      sysclk <= '0';
    end loop;
    wait;
  end process;
end test;
)";

}  // namespace

std::string bench_text(const datapath& what, language lang, bool wave) {
    std::int32_t inputs = 0;
    std::int32_t outputs = 0;
    for (const bus_text& bus : what.inputs) {
        inputs += bus.width;
    }
    for (const output_text& output : what.outputs) {
        outputs += output.bus.width;
    }
    // Every design has a bus of inputs, if only one bit that nobody reads.
    const std::int32_t bits = std::max(inputs, 1);
    std::string ports;
    const auto add = [&](const bus_text& bus, std::string_view side, std::int32_t& high) {
        const std::string slice =
            std::to_string(high) + (lang == language::vhdl ? " downto " : ":") + std::to_string(high - bus.width + 1);
        ports += lang == language::vhdl
                     ? "              " + std::string(bus.name) + " => " + std::string(side) + "(" + slice + "),\n"
                     : "     ." + std::string(bus.name) + "(" + std::string(side) + "[" + slice + "]),\n";
        high -= bus.width;
    };
    std::int32_t high = inputs;
    for (const bus_text& bus : what.inputs) {
        add(bus, "inputs", high);
    }
    high = outputs;
    for (const output_text& output : what.outputs) {
        add(output.bus, "outputs", high);
    }
    return filled_template(lang == language::vhdl ? vhdl_bench : verilog_bench,
                           {{"name", what.name},
                            {"inputs", std::to_string(bits)},
                            {"outputs", std::to_string(outputs)},
                            {"line", std::to_string(bits + 3)},
                            {"ports", ports},
                            {"wave", std::string(wave ? wave_lines : "")}});
}

}  // namespace xfc::flow
