#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

using slots = std::vector<std::int32_t>;
using strings = std::vector<std::string>;

constexpr auto in_long = number_format::long_integer;
constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;
constexpr std::array formats{in_long, in_float, in_double, in_xfloat, in_ydouble};

std::string_view component_at(std::int32_t slot) { return component_name(slot); }
number_format format_at(std::int32_t slot) { return attributes_at(slot).format; }

/// The conversions of a program behind the pass, in slot order.
strings conversions_of(const std::string& source, const strings& switches = {}) {
    EXPECT_EQ(optimize_text(source, insert_type_conversions, switches).status, 0);
    strings kinds;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (node_at(slot).name == "cast") {
            kinds.emplace_back(component_at(slot));
        }
    }
    return kinds;
}

std::string program(const std::string& statements) {
    return "float a, b, c, d, t, u, y, z;\ndouble e, f, g, h;\nlong m, n;\nint i;\nmain()\n{\n" + statements + "\n}\n";
}

/// Two nodes by hand with an edge between; the producer has no input that anything drives.
void make_edge(std::string_view producer, number_format from, number_format to) {
    start_graph();
    add_node(producer, 1, from);
    add_node("y", 1, to);
    dfg_connect(0, 1, 0);
    initialize_scratchpad();
}

// ---- Format codes ----

TEST(format_codes, are_one_letter_a_format) {
    const std::string letters = "lfdxy";
    for (std::size_t index = 0; index < formats.size(); ++index) {
        EXPECT_EQ(format_row(formats[index]).code, letters[index]);
    }
    EXPECT_EQ(format_row(number_format::none).code, 0);
}

TEST(format_codes, of_an_int_variable_that_is_converted_end_the_run) {
    for (const std::string statement : {"y = i;", "i = a;", "y = a * i;"}) {
        const run_result result = optimize_text(program(statement), insert_type_conversions);
        EXPECT_EQ(result.status, 1) << statement;
        EXPECT_EQ(result.standard_output, "***MAKE EXPRESSIONS***\nUnknown Type ") << statement;
        EXPECT_EQ(result.standard_error, "");
    }
}

TEST(format_codes, are_not_asked_for_where_both_ends_have_no_format) {
    const run_result result = optimize_text("int i, j; main() { j = i; }\n", insert_type_conversions);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(dfg_used_slots(), 2);
}

// ---- Kinds ----

TEST(conversions, of_every_pair_of_formats_have_their_kind) {
    const std::string letters = "lfdxy";
    for (std::size_t from = 0; from < formats.size(); ++from) {
        for (std::size_t to = 0; to < formats.size(); ++to) {
            make_edge("p", formats[from], formats[to]);
            insert_type_conversions();
            if (from == to) {
                EXPECT_EQ(dfg_used_slots(), 2);
                continue;
            }
            ASSERT_EQ(dfg_used_slots(), 3);
            const std::string kind = std::string("cast") + letters[from] + "to" + letters[to];
            EXPECT_EQ(node_at(2).name, "cast");
            EXPECT_TRUE(component_at(2) == kind || component_at(2) == "xfc_" + kind) << component_at(2);
            EXPECT_EQ(format_at(2), formats[to]);
            EXPECT_EQ(attributes_at(2).is_normalized, kind != "castxtoy" && kind != "castytox" ? 1 : 0) << kind;
            EXPECT_EQ(attributes_at(2).is_internal, 0);
            EXPECT_EQ(driver(2), 0);
            EXPECT_EQ(driver(1), 2);
            EXPECT_EQ(consumers(0), slots{2});
            EXPECT_EQ(consumers(2), slots{1});
        }
    }
}

TEST(conversions, go_one_by_one_into_the_edges_in_the_order_of_the_consumers) {
    start_graph();
    add_node("p", 1, in_float);
    add_node("w", 1, in_double);
    add_node("x", 1, in_float);
    add_node("y", 2, in_xfloat);
    add_node("z", 1, in_double);
    dfg_connect(0, 3, 1);
    dfg_connect(0, 2, 0);
    dfg_connect(0, 1, 0);
    dfg_connect(0, 4, 0);
    insert_type_conversions();
    EXPECT_EQ(consumers(0), (slots{5, 2, 6, 7}));
    EXPECT_EQ(component_at(5), "xfc_castftox");
    EXPECT_EQ(component_at(6), "xfc_castftod");
    EXPECT_EQ(component_at(7), "xfc_castftod");
    EXPECT_EQ(driver(3, 1), 5);
    EXPECT_EQ(driver(1), 6);
    EXPECT_EQ(driver(4), 7);
}

