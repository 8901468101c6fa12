// Usage: make_packages FOLDER
// Writes the VHDL packages with the components' declarations, xfc_package.vhd and xfc_library_package.vhd, from the
// component table. They stand beside this file, and a test makes them again.

#include <fstream>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "components/component_table.h"

namespace {

using namespace xfc;

/// The functions have a package of their own.
bool is_function(const component_row& row) {
    return row.aa == port_shape::unpacked_single || row.aa == port_shape::unpacked_double;
}

std::string type_of(const generic_row& generic) {
    return generic.takes_negative ? "integer" : generic.low > 0 ? "positive" : "natural";
}

/// Bits of the value field of a form, with the generic `mantissa` where they depend on it.
std::string width_text(bus_form form) {
    const std::int32_t narrow = layout_of(form, 32).value;
    return narrow == layout_of(form, 36).value ? std::to_string(narrow) : "mantissa + " + std::to_string(narrow - 32);
}

bus_form form_for(port_shape shape, std::int32_t selector) {
    component_generics generics;
    generics.output_select = selector;
    return form_of(shape, generics);
}

/// The width of a bus whose form the row's generics choose: a sum over output selectors, or a step with `target`.
std::string chosen_width(const component_row& row, port_shape shape) {
    if (shape == port_shape::ydouble_by_target) {
        const std::int32_t first = layout_of(form_for(shape, 0), 0).value;
        const std::int32_t second = layout_of(form_for(shape, 1), 0).value;
        return std::to_string(first) + " + " + std::to_string(second - first) + " * target";
    }
    std::vector<std::pair<std::string, std::string>> selectors_by_width;
    for (const generic_row& generic : row.generics) {
        if (generic.flag == generic_row::no_flag) {
            continue;
        }
        const std::string width = width_text(form_for(shape, generic.flag));
        if (!selectors_by_width.empty() && selectors_by_width.back().first == width) {
            selectors_by_width.back().second += " + " + std::string(generic.name);
        } else {
            selectors_by_width.emplace_back(width, generic.name);
        }
    }
    const auto factor = [](const std::string& text) {
        return text.find(' ') == std::string::npos ? text : "(" + text + ")";
    };
    std::string text;
    for (const auto& [width, selectors] : selectors_by_width) {
        text += (text.empty() ? "" : " + ") + factor(width) + " * " + factor(selectors);
    }
    return text;
}

std::string vector_port(const std::string& name, const std::string& direction, const std::string& high) {
    return name + " : " + direction + " std_logic_vector(" + high + " downto 1)";
}

/// The declarations of one bus; `prefix` is aa, bb or cc.
void add_ports(const component_row& row, port_shape shape, const std::string& prefix, std::vector<std::string>& ports) {
    const bool output = prefix == "cc";
    const std::string direction = output ? "out" : "in";
    bool flags = false;
    switch (shape) {
        case port_shape::none:
            return;
        case port_shape::unpacked_single:
        case port_shape::unpacked_double: {
            const bus_layout layout = layout_of(form_for(shape, 0), 0);
            ports.push_back("sign" + direction + " : " + direction + " std_logic");
            ports.push_back(vector_port("exponent" + direction, direction, std::to_string(layout.exponent.width())));
            ports.push_back(vector_port("mantissa" + direction, direction, std::to_string(layout.mantissa.width())));
            return;
        }
        case port_shape::boolean:
            ports.push_back(prefix + " : " + direction + " std_logic");
            return;
        case port_shape::bits:
            ports.push_back(vector_port(prefix, direction, "width"));
            return;
        case port_shape::single_by_selector:
        case port_shape::double_by_selector:
        case port_shape::ydouble_by_target:
            ports.push_back(vector_port(prefix, direction, chosen_width(row, shape)));
            flags = true;
            break;
        default:
            ports.push_back(vector_port(prefix, direction, width_text(form_for(shape, 0))));
            flags = layout_of(form_for(shape, 0), 32).sat != 0;
            break;
    }
    if (flags) {
        ports.push_back(prefix + "sat, " + prefix + "zip, " + prefix + "nan : " + direction + " std_logic");
    }
}

/// `items` behind `opening` with semicolons between them, a line an item.
std::string listed(const std::string& opening, const std::vector<std::string>& items) {
    std::string text = opening;
    for (std::size_t i = 0; i < items.size(); ++i) {
        text += i == 0 ? "" : ";\n" + std::string(opening.size(), ' ');
        text += items[i];
    }
    return text + ");\n";
}

std::string declaration_of(const component_row& row) {
    std::string text = "\n  component " + std::string(row.name) + "\n";
    std::vector<std::string> generics;
    for (const generic_row& generic : row.generics) {
        generics.push_back(std::string(generic.name) + " : " + type_of(generic) +
                           (generic.has_default ? " := " + std::to_string(generic.low) : ""));
    }
    if (!generics.empty()) {
        text += listed("    generic (", generics);
    }
    std::vector<std::string> ports;
    if (row.clocked) {
        const std::string control(control_port_of(row));
        ports.push_back("sysclk, reset, enable" + (control.empty() ? "" : ", " + control) + " : in std_logic");
    }
    add_ports(row, row.aa, "aa", ports);
    add_ports(row, row.bb, "bb", ports);
    add_ports(row, row.cc, "cc", ports);
    return text + listed("    port (", ports) + "  end component;\n";
}

struct package_row {
    std::string_view name;
    std::string_view heading;
    bool functions;
};
constexpr package_row packages[] = {
    {"xfc_package", "Operators, conversions and the delay line", false},
    {"xfc_library_package", "Functions", true},
};

std::string package_text(const package_row& package) {
    const std::string name(package.name);
    std::string text = "-- " + std::string(package.heading) +
                       " as designs declare them; made by make_packages from the component table.\n"
                       "library ieee;\nuse ieee.std_logic_1164.all;\n\npackage " +
                       name + " is\n";
    for (const component_row& row : all_components()) {
        if (is_function(row) == package.functions) {
            text += declaration_of(row);
        }
    }
    return text + "\nend " + name + ";\n";
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: make_packages FOLDER\n";
        return 2;
    }
    for (const package_row& package : packages) {
        std::ofstream file(std::string(arguments[1]) + "/" + std::string(package.name) + ".vhd");
        file << package_text(package);
        if (!file.flush()) {
            std::cerr << "make_packages: cannot write to " << arguments[1] << '\n';
            return 1;
        }
    }
    return 0;
}
