#include "flow/passes/design.h"
#include "flow/graph/verifier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "flow/graph/dump.h"
#include "flow/passes/constants.h"
#include "flow/passes/expand.h"
#include "flow/passes/options.h"
#include "flow/passes/schedule.h"
#include "flow/passes/select_components.h"
#include "flow/support/graphs.h"

namespace xfc::flow {
namespace {

using test::graph_writer;

constexpr auto none = std::vector<std::string>{};

design selected(const graph& source) {
    diagnostics messages;
    auto made = select_components(source, default_library_options(false), messages);
    EXPECT_TRUE(made.has_value()) << rendered(messages, {});
    EXPECT_EQ(faults_of(*made, source), none) << dump(*made, source);
    return *made;
}

std::size_t count_of(const design& made, component_id component) {
    return static_cast<std::size_t>(std::count_if(
        made.nodes.begin(), made.nodes.end(), [&](const design_node& node) { return node.component == component; }));
}

TEST(select_components, converts_a_value_once_whatever_the_number_of_readers) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    w.output("sum", w.add(a, b));
    w.output("difference", w.subtract(a, b));
    const design made = selected(w.made);
    EXPECT_EQ(count_of(made, component_id::castftox), 2U);
    EXPECT_EQ(count_of(made, component_id::alufp1x), 2U);
    EXPECT_EQ(count_of(made, component_id::castxtof), 2U);
}

TEST(select_components, keeps_sums_inside_without_rounding_between_them) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", w.add(w.add(a, w.input("b")), w.input("c")));
    const design made = selected(w.made);
    EXPECT_EQ(count_of(made, component_id::castxtof), 1U);
    EXPECT_EQ(count_of(made, component_id::castftox), 3U);
}

/// y = x0 + x1 + ... of so many operands, one after the other.
graph chain_of(int operands) {
    graph_writer w;
    value_id sum = w.input("x0");
    for (int number = 1; number < operands; ++number) {
        sum = w.add(sum, w.input("x" + std::to_string(number)));
    }
    w.output("y", sum);
    return std::move(w.made);
}

TEST(select_components, normalises_a_sum_of_more_than_16_operands_and_no_shorter_one) {
    EXPECT_EQ(count_of(selected(chain_of(16)), component_id::castxtof), 1U);
    diagnostics messages;
    const graph longer = chain_of(17);
    // The library may lack the normalizer; then it is named.
    const auto made = select_components(longer, default_library_options(false), messages);
    if (made) {
        EXPECT_EQ(count_of(*made, component_id::normfp1x), 1U);
        EXPECT_EQ(faults_of(*made, longer), none);
    } else {
        ASSERT_EQ(messages.messages().size(), 1U);
        EXPECT_NE(messages.messages()[0].text.find("xfc_normfp1x"), std::string::npos);
    }
}

TEST(select_components, counts_the_operands_of_both_sides_of_a_sum_of_doubles) {
    graph_writer w;
    std::vector<value_id> sums;
    for (int number = 0; number < 20; ++number) {
        sums.push_back(w.input("x" + std::to_string(number), number_format::double_float));
    }
    while (sums.size() > 1) {
        std::vector<value_id> halved;
        for (std::size_t at = 0; at + 1 < sums.size(); at += 2) {
            halved.push_back(w.add(sums[at], sums[at + 1]));
        }
        if (sums.size() % 2 == 1) {
            halved.push_back(sums.back());
        }
        sums = halved;
    }
    w.output("y", sums[0]);
    const design made = selected(w.made);
    EXPECT_EQ(count_of(made, component_id::normfp2x), 1U);
}

/// A graph of this operation alone.
graph graph_of(operation op, number_format result, number_format alike) {
    graph_writer w;
    const operation_row& row = row_of(op);
    std::vector<value_id> operands;
    for (int place = 0; place < row.arity(); ++place) {
        const std::string name = "a" + std::to_string(place);
        switch (row.operands.at(static_cast<std::size_t>(place))) {
            case operand_rule::as_result:
                operands.push_back(w.input(name, result));
                break;
            case operand_rule::alike:
            case operand_rule::any_other:
                operands.push_back(w.input(name, alike));
                break;
            case operand_rule::known:
                operands.push_back(w.made.make_integer(5));
                break;
            case operand_rule::condition:
                operands.push_back(w.input(name, number_format::boolean));
                break;
            default:
                operands.push_back(w.input(name, number_format::integer));
                break;
        }
    }
    w.output("y", w.made.make(op, result, operands));
    return std::move(w.made);
}

