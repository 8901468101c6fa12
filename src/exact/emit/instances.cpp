// Renders the component table: one instance per node, in either language.

#include "exact/emit/instances.h"

#include <array>
#include <optional>

#include "exact/dfg/dfg.h"
#include "exact/dfg/instance_operands.h"
#include "exact/emit/node_name.h"
#include "exact/run/compile_options.h"

namespace xfc {

namespace {

constexpr std::string_view port_indent = "            ";

/// Bits of a bus: a value field down to bit 1 and, if `sat` is not 0, the flags sat, zip and nan from that bit up.
struct bus_bits {
    std::int32_t value_high;
    std::int32_t sat;
};

constexpr bus_bits flags_above(std::int32_t value_high) { return {value_high, value_high + 1}; }

/// The bits of a port of the node's instance, or nothing when the port's line is left out.
std::optional<bus_bits> bits_of_port(bus_form form, const dfg_node& node) {
    const std::int32_t mantissa = compile_options.mantissa;
    const std::int32_t width = node.outputs[0].width;
    const std::int32_t selector = node.bus_modes.output_select;
    switch (form) {
        case bus_form::none:
            return std::nullopt;
        case bus_form::plain_32:
            return bus_bits{32, 0};
        case bus_form::plain_64:
            return bus_bits{64, 0};
        case bus_form::plain_output_width:
            return bus_bits{width, 0};
        case bus_form::plain_mantissa:
            return bus_bits{mantissa + 10, 0};
        case bus_form::xfloat:
            return flags_above(mantissa + 10);
        case bus_form::ydouble:
            return flags_above(77);
        case bus_form::multiplier:
            return flags_above(67);
        case bus_form::plain_32_or_xfloat:
            return width == 32 ? bus_bits{32, 0} : flags_above(mantissa + 10);
        case bus_form::by_output_select: {
            constexpr std::array<bus_bits, 3> results{bus_bits{64, 0}, flags_above(77), flags_above(67)};
            return selector >= 0 && selector <= 2 ? std::optional(results[static_cast<std::size_t>(selector)])
                                                  : std::nullopt;
        }
        case bus_form::by_target:
            return flags_above(selector * 10 + 67);
        case bus_form::by_output_width:
            return flags_above(width - 3);
        case bus_form::plain_32_with_flags:
            return bus_bits{32, mantissa + 11};
    }
    return std::nullopt;
}

/// Writes one instance after the other; `number` is the running count of one label.
class instance_writer {
public:
    instance_writer(const emission& to, std::int32_t slot)
        : to_(to),
          out_(to.out),
          language_(to.language),
          slot_(slot),
          node_(node_at(slot)),
          row_(*node_.attributes.component) {}

    void write_operator(std::int64_t number) {
        open("cmp", number);
        if (row_.addsub) {
            write_adder_select();
        }
        write_operand("aa", 0, row_.aa, row_.bb == bus_form::none, row_.has_clock_ports);
        write_operand("bb", 1, row_.bb, true, true);
        write_result();
    }

    void write_function(std::int64_t number) {
        open("lib", number);
        const node_name operand(function_value_operand(node_).driver);
        write_unpacked("signin", "exponentin", "mantissain", operand, ",\n");
        if (row_.has_scale_operand) {
            const instance_operand scale = function_scale_operand(node_);
            write_port("bb", signal_of(scale), 32, 1);
            out_.append(",\n");
        }
        write_unpacked("signout", "exponentout", "mantissaout", node_name(slot_), ");\n\n");
    }

private:
    /// A signal's name, with the prefix of a constant signal where it is one.
    struct signal {
        std::string_view prefix;
        node_name name;
    };

    [[nodiscard]] signal signal_of(const instance_operand& operand) const {
        const bool constant = operand.from == instance_operand::origin::constant_signal;
        return constant ? signal{"const", node_name(slot_)} : signal{"", node_name(operand.driver)};
    }

    // ---- Associations ----

