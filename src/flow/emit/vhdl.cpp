#include "flow/emit/datapath.h"
#include "flow/emit/template.h"

namespace xfc::flow {

namespace {

constexpr std::string_view before_ports = R"(library ieee;
use ieee.std_logic_1164.all;

entity @name@ is
  port (sysclk, reset, enable : in std_logic;
        startin : in std_logic;   -- the inputs are valid
)";
constexpr std::string_view input_port = "        @port@ : in std_logic_vector(@width@ downto 1);   -- @comment@\n";
constexpr std::string_view output_port = "        @port@ : out std_logic_vector(@width@ downto 1);   -- @comment@\n";
constexpr std::string_view behind_ports = R"(        startout : out std_logic);   -- the outputs are valid
end @name@;

architecture datapath of @name@ is
  signal @chain@ : std_logic_vector(@latency@ downto 1);
)";
constexpr std::string_view constant_line =
    "  constant @signal@ : std_logic_vector(@width@ downto 1) := \"@bits@\";   -- @comment@\n";
constexpr std::string_view signal_line = "  signal @signal@ : std_logic_vector(@width@ downto 1);   -- @comment@\n";
constexpr std::string_view chain_text = R"(begin
  -- Goes with the data: startout is the startin of @latency@ cycles ago.
  follow_start : process (sysclk, reset)
  begin
    if reset = '1' then
      @chain@ <= (others => '0');
    elsif rising_edge(sysclk) then
      if enable = '1' then
        @shift@
      end if;
    end if;
  end process;
  startout <= @chain@(@latency@);

)";

std::string slice_text(const connection& one) {
    if (one.high == 0) {
        return one.signal;
    }
    return one.signal + "(" + std::to_string(one.high) + (one.single_bit ? "" : " downto " + std::to_string(one.low)) +
           ")";
}

std::string instance(const instance_text& what) {
    std::string text;
    if (!what.comment.empty()) {
        text += "  -- " + what.comment + "\n";
    }
    text += "  " + what.label + " : entity work." + std::string(what.component) + "\n";
    std::string generics;
    for (const auto& [name, value] : what.generics) {
        generics += (generics.empty() ? "" : ", ") + std::string(name) + " => " + std::to_string(value);
    }
    text += generics.empty() ? "" : "    generic map (" + generics + ")\n";
    std::string ports = what.clocked ? "sysclk => sysclk, reset => reset, enable => enable" : "";
    const auto add = [&](const std::string& port, const std::string& actual) {
        ports += (ports.empty() ? "" : ",\n              ") + port + " => " + actual;
    };
    for (const std::string& port : what.fixed_low) {
        add(port, "'0'");
    }
    for (const std::string& port : what.fixed_high) {
        add(port, "'1'");
    }
    for (const connection& one : what.connections) {
        add(one.port, slice_text(one));
    }
    for (const std::string& port : what.open) {
        add(port, "open");
    }
    return text + "    port map (" + ports + ");\n\n";
}

}  // namespace

std::string vhdl_text(const datapath& what) {
    const std::string latency = std::to_string(what.latency);
    const substitutions words{{"name", what.name},
                              {"latency", latency},
                              {"chain", what.start_chain},
                              {"shift", what.start_chain + (what.latency == 1 ? std::string("(1) <= startin;")
                                                                              : " <= " + what.start_chain + "(" +
                                                                                    std::to_string(what.latency - 1) +
                                                                                    " downto 1) & startin;")}};
    std::string text;
    for (const std::string& line : what.header) {
        text += line.empty() ? "--\n" : "-- " + line + "\n";
    }
    text += filled_template(before_ports, words);
    const auto bus_words = [](const bus_text& bus) {
        return substitutions{{"port", bus.name}, {"width", std::to_string(bus.width)}, {"comment", bus.comment}};
    };
    for (const bus_text& bus : what.inputs) {
        text += filled_template(input_port, bus_words(bus));
    }
    for (const output_text& output : what.outputs) {
        text += filled_template(output_port, bus_words(output.bus));
    }
    text += filled_template(behind_ports, words);
    for (const constant_bus& one : what.constants) {
        text += filled_template(constant_line, {{"signal", one.bus.name},
                                                {"width", std::to_string(one.bus.width)},
                                                {"bits", one.bits},
                                                {"comment", one.bus.comment}});
    }
    for (const bus_text& bus : what.signals) {
        text += filled_template(signal_line,
                                {{"signal", bus.name}, {"width", std::to_string(bus.width)}, {"comment", bus.comment}});
    }
    text += filled_template(chain_text, words);
    for (const instance_text& one : what.instances) {
        text += instance(one);
    }
    for (const output_text& output : what.outputs) {
        text += "  " + output.bus.name + " <= " + output.driver + ";\n";
    }
    return text + "end datapath;\n";
}

}  // namespace xfc::flow