TEST(select_components, has_a_component_for_every_operation_in_every_format) {
    constexpr number_format formats[] = {number_format::boolean, number_format::integer, number_format::single_float,
                                         number_format::double_float};
    int count = 0;
    for (int index = 0; index < operation_count; ++index) {
        const auto op = static_cast<operation>(index);
        const operation_row& row = row_of(op);
        if (row.arity() == 0) {
            continue;
        }
        const bool converts = op == operation::convert;
        const bool compares = row.operands[0] == operand_rule::alike;
        for (const number_format result : formats) {
            for (const number_format alike : formats) {
                const bool exists =
                    row.results.contains(result) && (converts   ? alike != result && alike != number_format::boolean
                                                     : compares ? row.alike_formats.contains(alike)
                                                                : alike == number_format::boolean);
                if (!exists) {
                    continue;
                }
                const graph source = graph_of(op, result, alike);
                ASSERT_EQ(faults_of(source), std::vector<std::string>{});
                const graph expanded = expand_operations(source);
                diagnostics messages;
                const auto made = select_components(
                    expanded, default_library_options(false), messages, [](std::string_view) -> component_model {
                        return [](const component_generics&, const component_operands&) { return bus_bits{0}; };
                    });
                ASSERT_TRUE(made.has_value()) << row.name;
                EXPECT_EQ(faults_of(*made, expanded), std::vector<std::string>{}) << row.name;
                ++count;
            }
        }
    }
    EXPECT_EQ(count, 82);
}

TEST(select_components, compares_with_the_opposite_relation_in_the_place_of_an_inversion) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id b = w.input("b", number_format::integer);
    const value_id less = w.make(operation::less, number_format::boolean, {a, b});
    w.output("y", w.make(operation::bit_not, number_format::boolean, {less}));
    const design made = selected(expand_operations(w.made));
    ASSERT_EQ(made.size(), 3U);
    EXPECT_EQ(made[2].component, component_id::cmpl);
    EXPECT_EQ(made[2].generics().relation, static_cast<std::int32_t>(relation_kind::greater_or_equal));
}

TEST(select_components, gives_one_comparison_to_all_that_ask_for_it_and_reads_its_operands_rounded) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const value_id sum = w.add(a, b);
    const value_id less = w.make(operation::less, number_format::boolean, {sum, b});
    const value_id y = w.make(operation::select, number_format::single_float, {less, sum, a});
    w.output("y", y);
    w.output("less", less);
    w.output("z", w.make(operation::select, number_format::single_float, {less, b, y}));
    const design made = selected(w.made);
    EXPECT_EQ(count_of(made, component_id::cmpf), 1U);
    EXPECT_EQ(count_of(made, component_id::castxtof), 1U);
    EXPECT_EQ(count_of(made, component_id::select), 2U);
    EXPECT_EQ(made.width_of(made.outputs[1]), 1);
}

TEST(select_components, refuses_what_the_library_lacks) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", w.add(a, w.input("b")));
    diagnostics messages;
    const auto lacking = [](std::string_view name) { return name == "xfc_alufp1x" ? nullptr : model_named(name); };
    EXPECT_FALSE(select_components(w.made, default_library_options(false), messages, lacking).has_value());
    EXPECT_EQ(rendered(messages, {}),
              "xfcflow: error: this needs the component 'xfc_alufp1x', which the library lacks [component-missing]\n"
              "      hint: docs/components.md lists what the library has\n");
}

TEST(design_verifier, finds_an_operand_in_a_wrong_coding_and_a_wrong_count) {
    const graph source = chain_of(3);
    design made = selected(source);
    const auto is_sum = [](const design_node& node) { return node.component == component_id::alufp1x; };
    std::find_if(made.nodes.begin(), made.nodes.end(), is_sum)->operands[0] = 0;  // the input itself, IEEE
    EXPECT_FALSE(faults_of(made, source).empty());
    made = selected(source);
    std::find_if(made.nodes.begin(), made.nodes.end(), is_sum)->summands = 1;
    EXPECT_FALSE(faults_of(made, source).empty());
}