    void open_association(std::string_view name) {
        out_.append(language_.association_open);
        out_.append(name);
        out_.append(language_.association_arrow);
    }

    void associate(std::string_view name, std::string_view value) {
        open_association(name);
        out_.append(value);
        out_.append(language_.association_close);
    }

    void associate(std::string_view name, std::int64_t value) {
        open_association(name);
        out_.append_integer(value);
        out_.append(language_.association_close);
    }

    void associate_bit(std::string_view port, std::string_view flag, const signal& from, std::int32_t bit) {
        out_.append(language_.association_open);
        out_.append(port);
        out_.append(flag);
        out_.append(language_.association_arrow);
        write_signal(from);
        write_bit(to_, bit);
        out_.append(language_.association_close);
    }

    void write_signal(const signal& from) {
        out_.append(from.prefix);
        out_.append(from.name.text());
    }

    void associate_range(std::string_view port, const signal& from, std::int32_t high, std::int32_t low) {
        open_association(port);
        write_signal(from);
        write_range(to_, high, low);
        out_.append(language_.association_close);
    }

    void write_port(std::string_view port, const signal& from, std::int32_t high, std::int32_t low) {
        out_.append(port_indent);
        associate_range(port, from, high, low);
    }

    // ---- Head and generics ----

    void open(std::string_view label, std::int64_t number) {
        language_.open_instance(out_, row_, label, number);
        if (!row_.generics.empty()) {
            write_generics();
        }
        language_.open_ports(out_, row_, label, number);
        if (row_.has_clock_ports) {
            out_.append(language_.clock_ports);
        }
    }

    void write_generics() {
        for (const generic_item& item : row_.generics) {
            const bool last = &item + 1 == row_.generics.end();
            if (write_select_flags(item.source)) {
                indent_generics();
                continue;
            }
            associate(item.name, generic_value(item));
            if (last) {
                out_.append(")\n");
            } else if (item.behind == generic_break::line) {
                out_.append(",\n");
                indent_generics();
            } else {
                out_.append(item.behind == generic_break::none ? ',' : '\n');
            }
        }
    }

    void indent_generics() {
        out_.append(std::string_view("               ", static_cast<std::size_t>(row_.*language_.generics_indent)));
    }

    [[nodiscard]] std::int32_t generic_value(const generic_item& item) const {
        switch (item.source) {
            case generic_source::option:
                return compile_options.*item.option;
            case generic_source::option_if_selector_0:
                return node_.bus_modes.output_select == 0 ? compile_options.*item.option : 1;
            case generic_source::output_select:
                return node_.bus_modes.output_select;
            case generic_source::output_width:
                return node_.outputs[0].width;
            case generic_source::latency:
                return node_.attributes.latency;
            default:
                return 1;
        }
    }

    /// Writes the line of output-select generics if the item stands for one; a selector that none of them names
    /// leaves the line out.
    bool write_select_flags(generic_source source) {
        static constexpr std::array<std::string_view, 4> four{"ieeeoutput", "xoutput", "multoutput", "divoutput"};
        static constexpr std::array<std::string_view, 3> with_mult{"ieeeoutput", "xoutput", "multoutput"};
        static constexpr std::array<std::string_view, 3> with_div{"ieeeoutput", "xoutput", "divoutput"};
        std::span<const std::string_view> names;
        switch (source) {
            case generic_source::select_flags_4:
                names = four;
                break;
            case generic_source::select_flags_mult:
                names = with_mult;
                break;
            case generic_source::select_flags_div:
                names = with_div;
                break;
            default:
                return false;
        }
        const std::int32_t selector = node_.bus_modes.output_select;
        if (selector >= 0 && selector < static_cast<std::int32_t>(names.size())) {
            for (std::int32_t flag = 0; flag < static_cast<std::int32_t>(names.size()); ++flag) {
                associate(names[static_cast<std::size_t>(flag)], flag == selector ? 1 : 0);
                out_.append(',');
            }
            out_.append('\n');
        }
        return true;
    }

    // ---- Ports of an operator ----

