// Renders the component table: one instance per node, in either language.

#include "exact/emit/instances.h"

#include <algorithm>
#include <optional>

#include "exact/dfg/dfg.h"
#include "exact/dfg/instance_operands.h"
#include "exact/emit/node_name.h"
#include "exact/run/compilation.h"

namespace xfc {

namespace {

constexpr std::string_view port_indent = "            ";

/// Bits of a bus: a value field down to bit 1 and, if `sat` is not 0, the flags sat, zip and nan from that bit up.
struct bus_bits {
    std::int32_t value_high;
    std::int32_t sat;
};

/// The bits of a port of an instance, or nothing when the port's line is left out.
std::optional<bus_bits> bits_of_port(port_shape shape, const component_generics& generics) {
    if (shape == port_shape::bits) {
        return bus_bits{generics.width, 0};
    }
    const bus_layout layout = layout_of(form_of(shape, generics), generics.mantissa);
    return layout.width != 0 ? std::optional(bus_bits{layout.value, layout.sat}) : std::nullopt;
}

std::optional<bus_bits> bits_of_result(const component_row& row, const component_generics& generics) {
    const bus_layout xfloat = layout_of(bus_form::xfloat, generics.mantissa);
    switch (text_of(row.id).result) {
        case result_bits::ieee_with_flags:
            return bus_bits{layout_of(bus_form::single_float, generics.mantissa).value, xfloat.sat};
        case result_bits::xfloat_without_flags:
            return bus_bits{xfloat.value, 0};
        default:
            return bits_of_port(row.cc, generics);
    }
}

/// What the generics of the node's instance are set to.
component_generics generics_of_instance(const dfg_node& node, const instance_text& text) {
    component_generics generics{current.options};
    generics.output_select = node.bus_modes.output_select;
    generics.width = node.outputs[0].width;
    generics.delay = node.attributes.latency;
    if (text.adjust_generics != nullptr) {
        text.adjust_generics(generics);
    }
    return generics;
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
          row_(row_of(node_.attributes.component)),
          text_(text_of(row_.id)),
          generics_(generics_of_instance(node_, text_)) {}

    void write_operator(std::int64_t number) {
        open("cmp", number);
        if (row_.operation == component_operation::add_or_subtract) {
            write_adder_select();
        }
        write_operand("aa", 0, row_.aa, row_.bb == port_shape::none, row_.clocked);
        write_operand("bb", 1, row_.bb, true, true);
        write_result();
    }

    void write_function(std::int64_t number) {
        open("lib", number);
        const node_name operand(function_value_operand(node_).driver);
        write_unpacked("signin", "exponentin", "mantissain", operand, ",\n");
        if (row_.bb != port_shape::none) {
            const instance_operand scale = function_scale_operand(node_);
            write_port("bb", signal_of(scale), bits_of_port(row_.bb, generics_)->value_high, 1);
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
        if (row_.clocked) {
            out_.append(language_.clock_ports);
        }
    }

    void write_generics() {
        const generic_row* const end = last_written_generic() + 1;
        for (const generic_row* row = row_.generics.begin(); row != end;) {
            if (row->flag != generic_row::no_flag) {
                row = write_select_flags(row);
                indent_generics();
                continue;
            }
            associate(row->name, generic_value(*row, generics_));
            ++row;
            if (row == end) {
                out_.append(")\n");
            } else {
                write_separator(row[-1].name);
            }
        }
    }

    /// Generics with a default stand last, and instances leave them out.
    [[nodiscard]] const generic_row* last_written_generic() const {
        const generic_row* last = row_.generics.end() - 1;
        while (last->has_default) {
            --last;
        }
        return last;
    }

    void write_separator(std::string_view generic) {
        const auto& ends = text_.line_ends;
        if (std::find(ends.begin(), ends.end(), generic) == ends.end()) {
            out_.append(',');
        } else if (text_.line_end_without_comma) {
            out_.append('\n');
        } else {
            out_.append(",\n");
            indent_generics();
        }
    }

    void indent_generics() {
        out_.append(std::string_view("               ", static_cast<std::size_t>(text_.*language_.generics_indent)));
    }

    /// Writes the line of output selectors that starts at `first`; a selector that none of them names leaves the line
    /// out. Returns the generic behind them.
    const generic_row* write_select_flags(const generic_row* first) {
        const auto* const end = std::find_if(first, row_.generics.end(),
                                             [](const generic_row& row) { return row.flag == generic_row::no_flag; });
        const bool selected =
            std::any_of(first, end, [this](const generic_row& row) { return generic_value(row, generics_) == 1; });
        if (selected) {
            for (const generic_row* row = first; row != end; ++row) {
                associate(row->name, generic_value(*row, generics_));
                out_.append(',');
            }
            out_.append('\n');
        }
        return end;
    }

    // ---- Ports of an operator ----

    void write_adder_select() {
        const bool add = node_.attributes.is == node_class::add;
        out_.append(port_indent);
        if (text_.verilog_addsub_blank) {
            associate("addsub", add ? language_.add_with_blank : language_.subtract_with_blank);
        } else {
            associate("addsub", add ? language_.add : language_.subtract);
        }
        out_.append(",\n");
    }

    void write_operand(std::string_view port, std::int32_t input, port_shape shape, bool last, bool indented) {
        const std::optional<bus_bits> bits = bits_of_port(shape, generics_);
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
        if (last && text_.empty_line_behind_operands) {
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
        const std::optional<bus_bits> bits = bits_of_result(row_, generics_);
        if (!bits) {
            return;
        }
        const signal to{"", node_name(slot_)};
        out_.append(port_indent);
        if (text_.verilog_double_dot) {
            out_.append(language_.association_open);
        }
        associate_range("cc", to, bits->value_high, 1);
        if (bits->sat != 0) {
            out_.append(text_.semicolon_behind_result ? ";\n" : ",\n");
            out_.append(port_indent);
            write_flags("cc", to, bits->sat, text_.blank_behind_result_sat ? ", " : ",");
        }
        out_.append(");\n\n");
    }

    // ---- Ports of a library function ----

    void write_unpacked(std::string_view sign, std::string_view exponent, std::string_view mantissa,
                        const node_name& name, std::string_view end) {
        const bus_layout bits = layout_of(form_of(row_.aa, generics_), generics_.mantissa);
        const signal from{"", name};
        out_.append(port_indent);
        associate_bit(sign, "", from, bits.sign);
        out_.append(",\n");
        write_port(exponent, from, bits.exponent.high, bits.exponent.low);
        out_.append(",\n");
        write_port(mantissa, from, bits.mantissa.high, bits.mantissa.low);
        out_.append(end);
    }

    const emission& to_;
    text_writer& out_;
    const hdl_language& language_;
    std::int32_t slot_;
    const dfg_node& node_;
    const component_row& row_;
    const instance_text& text_;
    component_generics generics_;
};

/// Kept: a merged arithmetic node is written all the same.
bool passed_over_when_removed(component_operation operation) {
    return operation == component_operation::convert || operation == component_operation::normalize ||
           operation == component_operation::delay;
}

}  // namespace

void write_operators(const emission& to) {
    std::int64_t number = 0;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const node_attributes& attributes = attributes_at(slot);
        const component_row& row = row_of(attributes.component);
        if (instance_kind_of(row) != instance_kind::operator_instance ||
            (attributes.is_removed != 0 && passed_over_when_removed(row.operation))) {
            continue;
        }
        instance_writer(to, slot).write_operator(number++);
    }
}

void write_functions(const emission& to) {
    std::int64_t number = 0;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const instance_kind kind = instance_kind_of(row_of(attributes_at(slot).component));
        if (kind == instance_kind::single_function || kind == instance_kind::double_function) {
            instance_writer(to, slot).write_function(number++);
        }
    }
}

}  // namespace xfc