/// A constant in adder form, as bits, is what the library's conversion makes of the same IEEE number.
TEST(encoded_constant, is_what_the_conversion_of_the_library_gives) {
    std::mt19937 random(1);
    for (const std::int32_t mantissa : {32, 36}) {
        component_generics generics;
        generics.mantissa = mantissa;
        for (int round = 0; round < 20000; ++round) {
            const auto bits = static_cast<std::uint32_t>(random());
            for (const conversion_row& row : {*conversion_for(coding::single_ieee, coding::x_adder),
                                              *conversion_for(coding::single_ieee, coding::x_multiplier),
                                              *conversion_for(coding::single_ieee, coding::x_divider)}) {
                generics.output_select = row.selector;
                const bus_layout layout = layout_of(row.to, mantissa);
                const bus_bits cast = model_named(row_of(row.component).name)(generics, {.aa = bits});
                const bus_bits here = encoded_constant(number_format::single_float, bits, row.to, mantissa);
                const bus_flags flags = flags_of(cast, layout);
                ASSERT_EQ(here >> static_cast<unsigned>(layout.value), cast >> static_cast<unsigned>(layout.value));
                if (!flags.sat && !flags.zip && !flags.nan) {
                    ASSERT_TRUE(here == cast) << std::hex << bits;
                }
                ASSERT_EQ(bit(here, layout.value - 1), bit(cast, layout.value - 1));  // the sign counts always
            }
        }
    }
}

TEST(encoded_constant, of_a_double_is_what_the_conversion_gives) {
    std::mt19937_64 random(2);
    component_generics generics;
    for (int round = 0; round < 20000; ++round) {
        const std::uint64_t bits = random();
        for (const coding to : {coding::y_adder, coding::y_multiplier}) {
            const conversion_row& row = *conversion_for(coding::double_ieee, to);
            generics.output_select = row.selector;
            const bus_bits cast = model_named(row_of(row.component).name)(generics, {.aa = bits});
            const bus_layout layout = layout_of(to, 32);
            const bus_flags flags = flags_of(cast, layout);
            const bus_bits here = encoded_constant(number_format::double_float, bits, to, 32);
            if (flags.sat || flags.zip || flags.nan) {
                ASSERT_EQ(here >> static_cast<unsigned>(layout.value), cast >> static_cast<unsigned>(layout.value));
            } else {
                ASSERT_TRUE(here == cast) << std::hex << bits;
            }
        }
    }
}

TEST(expand, writes_powers_as_products_by_squaring) {
    graph_writer w;
    const value_id x = w.input("x");
    w.output("y", w.make(operation::whole_power, number_format::single_float, {x, w.made.make_integer(5)}));
    EXPECT_EQ(dump(expand_operations(w.made)),
              "%0 = input single x\n"
              "%1 = multiply single %0 %0\n"
              "%2 = multiply single %1 %1\n"
              "%3 = multiply single %0 %2\n"
              "output single y = %3\n");
}

TEST(expand, leaves_no_negated_operand_in_a_sum) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    w.output("y", w.add(a, w.make(operation::negate, number_format::single_float, {b})));
    EXPECT_EQ(dump(expand_operations(w.made)),
              "%0 = input single a\n"
              "%1 = input single b\n"
              "%2 = subtract single %0 %1\n"
              "output single y = %2\n");
}

TEST(expand, inverts_bits_and_conditions_by_an_exclusive_or) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id c = w.input("c", number_format::boolean);
    w.output("y", w.make(operation::bit_not, number_format::integer, {a}));
    w.output("z", w.make(operation::bit_not, number_format::boolean, {c}));
    EXPECT_EQ(dump(expand_operations(w.made)),
              "%0 = input integer a\n"
              "%1 = input boolean c\n"
              "%2 = constant integer -1\n"
              "%3 = xor integer %0 %2\n"
              "%4 = constant boolean true\n"
              "%5 = xor boolean %1 %4\n"
              "output integer y = %3\n"
              "output boolean z = %5\n");
}