    void write_adder_select() {
        const bool add = node_.name == "+";
        out_.append(port_indent);
        if (row_.verilog_addsub_blank) {
            associate("addsub", add ? language_.add_with_blank : language_.subtract_with_blank);
        } else {
            associate("addsub", add ? language_.add : language_.subtract);
        }
        out_.append(",\n");
    }

    void write_operand(std::string_view port, std::int32_t input, bus_form form, bool last, bool indented) {
        const std::optional<bus_bits> bits = bits_of_port(form, node_);
        if (!bits) {
            return;
        }
        const instance_operand operand = operator_operand(node_, input);
        const signal from = signal_of(operand);
        out_.append(indented ? port_indent : std::string_view{});
        associate_range(port, from, bits->value_high, 1);
        out_.append(",\n");
        if (bits->sat == 0) {
            return;
        }
        out_.append(port_indent);
        if (operand.from == instance_operand::origin::constant_signal) {
            write_zero_flags(port);
        } else {
            write_flags(port, from, bits->sat, ",");
        }
        out_.append(",\n");
        if (last && row_.empty_line_behind_operands) {
            out_.append('\n');
        }
    }

    void write_flags(std::string_view port, const signal& from, std::int32_t sat, std::string_view behind_sat) {
        associate_bit(port, "sat", from, sat);
        out_.append(behind_sat);
        associate_bit(port, "zip", from, sat + 1);
        out_.append(',');
        associate_bit(port, "nan", from, sat + 2);
    }

    void write_zero_flags(std::string_view port) {
        std::string_view separator;
        for (const std::string_view flag : {"sat", "zip", "nan"}) {
            out_.append(separator);
            out_.append(language_.association_open);
            out_.append(port);
            out_.append(flag);
            out_.append(language_.association_arrow);
            out_.append(language_.flag_zero);
            out_.append(language_.association_close);
            separator = ",";
        }
    }

    void write_result() {
        const std::optional<bus_bits> bits = bits_of_port(row_.cc, node_);
        if (!bits) {
            return;
        }
        const signal to{"", node_name(slot_)};
        out_.append(port_indent);
        if (row_.verilog_double_dot) {
            out_.append(language_.association_open);
        }
        associate_range("cc", to, bits->value_high, 1);
        if (bits->sat != 0) {
            out_.append(row_.semicolon_behind_result ? ";\n" : ",\n");
            out_.append(port_indent);
            write_flags("cc", to, bits->sat, row_.blank_behind_result_sat ? ", " : ",");
        }
        out_.append(");\n\n");
    }

    // ---- Ports of a library function ----

    void write_unpacked(std::string_view sign, std::string_view exponent, std::string_view mantissa,
                        const node_name& name, std::string_view end) {
        const bool single = row_.kind == instance_kind::single_function;
        const signal from{"", name};
        out_.append(port_indent);
        associate_bit(sign, "", from, single ? 32 : 64);
        out_.append(",\n");
        write_port(exponent, from, single ? 31 : 63, single ? 24 : 53);
        out_.append(",\n");
        write_port(mantissa, from, single ? 23 : 52, 1);
        out_.append(end);
    }

    const emission& to_;
    text_writer& out_;
    const hdl_language& language_;
    std::int32_t slot_;
    const dfg_node& node_;
    const component_row& row_;
};

}  // namespace

void write_operators(const emission& to) {
    std::int64_t number = 0;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const node_attributes& attributes = attributes_at(slot);
        const component_row& row = *attributes.component;
        if (row.kind != instance_kind::operator_instance ||
            (row.passed_over_when_removed && attributes.is_removed != 0)) {
            continue;
        }
        instance_writer(to, slot).write_operator(number++);
    }
}

void write_functions(const emission& to) {
    std::int64_t number = 0;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const instance_kind kind = attributes_at(slot).component->kind;
        if (kind == instance_kind::single_function || kind == instance_kind::double_function) {
            instance_writer(to, slot).write_function(number++);
        }
    }
}

}  // namespace xfc
