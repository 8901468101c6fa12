#include "bench.h"

#include <fstream>
#include <map>
#include <numeric>
#include <stdexcept>

#include "generic_sets.h"

namespace xfc::proof {

std::int32_t bench::result_width() const { return std::accumulate(class_widths.begin(), class_widths.end(), 0); }

std::int32_t bench::class_low(std::size_t result_class) const {
    return std::accumulate(class_widths.begin(), class_widths.begin() + static_cast<std::ptrdiff_t>(result_class), 0);
}

namespace {

/// How a language writes what an instance needs.
struct language {
    std::string_view association;  ///< of a generic or port with what it is set to
    std::string_view range_word;   ///< between high and low
    char open, close;              ///< around an index
};
constexpr language verilog{.association = ".@name@(@value@)", .range_word = ":", .open = '[', .close = ']'};
constexpr language vhdl{.association = "@name@ => @value@", .range_word = " downto ", .open = '(', .close = ')'};

using substitutions = std::map<std::string, std::string, std::less<>>;

/// The text with every @word@ replaced.
std::string filled(std::string_view format, const substitutions& words) {
    std::string text;
    while (!format.empty()) {
        const std::size_t at = format.find('@');
        text += format.substr(0, at);
        if (at == std::string_view::npos) {
            break;
        }
        const std::size_t end = format.find('@', at + 1);
        text += words.find(format.substr(at + 1, end - at - 1))->second;
        format.remove_prefix(end + 1);
    }
    return text;
}

std::string joined(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) {
        text += (text.empty() ? "" : ", ") + item;
    }
    return text;
}

std::string associated(const language& words, std::string_view name, const std::string& value) {
    return filled(words.association, {{"name", std::string(name)}, {"value", value}});
}

std::string generic_list_of(const language& words, const bench& layout, const bench_set& set) {
    std::vector<std::string> items;
    for (const generic_row& row : layout.row->generics) {
        items.push_back(associated(words, row.name, std::to_string(generic_value(row, set.generics))));
    }
    return joined(items);
}

std::string port_list_of(const language& words, const bench& layout, const bench_set& set, std::size_t index) {
    std::vector<std::string> items;
    const auto bits = [&](std::int32_t high, std::int32_t low, bool single) {
        return words.open +
               (single ? std::to_string(low)
                       : std::to_string(high) + std::string(words.range_word) + std::to_string(low)) +
               words.close;
    };
    const auto connect_bus = [&](port_shape shape, const char* prefix, const std::string& signal, std::int32_t first) {
        for (const port_connection& port : ports_of(shape, set.generics, prefix)) {
            items.push_back(
                associated(words, port.name, signal + bits(first + port.high, first + port.low, port.single_bit)));
        }
    };
    if (layout.row->clocked) {
        for (const char* name : {"sysclk", "reset", "enable"}) {
            items.push_back(associated(words, name, name));
        }
    }
    if (const std::string_view control = control_port_of(*layout.row); !control.empty()) {
        const std::int32_t top = layout.operand_width() - 1;
        items.push_back(associated(words, control, "operands" + bits(top, top, true)));
    }
    connect_bus(layout.row->aa, "aa", "operands", 0);
    connect_bus(layout.row->bb, "bb", "operands", layout.aa_width);
    connect_bus(layout.row->cc, "cc", "out_" + std::to_string(index), 0);
    return joined(items);
}

/// A part of the text once a set.
std::string for_each_set(const bench& layout, const language& words, std::string_view format) {
    std::string text;
    for (std::size_t index = 0; index < layout.sets.size(); ++index) {
        const bench_set& set = layout.sets[index];
        const std::int32_t width = layout.class_widths[set.result_class];
        const std::int32_t low = layout.class_low(set.result_class);
        const std::string generics = generic_list_of(words, layout, set);
        const bool is_vhdl = &words == &vhdl;
        text +=
            filled(format, {{"set", std::to_string(index)},
                            {"name", std::string(layout.row->name)},
                            {"top", std::to_string(width - 1)},
                            {"generics", generics.empty() ? "" : (is_vhdl ? " generic map (" : " #(") + generics + ")"},
                            {"ports", port_list_of(words, layout, set, index)},
                            {"latency", std::to_string(set.latency)},
                            {"high", std::to_string(low + width - 1)},
                            {"low", std::to_string(low)},
                            {"measured", std::to_string(measured_lines)},
                            {"last", std::to_string(latency_limit - 1)}});
    }
    return text;
}

/// What the whole bench is sized by.
substitutions sizes_of(const bench& layout) {
    return {{"operand_top", std::to_string(layout.operand_width() - 1)},
            {"result_top", std::to_string(layout.result_width() - 1)},
            {"last", std::to_string(latency_limit - 1)},
            {"limit", std::to_string(latency_limit)},
            {"set_top", std::to_string(layout.sets.size() - 1)}};
}

/// Bits of any number, filled from the low end.
class wide_bits {
public:
    void put(bus_bits value, std::int32_t width) {
        for (std::int32_t i = 0; i < width; ++i) {
            bits_.push_back(bit(value, i));
        }
    }
    [[nodiscard]] std::string hex() const {
        std::string text((bits_.size() + 3) / 4, '0');
        for (std::size_t i = 0; i < bits_.size(); ++i) {
            if (bits_[i]) {
                char& digit = text[text.size() - 1 - i / 4];
                const unsigned value =
                    (digit <= '9' ? static_cast<unsigned>(digit - '0') : static_cast<unsigned>(digit - 'a') + 10) +
                    (1U << (i % 4));
                digit = "0123456789abcdef"[value];
            }
        }
        return text;
    }

private:
    std::vector<bool> bits_;
};

}  // namespace

