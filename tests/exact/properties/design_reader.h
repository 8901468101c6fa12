#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Reads a generated VHDL or Verilog design into one form in which both languages look alike: one line of text for
// each port, signal, constant field, connection, instance and association, in the order of the file.

namespace xfc::test {

namespace reading {

inline std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

inline std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

/// Cuts the text in front of `mark` off `rest`, with the mark; everything when there is no mark.
inline std::string_view cut_before(std::string_view& rest, std::string_view mark) {
    const std::size_t end = rest.find(mark);
    const std::string_view head = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + mark.size());
    return head;
}

inline void replace_all(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// A signal with its range, or a literal bit, as "name[high:low]", "name[bit]", "0" or "1".
inline std::string plain_value(std::string_view value) {
    std::string text(trimmed(value));
    replace_all(text, " DOWNTO ", ":");
    replace_all(text, " : ", ":");
    replace_all(text, "1'b", "");
    replace_all(text, "'", "");
    replace_all(text, " ", "");
    replace_all(text, "(", "[");
    replace_all(text, ")", "]");
    return text;
}

inline bool is_name_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// All associations "name=>value" of a VHDL instance, generics first.
inline void read_vhdl_associations(std::string_view block, std::string& design) {
    for (std::size_t arrow = block.find("=>"); arrow != std::string_view::npos; arrow = block.find("=>", arrow + 2)) {
        std::size_t first = arrow;
        while (first > 0 && is_name_character(block[first - 1])) {
            --first;
        }
        std::size_t end = arrow + 2;
        for (int depth = 0; end < block.size(); ++end) {
            depth += block[end] == '(' ? 1 : 0;
            depth -= block[end] == ')' ? 1 : 0;
            if (depth < 0 || (depth == 0 && (block[end] == ',' || block[end] == '\n'))) {
                break;
            }
        }
        std::string_view value = block.substr(arrow + 2, end - arrow - 2);
        if (!value.empty() && value.back() == ';') {
            value.remove_suffix(1);
        }
        design += "  " + std::string(block.substr(first, arrow - first)) + "=" + plain_value(value) + "\n";
    }
}

/// All associations ".name(value)" of a Verilog instance.
inline void read_verilog_associations(std::string_view block, std::string& design) {
    for (std::size_t dot = block.find('.'); dot != std::string_view::npos; dot = block.find('.', dot + 1)) {
        const std::size_t open = block.find('(', dot);
        const std::string_view name = block.substr(dot + 1, open - dot - 1);
        if (!name.empty() && name.front() == '.') {
            continue;
        }
        const std::size_t close = block.find(')', open);
        design += "  " + std::string(name) + "=" + plain_value(block.substr(open + 1, close - open - 1)) + "\n";
    }
}

/// The lines of one instance: from `index` to the line that ends the port map, on which `index` is left.
inline std::string instance_block(const std::vector<std::string_view>& lines, std::size_t& index) {
    std::string block;
    for (; index < lines.size(); ++index) {
        block.append(lines[index]).append("\n");
        const bool next_is_empty = index + 1 >= lines.size() || lines[index + 1].empty();
        if (lines[index].ends_with(");") && next_is_empty) {
            break;
        }
    }
    return block;
}

/// A field of a constant signal; the value modulo 2 to the field's width, since only VHDL has signed words.
inline std::string constant_field(std::string_view target, std::int64_t value, std::int64_t width,
                                  std::string_view comment) {
    const std::int64_t modulus = std::int64_t{1} << width;
    return "constant " + plain_value(target) + "=" + std::to_string((value % modulus + modulus) % modulus) + " width " +
           std::to_string(width) + " " + std::string(trimmed(comment)) + "\n";
}

inline std::int64_t number(std::string_view text) { return std::stoll(std::string(trimmed(text))); }

inline std::string vhdl_constant(std::string_view line) {
    const std::string target(cut_before(line, " <= "));
    std::string_view value = cut_before(line, ";");
    cut_before(line, "-- ");
    if (value == "\"000000\"") {
        return constant_field(target, 0, 6, line);
    }
    cut_before(value, "conv_std_logic_vector(");
    const std::int64_t bits = number(cut_before(value, ","));
    return constant_field(target, bits, number(cut_before(value, ")")), line);
}

inline std::string verilog_constant(std::string_view line) {
    cut_before(line, "assign ");
    const std::string target(cut_before(line, " = "));
    std::string_view value = cut_before(line, ";");
    cut_before(line, "// ");
    const std::int64_t width = number(cut_before(value, "'"));
    return constant_field(target, number(value.substr(1)), width, line);
}

}  // namespace reading

inline std::string read_vhdl_design(std::string_view text) {
    using namespace reading;
    std::string design;
    const std::vector<std::string_view> lines = lines_of(text);
    bool in_process = false;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        std::string_view line = lines[index];
        if (line.starts_with("--")) {
            continue;
        }
        if (line.starts_with("ENTITY ")) {
            cut_before(line, " ");
            design += "design " + std::string(cut_before(line, " ")) + "\n";
        } else if (line.find(" : IN STD_LOGIC") != std::string_view::npos ||
                   line.find(" : OUT STD_LOGIC") != std::string_view::npos) {
            const std::string name(trimmed(cut_before(line, " : ")));
            const std::string direction(cut_before(line, " STD_LOGIC"));
            cut_before(line, "(");
            design += "port " + name + (direction == "IN" ? " in " : " out ") +
                      (line.empty() ? "1" : std::string(cut_before(line, " "))) + "\n";
        } else if (line.starts_with("  signal ")) {
            line.remove_prefix(9);
            const std::string name(cut_before(line, " : "));
            cut_before(line, "(");
            design += "signal " + name + " " + std::string(cut_before(line, " ")) + "\n";
        } else if (line.starts_with("  psd: ")) {
            in_process = true;
        } else if (in_process) {
            if (line.find("FOR k IN 2 TO") != std::string_view::npos) {
                cut_before(line, "TO ");
                design += "registers " + std::string(cut_before(line, " ")) + "\n";
            }
            in_process = !line.starts_with("  END PROCESS");
        } else if (line.starts_with("  -- ")) {
            design += "value " + std::string(line.substr(5)) + "\n";
        } else if (line.starts_with("  const")) {
            design += vhdl_constant(line);
        } else if (line.starts_with("  cmp") || line.starts_with("  lib")) {
            const std::string block = instance_block(lines, index);
            std::string_view rest = block;
            const std::string label(trimmed(cut_before(rest, ": ")));
            design += "instance " + label + " " + std::string(cut_before(rest, "\n")) + "\n";
            read_vhdl_associations(rest, design);
        } else if (line.find(" <= ") != std::string_view::npos) {
            const std::string target = plain_value(cut_before(line, " <= "));
            design += "connect " + target + "=" + plain_value(cut_before(line, ";")) + "\n";
        }
    }
    return design;
}

