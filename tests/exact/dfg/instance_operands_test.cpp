#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "exact/dfg/instance_operands.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

using origin = instance_operand::origin;

/// What one component reads; constants are accepted on both operands or on none.
struct operator_row {
    std::string_view component;
    bool has_second_operand;
    bool accepts_constants;
};

const std::vector<operator_row> operators{
    {"xfc_alulong", true, true},    {"xfc_mullong", true, true},     {"xfc_alufp1_dot", true, false},
    {"xfc_alufp1x", true, true},    {"xfc_mulfp1_dot", true, false}, {"xfc_mulfp1x", true, true},
    {"xfc_divfp1x", true, true},    {"xfc_normfp1x", false, false},  {"xfc_alufp2x", true, true},
    {"xfc_mulfp2x", true, true},    {"xfc_divfp2x", true, true},     {"xfc_normfp2x", false, false},
    {"xfc_delay", false, false},    {"xfc_castftox", false, false},  {"xfc_castxtof", false, false},
    {"castftoy", false, false},     {"xfc_castdtoy", false, false},  {"castdtox", false, false},
    {"castxtod", false, false},     {"castxtoy", false, false},      {"xfc_castytod", false, false},
    {"xfc_castytof", false, false}, {"xfc_castytox", false, false},  {"xfc_castdtof", false, false},
    {"xfc_castftod", false, false},
};

enum class reads { first, first_else_second, second, second_and_scale };

struct function_row {
    std::string_view component;
    reads operand;
};

const std::vector<function_row> functions{
    {"fp_sqr", reads::first},
    {"fp_invsqr", reads::first},
    {"fp_inv", reads::first_else_second},
    {"fp_exp", reads::first},
    {"fp_log", reads::first},
    {"fp_ldexp", reads::second_and_scale},
    {"fp_fabs", reads::first},
    {"fp_neg", reads::first},
    {"dp_sqr", reads::first},
    {"dp_invsqr", reads::first},
    {"dp_inv", reads::first},
    {"dp_exp", reads::first},
    {"dp_log", reads::first},
    {"dp_ldexp", reads::second_and_scale},
    {"dp_fabs", reads::first},
    {"dp_neg", reads::first},
};

/// What stands on an input port.
enum class port_state { nothing, constant, driver, constant_and_driver };

constexpr port_state all_states[] = {port_state::nothing, port_state::constant, port_state::driver,
                                     port_state::constant_and_driver};

/// Slots 0 and 1 are possible drivers of the inputs 0 and 1 of slot 2.
const dfg_node& build(std::string_view component, port_state first, port_state second) {
    start_graph();
    add_node("a", 1);
    add_node("b", 1);
    add_node("n", 2, number_format::none, component);
    for (std::int32_t port = 0; port < 2; ++port) {
        const port_state state = port == 0 ? first : second;
        if (state == port_state::constant || state == port_state::constant_and_driver) {
            node_at(2).inputs[port].is_constant = 1;
        }
        if (state == port_state::driver || state == port_state::constant_and_driver) {
            dfg_connect(port, 2, port);
        }
    }
    return node_at(2);
}

bool is_driven(port_state state) { return state == port_state::driver || state == port_state::constant_and_driver; }

bool is_constant(port_state state) { return state == port_state::constant || state == port_state::constant_and_driver; }

void expect_operand(const instance_operand& operand, bool constant, bool driven, std::int32_t driver_slot) {
    if (constant) {
        EXPECT_EQ(operand.from, origin::constant_signal);
    } else if (driven) {
        EXPECT_EQ(operand.from, origin::driver);
        EXPECT_EQ(operand.driver, driver_slot);
    } else {
        EXPECT_EQ(operand.from, origin::missing);
    }
}