TEST(conversions, are_not_needed_behind_a_node_without_consumers) {
    start_graph();
    add_node("p", 1, in_float);
    insert_type_conversions();
    EXPECT_EQ(dfg_used_slots(), 1);
}

TEST(conversions, of_one_value_at_both_ports_of_a_node_are_two) {
    EXPECT_EQ(conversions_of(program("y = a + a;")), (strings{"xfc_castftox", "xfc_castftox", "xfc_castxtof"}));
    EXPECT_EQ(driver(driver(slot_named("+"), 0)), slot_named("a"));
    EXPECT_EQ(driver(driver(slot_named("+"), 1)), slot_named("a"));
    EXPECT_NE(driver(slot_named("+"), 0), driver(slot_named("+"), 1));
}

TEST(conversions, stand_behind_the_nodes_that_were_there_before) {
    EXPECT_EQ(conversions_of(program("e = a;")), strings{"xfc_castftod"});
    EXPECT_EQ(slot_named("cast"), 15);
}

// ---- Internal formats of arithmetic ----

TEST(internal_formats, are_given_to_every_operator_by_its_declared_format) {
    for (const std::string operation : {"+", "-", "*", "/"}) {
        conversions_of(program("y = a " + operation + " b;"));
        EXPECT_EQ(format_at(slot_named(operation)), in_xfloat);
        conversions_of(program("e = f " + operation + " g;"));
        EXPECT_EQ(format_at(slot_named(operation)), in_ydouble);
        EXPECT_EQ(conversions_of(program("m = n " + operation + " n;")), strings{});
        EXPECT_EQ(format_at(slot_named(operation)), in_long);
    }
}

TEST(internal_formats, are_not_given_to_functions_and_negations) {
    EXPECT_EQ(conversions_of(program("y = sqrt(a); z = -b; e = exp(f); g = ldexp(h, 2);")), strings{});
    EXPECT_EQ(format_at(slot_named("sqrt")), in_float);
    EXPECT_EQ(format_at(slot_named("negate")), in_float);
    EXPECT_EQ(format_at(slot_named("exp")), in_double);
    EXPECT_EQ(format_at(slot_named("ldexp")), in_double);
}

TEST(internal_formats, are_not_given_to_operators_that_nothing_reads) {
    start_graph();
    add_node("a", 1, in_float);
    add_node("+", 2, in_float);
    dfg_connect(0, 1, 0);
    dfg_connect(0, 1, 1);
    insert_type_conversions();
    EXPECT_EQ(format_at(1), in_float);
    EXPECT_EQ(dfg_used_slots(), 2);
}

TEST(internal_formats, need_a_conversion_on_each_operand_and_behind_a_sum) {
    EXPECT_EQ(conversions_of(program("y = a - b;")), (strings{"xfc_castftox", "xfc_castftox", "xfc_castxtof"}));
    EXPECT_EQ(conversions_of(program("e = f + g;")), (strings{"xfc_castdtoy", "xfc_castdtoy", "xfc_castytod"}));
    EXPECT_EQ(conversions_of(program("e = a + f;")), (strings{"castftoy", "xfc_castdtoy", "xfc_castytod"}));
    EXPECT_EQ(conversions_of(program("y = a + m;")), (strings{"xfc_castftox", "xfc_castltox", "xfc_castxtof"}));
}

TEST(internal_formats, are_converted_into_each_other_between_single_and_double_sums) {
    EXPECT_EQ(conversions_of(program("e = (a - b) + f;")),
              (strings{"xfc_castftox", "xfc_castftox", "xfc_castdtoy", "castxtoy", "xfc_castytod"}));
    for (const std::int32_t slot : slots_with_component("castxtoy")) {
        EXPECT_EQ(attributes_at(slot).is_normalized, 0);
    }
}