std::string verilog_bench(const bench& layout) {
    const substitutions sizes = sizes_of(layout);
    std::string text = filled(R"(`timescale 1ns / 1ps
module bench;
  reg sysclk, enable, reset;
  reg [@operand_top@:0] operands;
  reg [@result_top@:0] results;
  reg [@result_top@:0] history [0:@last@];
  reg [@set_top@:0] failed;
  reg [3:0] control;
  integer file, code, lines, consumed, l;
)",
                              sizes);
    text += for_each_set(layout, verilog, R"(  wire [@top@:0] out_@set@;
  reg [@last@:0] fits_@set@;
  @name@@generics@ set_@set@ (@ports@);
)");
    text += R"(
  initial begin
    sysclk = 0;
    enable = 0;
    reset = 0;
    operands = 0;
    lines = 0;
    consumed = 0;
    failed = 0;
)";
    text += for_each_set(layout, verilog, "    fits_@set@ = {@last@ + 1{1'b1}};\n");
    text += filled(R"(    file = $fopen("vectors.txt", "r");
    code = $fscanf(file, "%h %h %h\n", control, operands, results);
    while (code == 3) begin
      enable = control[0];
      reset = control[1];
      history[consumed % @limit@] = results;
      #5;
)",
                   sizes);
    text += for_each_set(layout, verilog, R"(
      if (consumed >= @latency@ && !failed[@set@])
        if (out_@set@ !== history[(consumed - @latency@) % (@last@ + 1)][@high@:@low@]) begin
          failed[@set@] = 1;
          $display("MISMATCH @set@ %0d %b", consumed - @latency@, out_@set@);
        end
      if (lines < @measured@)
        for (l = 0; l <= @last@ && l <= consumed; l = l + 1)
          if (out_@set@ !== history[(consumed - l) % (@last@ + 1)][@high@:@low@]) fits_@set@[l] = 0;
)");
    text += R"(
      sysclk = 1;
      #5;
      sysclk = 0;
      lines = lines + 1;
      if (enable) consumed = consumed + 1;
      code = $fscanf(file, "%h %h %h\n", control, operands, results);
    end
)";
    text += for_each_set(layout, verilog, R"(    for (l = 0; l <= @last@; l = l + 1)
      if (fits_@set@[l]) $display("LATENCY @set@ %0d", l);
)");
    return text + R"(    $display("DONE %0d", lines);
    $finish;
  end
endmodule
)";
}