inline std::string read_verilog_design(std::string_view text) {
    using namespace reading;
    std::string design;
    const std::vector<std::string_view> lines = lines_of(text);
    bool in_process = false;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        std::string_view line = lines[index];
        if (line.starts_with("module ")) {
            cut_before(line, " ");
            design += "design " + std::string(cut_before(line, " ")) + "\n";
        } else if (line.starts_with("input ") || line.starts_with("output ")) {
            const bool in = cut_before(line, " ") == "input";
            std::string width = "1";
            if (line.starts_with("[")) {
                width = cut_before(line, " ").substr(1);
                cut_before(line, "] ");
            }
            design += "port " + std::string(cut_before(line, ";")) + (in ? " in " : " out ") + width + "\n";
        } else if (line.starts_with("wire [") || line.starts_with("reg [")) {
            cut_before(line, "[");
            const std::string width(cut_before(line, " "));
            cut_before(line, "] ");
            design += "signal " + std::string(cut_before(line, ";")) + " " + width + "\n";
        } else if (line.starts_with("  always ")) {
            in_process = true;
        } else if (in_process) {
            if (line.find("for (k=2; k <= ") != std::string_view::npos) {
                cut_before(line, "<= ");
                design += "registers " + std::string(cut_before(line, ";")) + "\n";
            }
            in_process = line != "  end";
        } else if (line.starts_with("  // ")) {
            design += "value " + std::string(line.substr(5)) + "\n";
        } else if (line.starts_with("  assign const")) {
            design += verilog_constant(line);
        } else if (line.starts_with("  assign ")) {
            cut_before(line, "assign ");
            const std::string target = plain_value(cut_before(line, " = "));
            design += "connect " + target + "=" + plain_value(cut_before(line, ";")) + "\n";
        } else if (line.starts_with("  ") && line.size() > 2 && is_name_character(line[2])) {
            const std::string block = instance_block(lines, index);
            const std::string component = block.substr(2, block.find_first_of(" \n", 2) - 2);
            const std::size_t cmp = block.find("  cmp");
            const std::size_t label = (cmp != std::string::npos ? cmp : block.find("  lib")) + 2;
            design +=
                "instance " + block.substr(label, block.find_first_of(" (", label) - label) + " " + component + "\n";
            read_verilog_associations(block, design);
        }
    }
    return design;
}

}  // namespace xfc::test