TEST(internal_formats, of_a_literal_operand_need_no_conversion) {
    EXPECT_EQ(conversions_of(program("y = a + 2.5;")), (strings{"xfc_castftox", "xfc_castxtof"}));
}

// ---- Pass-through variables ----

TEST(passed_values, keep_the_internal_format_of_the_sum_behind_them) {
    EXPECT_EQ(conversions_of(program("t = a + b; y = t + c;")),
              (strings{"xfc_castftox", "xfc_castftox", "xfc_castftox", "xfc_castxtof"}));
    EXPECT_EQ(format_at(slot_named("t")), in_xfloat);
    EXPECT_EQ(attributes_at(slot_named("t")).is_internal, 1);
    EXPECT_EQ(driver(slot_named("t")), slot_named("+"));
}

TEST(passed_values, take_the_format_of_the_sum_whatever_their_own_is) {
    conversions_of(program("e = a + b; y = e + c;"));
    EXPECT_EQ(format_at(slot_named("e")), in_xfloat);
    conversions_of(program("t = f + g; e = t - h;"));
    EXPECT_EQ(format_at(slot_named("t")), in_ydouble);
    conversions_of(program("m = a + b; y = m + c;"));
    EXPECT_EQ(format_at(slot_named("m")), in_xfloat);
}

TEST(passed_values, go_through_several_variables) {
    EXPECT_EQ(conversions_of(program("t = a + b; u = t; c = u; y = c;")),
              (strings{"xfc_castftox", "xfc_castftox", "xfc_castxtof"}));
    for (const std::string_view name : {"t", "u", "c"}) {
        EXPECT_EQ(format_at(slot_named(name)), in_xfloat) << name;
    }
    EXPECT_EQ(format_at(slot_named("y")), in_float);
}

TEST(passed_values, go_through_variables_declared_in_any_order) {
    conversions_of("float y, c, u, t, a, b; main() { t = a + b; u = t; c = u; y = c; }\n");
    for (const std::string_view name : {"t", "u", "c"}) {
        EXPECT_EQ(format_at(slot_named(name)), in_xfloat) << name;
    }
}

TEST(passed_values, of_functions_and_inputs_leave_the_declared_format) {
    EXPECT_EQ(conversions_of(program("e = sqrt(a); f = e; t = b; u = t;")), strings{"xfc_castftod"});
    EXPECT_EQ(format_at(slot_named("e")), in_double);
    EXPECT_EQ(format_at(slot_named("t")), in_float);
}

TEST(passed_values, of_a_long_sum_leave_the_declared_format) {
    EXPECT_EQ(conversions_of(program("t = m + n; y = t;")), strings{"xfc_castltof"});
    EXPECT_EQ(format_at(slot_named("t")), in_float);
}

TEST(passed_values, end_at_an_output_which_keeps_its_declared_format) {
    EXPECT_EQ(conversions_of(program("y = a + b;")).back(), "xfc_castxtof");
    EXPECT_EQ(driver(slot_named("y")), slots_with_component("xfc_castxtof").front());
    EXPECT_EQ(conversions_of(program("e = f + g;")).back(), "xfc_castytod");
    EXPECT_EQ(attributes_at(slot_named("e")).is_internal, 0);
}

TEST(passed_values, of_a_variable_without_a_source_are_left_alone) {
    start_graph();
    add_node("t", 2, in_float);
    add_node("y", 1, in_float);
    attributes_at(0).is_internal = 1;
    dfg_connect(0, 1, 0);
    EXPECT_EQ(catch_output(insert_type_conversions).status, 0);
    EXPECT_EQ(format_at(0), in_float);
    EXPECT_EQ(dfg_used_slots(), 2);
}

// ---- Products of inputs ----

/// The format that the product gets in that statement.
number_format format_of_product(const std::string& statement, const strings& switches = {}) {
    conversions_of(program(statement), switches);
    return format_at(slot_named("*"));
}