TEST(instance_operands, operators_read_a_constant_where_they_accept_one_and_else_the_driver) {
    for (const operator_row& row : operators) {
        for (const port_state first : all_states) {
            for (const port_state second : all_states) {
                SCOPED_TRACE(row.component);
                const dfg_node& node = build(row.component, first, second);
                expect_operand(operator_operand(node, 0), row.accepts_constants && is_constant(first), is_driven(first),
                               0);
                if (row.has_second_operand) {
                    expect_operand(operator_operand(node, 1), row.accepts_constants && is_constant(second),
                                   is_driven(second), 1);
                }
                const auto exists = [&](port_state state) {
                    return is_driven(state) || (row.accepts_constants && is_constant(state));
                };
                EXPECT_EQ(has_all_instance_operands(node),
                          exists(first) && (!row.has_second_operand || exists(second)));
            }
        }
    }
}

TEST(instance_operands, functions_read_the_driver_of_their_own_input) {
    for (const function_row& row : functions) {
        for (const port_state first : all_states) {
            for (const port_state second : all_states) {
                SCOPED_TRACE(row.component);
                const dfg_node& node = build(row.component, first, second);
                const bool from_first =
                    row.operand == reads::first || (row.operand == reads::first_else_second && is_driven(first));
                const bool value_exists = is_driven(from_first ? first : second);
                expect_operand(function_value_operand(node), false, value_exists, from_first ? 0 : 1);
                bool scale_exists = true;
                if (row.operand == reads::second_and_scale) {
                    // Without a constant on the first input value and scale are one driver.
                    scale_exists = is_constant(first) || is_driven(second);
                    expect_operand(function_scale_operand(node), is_constant(first), is_driven(second), 1);
                }
                EXPECT_EQ(has_all_instance_operands(node), value_exists && scale_exists);
            }
        }
    }
}

TEST(instance_operands, nodes_without_an_instance_lack_nothing) {
    for (const char* component : {"", "xfc_castltof", "xfc_castltod", "xfc_castltox", "xfc_castltoy", "xfc_castftol",
                                  "xfc_castdtol", "xfc_castxtol", "xfc_castytol"}) {
        EXPECT_TRUE(has_all_instance_operands(build(component, port_state::nothing, port_state::nothing))) << component;
    }
}

TEST(instance_operands, every_component_with_an_instance_stands_in_one_of_the_two_tables) {
    for (const component_row& row : components_of_xfc()) {
        bool is_operator = false;
        bool is_function = false;
        for (const operator_row& known : operators) {
            is_operator = is_operator || known.component == row.name;
        }
        for (const function_row& known : functions) {
            is_function = is_function || known.component == row.name;
        }
        EXPECT_EQ(instance_kind_of(row) != instance_kind::none, is_operator || is_function) << row.name;
        EXPECT_EQ(instance_kind_of(row) == instance_kind::operator_instance, is_operator) << row.name;
    }
}

TEST(instance_operands, a_port_that_the_node_does_not_have_is_missing) {
    start_graph();
    const std::int32_t a = add_node("a", 1);
    const std::int32_t variable = add_node("ldexp", 1, number_format::single_float, "fp_ldexp");
    dfg_connect(a, variable, 0);
    EXPECT_EQ(function_value_operand(node_at(variable)).from, origin::missing);
    EXPECT_EQ(function_scale_operand(node_at(variable)).from, origin::missing);
    EXPECT_FALSE(has_all_instance_operands(node_at(variable)));
    const std::int32_t inverse = add_node("inv", 1, number_format::single_float, "fp_inv");
    EXPECT_FALSE(has_all_instance_operands(node_at(inverse)));
    dfg_connect(a, inverse, 0);
    EXPECT_TRUE(has_all_instance_operands(node_at(inverse)));
}

TEST(instance_operands, a_driver_is_read_whatever_its_slot_is) {
    start_graph();
    const std::int32_t delay = add_node("delay", 1, number_format::xfloat, "xfc_delay");
    const std::int32_t producer = add_node("+", 2, number_format::xfloat, "xfc_alufp1x");
    dfg_connect(producer, delay, 0);
    EXPECT_EQ(operator_operand(node_at(delay), 0).driver, producer);
}

}  // namespace

}  // namespace xfc::test