std::string vhdl_bench(const bench& layout) {
    const substitutions sizes = sizes_of(layout);
    std::string text = filled(R"(library ieee;
use ieee.std_logic_1164.all;
use std.textio.all;
use work.bench_text.all;

entity bench is
end bench;

architecture test of bench is
  signal sysclk, enable, reset : std_logic := '0';
  signal operands : std_logic_vector(@operand_top@ downto 0) := (others => '0');
)",
                              sizes);
    text += for_each_set(layout, vhdl, "  signal out_@set@ : std_logic_vector(@top@ downto 0);\n");
    text += "begin\n";
    text += for_each_set(layout, vhdl, "  set_@set@ : entity work.@name@@generics@ port map (@ports@);\n");
    text += filled(R"(
  check : process
    type ring is array (0 to @last@) of std_logic_vector(@result_top@ downto 0);
    variable history : ring;
    variable control : std_logic_vector(3 downto 0);
    variable next_operands : std_logic_vector(@operand_top@ downto 0);
    variable results : std_logic_vector(@result_top@ downto 0);
    variable failed : std_logic_vector(@set_top@ downto 0) := (others => '0');
    file vectors : text open read_mode is "vectors.txt";
    variable source : line;
    variable lines, consumed : natural := 0;
)",
                   sizes);
    text +=
        for_each_set(layout, vhdl, "    variable fits_@set@ : std_logic_vector(@last@ downto 0) := (others => '1');\n");
    text += filled(R"(  begin
    while not endfile(vectors) loop
      readline(vectors, source);
      read_hex(source, control);
      read_hex(source, next_operands);
      read_hex(source, results);
      operands <= next_operands;
      enable <= control(0);
      reset <= control(1);
      history(consumed mod @limit@) := results;
      wait for 5 ns;
)",
                   sizes);
    text += for_each_set(layout, vhdl, R"(
      if consumed >= @latency@ and failed(@set@) = '0' then
        if out_@set@ /= history((consumed - @latency@) mod (@last@ + 1))(@high@ downto @low@) then
          failed(@set@) := '1';
          report_mismatch(@set@, consumed - @latency@, out_@set@);
        end if;
      end if;
      if lines < @measured@ then
        for l in 0 to @last@ loop
          if l <= consumed then
            if out_@set@ /= history((consumed - l) mod (@last@ + 1))(@high@ downto @low@) then
              fits_@set@(l) := '0';
            end if;
          end if;
        end loop;
      end if;
)");
    text += R"(
      sysclk <= '1';
      wait for 5 ns;
      sysclk <= '0';
      lines := lines + 1;
      if control(0) = '1' then
        consumed := consumed + 1;
      end if;
    end loop;
)";
    text += for_each_set(layout, vhdl, "    report_latencies(@set@, fits_@set@);\n");
    return text + R"(    report_done(lines);
    wait;
  end process;
end test;
)";
}

std::string scan_wrapper(const bench& layout) {
    return for_each_set(layout, verilog,
                        filled(R"(module measured
  (input sysclk, reset, enable, input [@operand_top@:0] operands, output [@result_top@:0] out_0);
)",
                               sizes_of(layout)) +
                            "  @name@@generics@ measured_component (@ports@);\nendmodule\n") +
           filled(R"(
module scan(input sysclk, reset, enable, load, data, output scanned);
  reg [@operand_top@:0] operands;
  reg [@result_top@:0] results;
  wire [@result_top@:0] out;
  always @at@(posedge sysclk) begin
    operands <= {operands, data};
    results <= load ? out : results << 1;
  end
  measured component (sysclk, reset, enable, operands, out);
  assign scanned = results[@result_top@];
endmodule
)",
                  [&] {
                      substitutions words = sizes_of(layout);
                      words.emplace("at", "@");
                      return words;
                  }());
}

void write_vectors(const std::filesystem::path& path, const bench& layout, const std::vector<bench_line>& lines) {
    std::ofstream file(path);
    for (const bench_line& line : lines) {
        wide_bits operands;
        operands.put(line.operands.aa, layout.aa_width);
        operands.put(line.operands.bb, layout.bb_width);
        operands.put(static_cast<bus_bits>(line.operands.addsub || line.operands.condition), layout.control_width());
        wide_bits results;
        for (std::size_t column = 0; column < line.results.size(); ++column) {
            results.put(line.results[column], layout.class_widths[column]);
        }
        file << (line.enable ? 1 : 0) + (line.reset ? 2 : 0) << ' ' << operands.hex() << ' ' << results.hex() << '\n';
    }
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

}  // namespace xfc::proof
