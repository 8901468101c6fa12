#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>

#include "contract.h"
#include "entity_text.h"
#include "exact_value.h"
#include "folders.h"
#include "generic_sets.h"
#include "model/model_list.h"
#include "vectors.h"

namespace xfc::proof {
namespace {

const contract& contract_of(component_id id) {
    for (const contract_row& each : contracts()) {
        if (each.name == row_of(id).name) {
            return *each.promised;
        }
    }
    throw std::runtime_error("no contract");
}

TEST(library, every_row_has_a_folder_and_every_folder_a_row_a_model_and_a_contract) {
    for (const std::string& failure : folder_failures(XFC_LIBRARY, XFC_AWAITED)) {
        ADD_FAILURE() << failure;
    }
    const std::set<std::string> folders = component_folders(XFC_LIBRARY);
    std::set<std::string> promised;
    for (const contract_row& each : contracts()) {
        promised.emplace(each.name);
    }
    EXPECT_EQ(promised, folders);
    for (const std::string& name : folders) {
        EXPECT_NE(model_named(name), nullptr) << name;
    }
    EXPECT_EQ(component_models().size(), folders.size());
}

TEST(library, a_folder_without_a_row_and_a_row_without_a_folder_are_told) {
    const std::filesystem::path place = std::filesystem::path(testing::TempDir()) / "folders_of_a_library";
    std::filesystem::remove_all(place);
    for (const component_row& row : all_components()) {
        std::filesystem::create_directories(place / "library" / row.name);
    }
    std::filesystem::create_directories(place / "library" / "common");
    const auto failures = [&](const std::string& awaited) {
        std::ofstream(place / "awaited") << awaited;
        return folder_failures(place / "library", place / "awaited");
    };
    using messages = std::vector<std::string>;
    EXPECT_EQ(failures("# nothing\n"), messages{});
    EXPECT_EQ(failures("xfc_delay\n"), messages{"xfc_delay: has its folder, and is awaited no longer"});
    EXPECT_EQ(failures("xfc_wire\n"), messages{"xfc_wire: is awaited, but has no row in the component table"});
    std::filesystem::rename(place / "library" / "xfc_delay", place / "library" / "xfc_queue");
    EXPECT_EQ(failures(""), (messages{"xfc_delay: has a row in the component table but no folder",
                                      "xfc_queue: no row of the component table has this name"}));
    EXPECT_EQ(failures("xfc_delay\n"), messages{"xfc_queue: no row of the component table has this name"});
}

TEST(library, all_combinations_of_generics_are_tried) {
    EXPECT_EQ(generic_sets(row_of(component_id::alufp1x)).size(), 8U);
    EXPECT_EQ(generic_sets(row_of(component_id::castftox)).size(), 24U);
    // Four outputs of which one is chosen.
    EXPECT_EQ(generic_sets(row_of(component_id::mulfp1x)).size(), 32U);
}

/// Every two values that two different generics have together in some of the sets, and every latency.
std::set<std::string> shown_by(const component_row& row, const std::vector<component_generics>& sets) {
    std::set<std::string> shown;
    for (const component_generics& set : sets) {
        shown.insert("latency " + std::to_string(row.latency(set)));
        for (const generic_row& one : row.generics) {
            for (const generic_row& other : row.generics) {
                if (one.field != other.field) {
                    shown.insert(std::string(one.name) + std::to_string(set.*one.field) + " " +
                                 std::string(other.name) + std::to_string(set.*other.field));
                }
            }
        }
    }
    return shown;
}

TEST(library, chosen_sets_of_generics_show_every_pair_of_values_and_every_latency) {
    for (const component_row& row : all_components()) {
        const auto all = generic_sets(row);
        const auto chosen = covering_sets(row);
        EXPECT_EQ(shown_by(row, chosen), shown_by(row, all)) << row.name;
        std::set<std::string> texts;
        for (const component_generics& set : chosen) {
            texts.insert(text_of(row, set));
        }
        EXPECT_EQ(texts.size(), chosen.size()) << row.name;
        if (all.size() <= most_sets && stages_of(row, all) <= most_stages) {
            EXPECT_EQ(chosen.size(), all.size()) << row.name;
        }
    }
    const component_row& multiplier = row_of(component_id::mulfp2x);
    EXPECT_EQ(generic_sets(multiplier).size(), 576U);
    EXPECT_LE(covering_sets(multiplier).size(), most_sets);
    // Few sets, but each with a long pipeline of wide products.
    EXPECT_LE(covering_sets(row_of(component_id::dp_log)).size(), 12U);
}

TEST(library, a_head_that_differs_from_its_row_is_refused) {
    const component_row& row = row_of(component_id::castxtof);
    const std::string_view text =
        "module xfc_castxtof #(parameter mantissa = 32, normspeed = 2) (input sysclk, reset, enable, "
        "input [mantissa+10:1] aa, input aasat, aazip, aanan, output [32:1] cc);";
    EXPECT_EQ(difference_of(read_verilog_head(text, row.name), head_of(row)), "");
    std::string swapped(text);
    swapped.replace(swapped.find("aasat, aazip"), 12, "aazip, aasat");
    EXPECT_EQ(difference_of(read_verilog_head(swapped, row.name), head_of(row)),
              "port 5 is input aazip, the row says input aasat");
    std::string turned(text);
    turned.replace(turned.find("output"), 6, "input");
    EXPECT_EQ(difference_of(read_verilog_head(turned, row.name), head_of(row)),
              "port 8 is input cc, the row says output cc");
}

TEST(library, a_selection_reads_its_condition_in_front_of_its_buses_and_a_relation_is_one_bit) {
    const std::vector<entity_port> selection{{"sysclk", false},    {"reset", false}, {"enable", false},
                                             {"condition", false}, {"aa", false},    {"bb", false},
                                             {"cc", true}};
    EXPECT_EQ(head_of(row_of(component_id::select)).ports, selection);
    EXPECT_EQ(bus_width(row_of(component_id::cmpf).cc, {}), 1);
    const std::vector<port_connection> ports = ports_of(row_of(component_id::cmpf).cc, {}, "cc");
    ASSERT_EQ(ports.size(), 1U);
    EXPECT_TRUE(ports.front().single_bit);
}

TEST(library, a_contract_refuses_the_other_truth_value) {
    for (const component_id id : {component_id::cmpf, component_id::cmpd, component_id::cmpl, component_id::logic}) {
        const component_row& row = row_of(id);
        for (const component_generics& generics : generic_sets(row)) {
            for (const component_operands& operands : make_vectors(row, contract_of(id), generics, 100, 1)) {
                const bus_bits result = model_named(row.name)(generics, operands);
                EXPECT_TRUE(contract_of(id).check(generics, operands, result).met) << text_of(row, generics);
                EXPECT_FALSE(contract_of(id).check(generics, operands, result ^ 1).met) << text_of(row, generics);
            }
        }
    }
}

TEST(library, operands_of_relations_are_often_equal_or_neighbours) {
    const component_row& row = row_of(component_id::cmpd);
    std::size_t equal = 0;
    for (const component_operands& operands : make_vectors(row, contract_of(row.id), {}, 3000, 1)) {
        equal += operands.aa == operands.bb ? 1U : 0U;
    }
    EXPECT_GT(equal, 150U);
    EXPECT_LT(equal, 750U);
}

TEST(library, a_contract_refuses_a_result_that_is_one_unit_off) {
    const component_id ids[] = {
        component_id::alufp1x,  component_id::castftox, component_id::castxtof, component_id::alufp2x,
        component_id::castdtoy, component_id::castytod, component_id::castftoy, component_id::castxtoy,
        component_id::castytof, component_id::castftod, component_id::castdtof, component_id::castdtox,
        component_id::castxtod, component_id::castltof, component_id::castltod, component_id::castltoy,
        component_id::normfp2x, component_id::divfp1x,  component_id::mulfp2x,  component_id::divfp2x,
        component_id::fp_sqr,   component_id::fp_inv,   component_id::dp_sqr,   component_id::roundf,
        component_id::roundd,   component_id::extremef, component_id::extremed, component_id::copysignf,
        component_id::copysignd};
    for (const component_id id : ids) {
        const component_row& row = row_of(id);
        const component_generics generics{};
        const component_model model = model_named(row.name);
        std::size_t refused = 0;
        const auto vectors = make_vectors(row, contract_of(id), generics, 1000, 1);
        for (const component_operands& operands : vectors) {
            const bus_layout layout = layout_of(form_of(row.cc, generics), generics.mantissa);
            const bus_bits unit = bus_bits{1} << static_cast<unsigned>(layout.mantissa.low - 1);
            refused += contract_of(id).check(generics, operands, model(generics, operands) ^ unit).met ? 0U : 1U;
        }
        EXPECT_GT(refused, 300U) << row.name;
    }
}

/// a + b as C in float gives it, with subnormal operands and results as zeros.
float sum_without_subnormals(float a, float b) {
    const auto flushed = [](float value) { return std::fpclassify(value) == FP_SUBNORMAL ? value * 0.0F : value; };
    return flushed(flushed(a) + flushed(b));
}

TEST(library, a_sum_of_two_singles_converted_back_is_correctly_rounded) {
    random_source random(7);
    for (const std::int32_t mantissa : {32, 36}) {
        component_generics generics{};
        generics.mantissa = mantissa;
        const auto run = [&](const char* name, const component_operands& operands) {
            return model_named(name)(generics, operands);
        };
        const auto singles = make_vectors(row_of(component_id::castftox), contract_of(component_id::castftox), generics,
                                          200000, static_cast<std::uint64_t>(mantissa));
        for (std::size_t i = 1; i < singles.size(); ++i) {
            const auto a = std::bit_cast<float>(static_cast<std::uint32_t>(singles[i - 1].aa));
            const auto b = std::bit_cast<float>(static_cast<std::uint32_t>(singles[i].aa));
            const bool subtract = random() % 2 == 0;
            const component_operands sum{.aa = run("xfc_castftox", {.aa = singles[i - 1].aa}),
                                         .bb = run("xfc_castftox", {.aa = singles[i].aa}),
                                         .addsub = subtract};
            const auto found = static_cast<std::uint32_t>(run("xfc_castxtof", {.aa = run("xfc_alufp1x", sum)}));
            const float wanted = sum_without_subnormals(a, subtract ? -b : b);
            if (std::isnan(wanted)) {
                ASSERT_EQ(found, 0x7FC00000U) << a << ' ' << b;
            } else {
                ASSERT_EQ(found, std::bit_cast<std::uint32_t>(wanted)) << a << ' ' << b << ' ' << subtract;
            }
        }
    }
}

/// a + b as C in double gives it, with subnormal operands and results as zeros.
double sum_without_subnormals(double a, double b) {
    const auto flushed = [](double value) { return std::fpclassify(value) == FP_SUBNORMAL ? value * 0.0 : value; };
    return flushed(flushed(a) + flushed(b));
}

TEST(library, a_sum_of_two_doubles_converted_back_is_correctly_rounded) {
    random_source random(8);
    component_generics generics{};
    generics.output_select = 1;
    const auto run = [&](const char* name, const component_operands& operands) {
        return model_named(name)(generics, operands);
    };
    const auto doubles =
        make_vectors(row_of(component_id::castdtoy), contract_of(component_id::castdtoy), generics, 200000, 9);
    for (std::size_t i = 1; i < doubles.size(); ++i) {
        const auto a = std::bit_cast<double>(static_cast<std::uint64_t>(doubles[i - 1].aa));
        const auto b = std::bit_cast<double>(static_cast<std::uint64_t>(doubles[i].aa));
        const bool subtract = random() % 2 == 0;
        const component_operands sum{.aa = run("xfc_castdtoy", {.aa = doubles[i - 1].aa}),
                                     .bb = run("xfc_castdtoy", {.aa = doubles[i].aa}),
                                     .addsub = subtract};
        const auto found = static_cast<std::uint64_t>(run("xfc_castytod", {.aa = run("xfc_alufp2x", sum)}));
        const double wanted = sum_without_subnormals(a, subtract ? -b : b);
        if (std::isnan(wanted)) {
            ASSERT_EQ(found, 0x7FF8000000000000U) << a << ' ' << b;
        } else {
            ASSERT_EQ(found, std::bit_cast<std::uint64_t>(wanted)) << a << ' ' << b << ' ' << subtract;
        }
    }
}

/// Products or quotients of two doubles through the component and as the host has them, subnormal numbers as zeros.
void compare_with_host(const char* component, double (*host)(double, double)) {
    component_generics generics{};
    generics.roundconvert = 1;
    const auto run = [&](const char* name, const component_operands& operands) {
        return model_named(name)(generics, operands);
    };
    const auto flushed = [](double value) { return std::fpclassify(value) == FP_SUBNORMAL ? value * 0.0 : value; };
    const auto doubles =
        make_vectors(row_of(component_id::castdtoy), contract_of(component_id::castdtoy), generics, 200000, 10);
    for (std::size_t i = 1; i < doubles.size(); ++i) {
        const auto a = std::bit_cast<double>(static_cast<std::uint64_t>(doubles[i - 1].aa));
        const auto b = std::bit_cast<double>(static_cast<std::uint64_t>(doubles[i].aa));
        const auto found =
            static_cast<std::uint64_t>(run(component, {.aa = run("xfc_castdtoy", {.aa = doubles[i - 1].aa}),
                                                       .bb = run("xfc_castdtoy", {.aa = doubles[i].aa})}));
        const double wanted = flushed(host(flushed(a), flushed(b)));
        if (std::isnan(wanted)) {
            ASSERT_EQ(found, 0x7FF8000000000000U) << a << ' ' << b;
        } else if (std::fabs(wanted) == std::numeric_limits<double>::min()) {
            // The host rounds to it what is nearer to it than to the next subnormal number, here that is still zero.
            ASSERT_TRUE(found == std::bit_cast<std::uint64_t>(wanted) || found << 1U == 0) << a << ' ' << b;
        } else {
            ASSERT_EQ(found, std::bit_cast<std::uint64_t>(wanted)) << a << ' ' << b;
        }
    }
}

TEST(library, a_product_of_two_doubles_is_the_hosts_own) {
    compare_with_host("xfc_mulfp2x", [](double a, double b) { return a * b; });
}

TEST(library, a_quotient_of_two_doubles_is_the_hosts_own) {
    compare_with_host("xfc_divfp2x", [](double a, double b) { return a / b; });
}

// A quotient's digits are found from the divisor's leading eight bits: the ends of all 256 segments go farthest from 1.
TEST(library, quotients_at_the_ends_of_the_divisors_segments_are_the_hosts_own) {
    random_source random(12);
    component_generics generics{};
    generics.roundconvert = 1;
    for (std::uint64_t divisor_end = 0; divisor_end < 65536; ++divisor_end) {
        const std::uint64_t segment = (divisor_end & 255U) << 44U;
        const std::uint64_t beside = random() & 15U;
        const auto divisor =
            static_cast<std::uint64_t>(segment | ((divisor_end & 256U) != 0 ? beside : low_ones(44) - beside));
        const auto dividend =
            static_cast<std::uint64_t>((divisor_end & 512U) != 0 ? slice(random(), 51, 0) : divisor ^ (random() & 15U));
        const auto a = std::bit_cast<double>((std::uint64_t{1023} << 52U) | dividend);
        const auto b = std::bit_cast<double>((std::uint64_t{1023} << 52U) | divisor);
        const auto in_form = [&](double number) {
            return model_named("xfc_castdtoy")(generics, {.aa = std::bit_cast<std::uint64_t>(number)});
        };
        const bus_bits found = model_named("xfc_divfp2x")(generics, {.aa = in_form(a), .bb = in_form(b)});
        ASSERT_EQ(static_cast<std::uint64_t>(found), std::bit_cast<std::uint64_t>(a / b)) << a << ' ' << b;
    }
}

// The square of a number halfway between two doubles, and what stands next to it, has its root closest to halfway.
TEST(library, a_double_root_next_to_halfway_is_the_hosts_own) {
    random_source random(11);
    for (std::size_t i = 0; i < 100000; ++i) {
        const bus_bits halfway = (bus_bits{1} << 53U) | (slice(random(), 52, 1) << 1U) | 1;
        const std::int32_t places = 53 + (random() % 2 == 0 ? 1 : 0);
        const auto near = static_cast<double>((halfway * halfway) >> static_cast<unsigned>(places));
        const double operand = std::ldexp(random() % 2 == 0 ? near : std::nextafter(near, 0.0),
                                          static_cast<std::int32_t>(random() % 1900) - 1000);
        const bus_bits root = model_named("dp_sqr")({}, {.aa = std::bit_cast<std::uint64_t>(operand)});
        ASSERT_EQ(static_cast<std::uint64_t>(root), std::bit_cast<std::uint64_t>(std::sqrt(operand))) << operand;
    }
}

}  // namespace
}  // namespace xfc::proof