TEST(dot_products, of_inputs_that_feed_a_sum_stay_in_ieee_format) {
    EXPECT_EQ(conversions_of(program("y = a * b + c * d;")), strings{"xfc_castxtof"});
    EXPECT_EQ(format_at(slot_named("*", 0)), in_float);
    EXPECT_EQ(format_at(slot_named("*", 1)), in_float);
    EXPECT_EQ(format_at(slot_named("+")), in_xfloat);
    EXPECT_EQ(format_of_product("y = c - a * b;"), in_float);
}

TEST(dot_products, are_kept_for_every_optimization_above_0) {
    for (const std::string value : {"1", "2", "3"}) {
        EXPECT_EQ(format_of_product("y = a * b + c;", {"-mv", value}), in_float) << value;
    }
}

TEST(dot_products, are_not_kept_without_optimization) {
    for (const std::string value : {"0", "-1", "-2147483648"}) {
        EXPECT_EQ(conversions_of(program("y = a * b + c;"), {"-mv", value}),
                  (strings{"xfc_castftox", "xfc_castftox", "xfc_castftox", "xfc_castxtof"}))
            << value;
        EXPECT_EQ(format_at(slot_named("*")), in_xfloat);
    }
}

TEST(dot_products, need_inputs_of_the_datapath_as_operands) {
    EXPECT_EQ(format_of_product("t = c; y = a * t + b;"), in_xfloat);
    EXPECT_EQ(format_of_product("t = c; y = t * a + b;"), in_xfloat);
    EXPECT_EQ(format_of_product("y = sqrt(a) * b + c;"), in_xfloat);
    EXPECT_EQ(format_of_product("y = (a + b) * c - d;"), in_xfloat);
}

TEST(dot_products, take_no_literal) {
    EXPECT_EQ(format_of_product("y = a * 2.5 + b;"), in_xfloat);
    EXPECT_EQ(format_of_product("y = 2.5 * a + b;"), in_xfloat);
}

TEST(dot_products, take_one_input_twice) { EXPECT_EQ(format_of_product("y = a * a + b;"), in_float); }

TEST(dot_products, need_a_sum_as_their_first_consumer) {
    EXPECT_EQ(format_of_product("y = a * b;"), in_xfloat);
    EXPECT_EQ(format_of_product("y = sqrt(a * b);"), in_xfloat);
    EXPECT_EQ(format_of_product("y = a * b / c;"), in_xfloat);
    // The variable stands between product and sum.
    EXPECT_EQ(format_of_product("t = a * b; y = t + c;"), in_xfloat);
}

TEST(dot_products, take_inputs_of_other_formats_when_the_product_is_single) {
    EXPECT_EQ(conversions_of(program("y = a * m + b;")), (strings{"xfc_castftox", "xfc_castltof", "xfc_castxtof"}));
    EXPECT_EQ(format_at(slot_named("*")), in_float);
}

TEST(dot_products, do_not_exist_in_double_precision_or_integers) {
    EXPECT_EQ(format_of_product("e = f * g + h;"), in_ydouble);
    EXPECT_EQ(format_of_product("m = n * n + n;"), in_long);
}

TEST(dot_products, are_no_quotients) {
    conversions_of(program("y = a / b + c;"));
    EXPECT_EQ(format_at(slot_named("/")), in_xfloat);
}

TEST(dot_products, need_a_single_consumer_when_the_optimizer_starts) {
    const auto make = [](std::int32_t fanout) {
        start_graph();
        add_node("a", 1, in_float);
        add_node("b", 1, in_float);
        add_node("*", 2, in_float);
        add_node("+", 2, in_float);
        add_node("y", 1, in_float);
        dfg_connect(0, 2, 0);
        dfg_connect(1, 2, 1);
        dfg_connect(2, 3, 0);
        dfg_connect(2, 3, 1);
        dfg_connect(3, 4, 0);
        initialize_scratchpad();
        attributes_at(2).fanout = fanout;
        insert_type_conversions();
        return format_at(2);
    };
    EXPECT_EQ(make(2), in_xfloat);
    // The count taken at the start decides, not the list.
    EXPECT_EQ(make(1), in_float);
}

