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
constexpr std::string_view behind_ports = R"(        startout : out std_logic);   -- the outputs are valid
end @name@;

architecture datapath of @name@ is
  signal @chain@ : std_logic_vector(@latency@ downto 1);
)";
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

/// Bits of the longest constant that every tool takes at a port: ghdl --synth 2.0 makes a text of a longer one.
constexpr std::size_t longest_constant = 32;

/// A constant, or the signal that a longer one is put together in.
void append_constant(std::string& text, const constant_bus& one) {
    const bool whole = one.bits.size() <= longest_constant;
    append_all(text, whole ? "  constant " : "  signal ", one.bus.name, " : std_logic_vector(", one.bus.width,
               " downto 1)", whole ? " := \"" : "", whole ? one.bits : "", whole ? "\";   -- " : ";   -- ",
               whole ? "" : "constant ", one.bus.comment, "\n");
}

/// The pieces of a longer constant, the highest first.
void append_pieces(std::string& text, const constant_bus& one) {
    if (one.bits.size() <= longest_constant) {
        return;
    }
    for (std::size_t high = one.bits.size(); high > 0;) {
        const std::size_t low = (high - 1) / longest_constant * longest_constant;
        append_all(text, "  ", one.bus.name, "(", high, " downto ", low + 1, ") <= \"",
                   one.bits.substr(one.bits.size() - high, high - low), "\";\n");
        high = low;
    }
    text += "\n";
}

/// What stands between the ports of a port map.
constexpr std::string_view between_ports = ",\n              ";

void append_group(std::string& text, std::string_view& between, const connection& one) {
    for (const port_bits& port : one.ports->ports) {
        append_all(text, between, port.port, " => ", one.signal);
        between = between_ports;
        if (port.single_bit) {
            append_all(text, "(", port.high, ")");
        } else if (port.high != 0) {
            append_all(text, "(", port.high, " downto ", port.low, ")");
        }
    }
}

void append_instance(std::string& text, const instance_text& what) {
    if (!what.comment.empty()) {
        append_all(text, "  -- ", what.comment, "\n");
    }
    append_all(text, "  ", what.label, " : entity work.", what.component, "\n");
    std::string_view between = "    generic map (";
    for (const auto& [name, value] : what.kind->generics) {
        append_all(text, between, name, " => ", value);
        between = ", ";
    }
    append_all(text, what.kind->generics.empty() ? "" : ")\n", "    port map (");
    between = "";
    if (what.kind->clocked) {
        text += "sysclk => sysclk, reset => reset, enable => enable";
        between = between_ports;
    }
    for (const auto& [port, level] :
         {std::pair(what.kind->fixed_low, " => '0'"), std::pair(what.kind->fixed_high, " => '1'")}) {
        if (!port.empty()) {
            append_all(text, between, port, level);
            between = between_ports;
        }
    }
    for (const connection& one : what.used_connections()) {
        append_group(text, between, one);
    }
    for (const connection& one : what.used_connections()) {
        for (const std::string& port : one.ports->open) {
            append_all(text, between, port, " => open");
            between = between_ports;
        }
    }
    text += ");\n\n";
}

}  // namespace

void write_vhdl(const datapath& what, const text_taker& take) {
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
    const auto append_port = [&](const bus_text& bus, std::string_view direction) {
        append_all(text, "        ", bus.name, " : ", direction, " std_logic_vector(", bus.width, " downto 1);   -- ",
                   bus.comment, "\n");
        take_full_block(text, take);
    };
    for (const bus_text& bus : what.inputs) {
        append_port(bus, "in");
    }
    for (const output_text& output : what.outputs) {
        append_port(output.bus, "out");
    }
    text += filled_template(behind_ports, words);
    for (const constant_bus& one : what.constants) {
        append_constant(text, one);
        take_full_block(text, take);
    }
    what.for_each_signal([&](const bus_text& bus) {
        append_all(text, "  signal ", bus.name, " : std_logic_vector(", bus.width, " downto 1);   -- ", bus.comment,
                   "\n");
        take_full_block(text, take);
    });
    text += filled_template(chain_text, words);
    for (const constant_bus& one : what.constants) {
        append_pieces(text, one);
        take_full_block(text, take);
    }
    what.for_each_instance([&](const instance_text& one) {
        append_instance(text, one);
        take_full_block(text, take);
    });
    for (const output_text& output : what.outputs) {
        append_all(text, "  ", output.bus.name, " <= ", output.driver, ";\n");
    }
    take(text += "end datapath;\n");
}

std::string vhdl_text(const datapath& what) {
    std::string text;
    write_vhdl(what, [&](std::string_view piece) { text += piece; });
    return text;
}

}  // namespace xfc::flow