TEST(expand, leaves_no_inversion_in_front_of_a_selection_or_inside_a_conjunction) {
    graph_writer w;
    const value_id c = w.input("c", number_format::boolean);
    const value_id d = w.input("d", number_format::boolean);
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const value_id no = w.make(operation::bit_not, number_format::boolean, {c});
    w.output("x", w.make(operation::select, number_format::single_float, {no, a, b}));
    w.output("y", w.make(operation::bit_and, number_format::boolean, {no, d}));
    w.output("z", w.make(operation::bit_or, number_format::boolean, {d, no}));
    EXPECT_EQ(dump(expand_operations(w.made)),
              "%0 = input boolean c\n"
              "%1 = input boolean d\n"
              "%2 = input single a\n"
              "%3 = input single b\n"
              "%4 = constant boolean true\n"
              "%5 = select single %0 %3 %2\n"
              "%6 = constant boolean false\n"
              "%7 = select boolean %0 %6 %1\n"
              "%8 = select boolean %0 %1 %4\n"
              "output single x = %5\n"
              "output boolean y = %7\n"
              "output boolean z = %8\n");
}

// ---- Schedules ----

/// Random sums of singles.
graph random_sums(std::mt19937& random, int inputs, int sums) {
    graph_writer w;
    std::vector<value_id> all;
    for (int number = 0; number < inputs; ++number) {
        all.push_back(w.input("x" + std::to_string(number)));
    }
    for (int number = 0; number < sums; ++number) {
        const value_id a = all[random() % all.size()];
        const value_id b = all[random() % all.size()];
        all.push_back(random() % 2 == 0 ? w.add(a, b) : w.subtract(a, b));
    }
    w.output("y", all.back());
    w.output("z", all[random() % all.size()]);
    return without_unused(w.made);
}

/// The least register bits of all schedules, by trying every start.
std::int64_t least_bits(const design& made, schedule times, node_id id, std::int64_t best) {
    while (id < made.size() && made[id].kind != node_kind::instance) {
        ++id;
    }
    if (id == made.size()) {
        const auto delays = delays_of(made, times);
        std::int64_t bits = 0;
        for (node_id at = 0; at < made.size(); ++at) {
            bits += delays[at].empty() ? 0 : static_cast<std::int64_t>(made.width_of(at)) * delays[at].back();
        }
        for (const node_id output : made.outputs) {
            if (ready_time(made, times, output) > times.latency) {
                return best;
            }
        }
        return std::min(best, bits);
    }
    std::int32_t soonest = 0;
    for (const node_id operand : made[id].operand_span()) {
        soonest = std::max(soonest, ready_time(made, times, operand));
    }
    for (times.start[id] = soonest; times.start[id] + made[id].latency() <= times.latency; ++times.start[id]) {
        best = least_bits(made, times, id + 1, best);
    }
    return best;
}

TEST(schedule, has_the_least_register_bits_of_all_schedules) {
    std::mt19937 random(3);
    int saved = 0;
    for (int round = 0; round < 30; ++round) {
        const graph source = random_sums(random, 3, 2);
        const design made = selected(source);
        const schedule times = balanced_schedule(made);
        EXPECT_EQ(faults_of(times, made), none);
        EXPECT_EQ(times.register_bits, least_bits(made, times, 0, times.register_bits_soonest)) << dump(made, source);
        saved += times.register_bits < times.register_bits_soonest ? 1 : 0;
    }
    EXPECT_GT(saved, 0);
}

TEST(schedule, of_large_graphs_holds_what_it_promises) {
    std::mt19937 random(4);
    for (int round = 0; round < 20; ++round) {
        const graph source = random_sums(random, 8, 12);
        const design made = selected(source);
        EXPECT_EQ(faults_of(balanced_schedule(made), made), none);
    }
}

TEST(schedule_verifier, finds_a_late_operand) {
    const design made = selected(chain_of(4));
    schedule times = balanced_schedule(made);
    times.start.back() -= 1;
    EXPECT_FALSE(faults_of(times, made).empty());
}

TEST(schedule, delays_a_wire_by_one_cycle_so_that_startout_has_a_register) {
    graph_writer w;
    w.output("y", w.input("x"));
    const design made = selected(w.made);
    const schedule times = balanced_schedule(made);
    EXPECT_EQ(times.latency, 1);
    EXPECT_EQ(times.register_bits, 32);
}

}  // namespace
}  // namespace xfc::flow