TEST(dot_products, take_no_port_with_a_literal_though_a_source_stands_there_too) {
    for (std::int32_t literal = -1; literal < 2; ++literal) {
        start_graph();
        add_node("a", 1, in_float);
        add_node("*", 2, in_float);
        add_node("+", 2, in_float);
        add_node("y", 1, in_float);
        dfg_connect(0, 1, 0);
        dfg_connect(0, 1, 1);
        dfg_connect(1, 2, 0);
        dfg_connect(0, 2, 1);
        dfg_connect(2, 3, 0);
        if (literal >= 0) {
            node_at(1).inputs[literal].is_constant = 1;
        }
        initialize_scratchpad();
        insert_type_conversions();
        EXPECT_EQ(format_at(1), literal < 0 ? in_float : in_xfloat) << literal;
    }
}

// ---- Exemptions ----

struct exemption {
    std::string_view name;
    number_format from;
    number_format to;
};

constexpr std::array exemptions{
    exemption{"/", in_xfloat, in_float},   exemption{"*", in_xfloat, in_float},   exemption{"*", in_float, in_xfloat},
    exemption{"/", in_ydouble, in_double}, exemption{"*", in_ydouble, in_double},
};

bool is_listed(std::string_view name, number_format from, number_format to) {
    for (const exemption& row : exemptions) {
        if (row.name == name && row.from == from && row.to == to) {
            return true;
        }
    }
    return false;
}

TEST(exemptions, are_these_five_and_no_others) {
    for (const std::string_view name : {"*", "/", "+", "-", "sqrt", "p"}) {
        for (const number_format from : formats) {
            for (const number_format to : formats) {
                make_edge(name, from, to);
                insert_type_conversions();
                const bool expected = from != to && !is_listed(name, from, to);
                EXPECT_EQ(dfg_used_slots(), expected ? 3 : 2)
                    << name << " " << format_row(from).text << " to " << format_row(to).text;
            }
        }
    }
}

TEST(exemptions, need_a_single_consumer) {
    for (const exemption& row : exemptions) {
        make_edge(row.name, row.from, row.to);
        add_node("z", 2, row.to);
        dfg_connect(0, 2, 0);
        insert_type_conversions();
        EXPECT_EQ(dfg_used_slots(), 5) << row.name;
        // Two ports of one node are two consumers.
        make_edge(row.name, row.from, row.to);
        dfg_add_consumer(0, 1, 0);
        insert_type_conversions();
        EXPECT_EQ(dfg_used_slots(), 4) << row.name;
    }
}

TEST(exemptions, let_a_product_drive_its_output_variable) {
    EXPECT_EQ(conversions_of(program("y = a * b;")), (strings{"xfc_castftox", "xfc_castftox"}));
    EXPECT_EQ(format_at(slot_named("*")), in_xfloat);
    EXPECT_EQ(driver(slot_named("y")), slot_named("*"));
    EXPECT_EQ(conversions_of(program("y = a / b;")), (strings{"xfc_castftox", "xfc_castftox"}));
    EXPECT_EQ(conversions_of(program("e = f * g;")), (strings{"xfc_castdtoy", "xfc_castdtoy"}));
    EXPECT_EQ(conversions_of(program("e = f / g;")), (strings{"xfc_castdtoy", "xfc_castdtoy"}));
}

TEST(exemptions, let_a_product_drive_a_function) {
    EXPECT_EQ(conversions_of(program("y = sqrt(a * b);")), (strings{"xfc_castftox", "xfc_castftox"}));
}

TEST(exemptions, do_not_hold_across_precisions) {
    EXPECT_EQ(conversions_of(program("e = a * b;")).back(), "castxtod");
    EXPECT_EQ(conversions_of(program("y = e * f;")).back(), "xfc_castytof");
}

TEST(exemptions, do_not_hold_for_a_product_that_a_variable_passes_on) {
    // The variable carries the internal format, so that its readers get the conversions.
    // Slots are visited upwards: a and b first, then the variable.
    EXPECT_EQ(conversions_of(program("t = a * b; y = t; z = t;")),
              (strings{"xfc_castftox", "xfc_castftox", "xfc_castxtof", "xfc_castxtof"}));
    EXPECT_EQ(driver(slot_named("t")), slot_named("*"));
}

}  // namespace

}  // namespace xfc::test
