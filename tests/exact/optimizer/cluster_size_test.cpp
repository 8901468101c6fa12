#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

// How many operands are summed before a sum is renormalized, for every cluster size, and how the search ends.

namespace xfc::test {

namespace {

using slots = std::vector<std::int32_t>;

std::string repeated(std::string_view text, std::size_t count, std::string_view separator) {
    std::string all;
    for (std::size_t done = 0; done < count; ++done) {
        all.append(done == 0 ? std::string_view{} : separator).append(text);
    }
    return all;
}

/// A sum of that many operands in one statement; each sum reads the one before it, which stands in the slot below.
std::string sum(std::size_t operands, std::string_view operand = "a") { return repeated(operand, operands, " + "); }

void renormalize_program(const std::string& source, std::size_t cluster_size) {
    const run_result result =
        optimize_text(source, renormalize_complex_clusters, {"-xc", std::to_string(cluster_size)});
    ASSERT_EQ(result.status, 0) << result.standard_error;
    EXPECT_EQ(result.standard_output, "***MAKE EXPRESSIONS***\n");
}

void renormalize(const std::string& statements, std::size_t cluster_size) {
    renormalize_program("float a, b, c, t, u, v, y, z;\nmain()\n{\n" + statements + "\n}\n", cluster_size);
}

slots additions() {
    slots found;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (node_at(slot).name == "+" || node_at(slot).name == "-") {
            found.push_back(slot);
        }
    }
    return found;
}

/// Which additions, counted from 1 in slot order, are renormalized.
std::vector<std::size_t> renormalized() {
    std::vector<std::size_t> found;
    const slots all = additions();
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (attributes_at(all[index]).is_normalized != 0) {
            found.push_back(index + 1);
        }
    }
    return found;
}

std::size_t count_normalizers() {
    std::size_t count = 0;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        count += node_at(slot).name == "norm" ? 1U : 0U;
    }
    return count;
}

// ---- Chains in one statement ----

TEST(cluster_size, cuts_a_chain_at_every_multiple_of_one_less) {
    for (std::size_t size = 2; size <= 16; ++size) {
        for (const std::size_t operands : {2U, 3U, 4U, 7U, 15U, 16U, 17U, 31U, 45U}) {
            renormalize("y = " + sum(operands) + ";", size);
            const std::size_t adders = operands - 1;
            // The value behind a normalizer counts as one operand, so that each further cluster has size - 1 sums.
            std::vector<std::size_t> expected;
            for (std::size_t adder = size - 1; adder <= adders; adder += size - 1) {
                expected.push_back(adder);
            }
            EXPECT_EQ(renormalized(), expected) << size << " " << operands;
            // The last sum feeds the output's conversion, which takes no normalizer.
            const bool last = !expected.empty() && expected.back() == adders;
            EXPECT_EQ(count_normalizers(), expected.size() - (last ? 1 : 0)) << size << " " << operands;
        }
    }
}

TEST(cluster_size, of_2_normalizes_behind_every_sum) {
    renormalize("y = a + b + c;", 2);
    const slots adders = additions();
    ASSERT_EQ(adders.size(), 2U);
    EXPECT_EQ(renormalized(), (std::vector<std::size_t>{1, 2}));
    ASSERT_EQ(count_normalizers(), 1U);
    const std::int32_t normalizer = slot_named("norm");
    EXPECT_EQ(driver(normalizer), adders[0]);
    EXPECT_EQ(consumers(normalizer), slots{adders[1]});
    EXPECT_EQ(driver(adders[1], 0), normalizer);
    EXPECT_EQ(attributes_at(normalizer).is_normalized, 1);
    EXPECT_EQ(attributes_at(normalizer).format, number_format::xfloat);
}

TEST(cluster_size, of_16_renormalizes_a_sum_of_16_operands_once_and_one_of_15_never) {
    for (const std::vector<std::string>& switches : {std::vector<std::string>{}, {"-xc", "16"}}) {
        ASSERT_EQ(optimize_text("float a, y; main() { y = " + sum(15) + "; }\n", renormalize_complex_clusters, switches)
                      .status,
                  0);
        EXPECT_TRUE(renormalized().empty());
        ASSERT_EQ(optimize_text("float a, y; main() { y = " + sum(16) + "; }\n", renormalize_complex_clusters, switches)
                      .status,
                  0);
        EXPECT_EQ(renormalized(), std::vector<std::size_t>{15});
        EXPECT_EQ(count_normalizers(), 0U);
    }
}

TEST(cluster_size, counts_a_constant_like_a_variable) {
    renormalize("y = a + 2 + b + 0.5 + 3;", 4);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{3});
    renormalize("y = 2 + a - 2 - 0.5;", 4);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{3});
}

TEST(cluster_size, counts_all_operands_of_sums_of_sums) {
    renormalize("y = (a + b) + (b + c);", 4);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{3});
    renormalize("y = (a + b) + (b + c);", 5);
    EXPECT_TRUE(renormalized().empty());
    renormalize("y = (a - b) - (b - c);", 2);
    EXPECT_EQ(renormalized(), (std::vector<std::size_t>{1, 2, 3}));
    EXPECT_EQ(count_normalizers(), 2U);
}

TEST(cluster_size, may_be_passed_by_a_sum_of_large_sums) {
    // 3 + 3 operands at once: the last sum alone reaches the limit of 4.
    renormalize("y = (a + b + c) + (c + b + a);", 4);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{5});
}

TEST(cluster_size, counts_what_is_no_sum_as_one_operand) {
    renormalize("y = sqrt(a + b + c) + (a + b) * c + (b + c) / a;", 4);
    EXPECT_TRUE(renormalized().empty());
    renormalize("y = sqrt(a + b + c) + (a + b) * c + (b + c) / a;", 3);
    // The root's argument and the outer sum have three operands each.
    EXPECT_EQ(renormalized().size(), 2U);
    EXPECT_EQ(count_normalizers(), 0U);
}

TEST(cluster_size, counts_a_doubled_operand_twice) {
    renormalize("t = a + b; y = t + t;", 4);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{2});
    renormalize("t = a + b; y = t + t;", 5);
    EXPECT_TRUE(renormalized().empty());
}

TEST(cluster_size, applies_to_double_precision) {
    renormalize_program("double a, y; main() { y = " + sum(9) + "; }\n", 5);
    EXPECT_EQ(renormalized(), (std::vector<std::size_t>{4, 8}));
    EXPECT_EQ(count_normalizers(), 1U);
    EXPECT_EQ(attributes_at(slot_named("norm")).format, number_format::ydouble);
}

TEST(cluster_size, applies_to_integer_sums_like_to_any_other) {
    renormalize_program("long a, y; main() { y = " + sum(7) + "; }\n", 3);
    EXPECT_EQ(renormalized(), (std::vector<std::size_t>{2, 4, 6}));
    ASSERT_EQ(count_normalizers(), 2U);
    EXPECT_EQ(attributes_at(slot_named("norm")).format, number_format::long_integer);
}

TEST(cluster_size, gives_an_integer_normalizer_no_component) {
    const run_result result =
        compile({.source = "long a, y; main() { y = " + sum(7) + "; }\n", .switches = {"-xc", "3"}});
    EXPECT_EQ(result.status, 0) << result.standard_error;
    EXPECT_EQ(result.files.at("prog.vhd").find("xfc_norm"), std::string::npos);
    EXPECT_EQ(component_name(slot_named("norm")), "");
    EXPECT_EQ(node_at(slot_named("norm")).outputs[0].width, 32);
    EXPECT_EQ(attributes_at(slot_named("norm")).latency, 0);
}

// ---- Chains through variables ----

/// Statements t1 = a + a; t2 = t1 + a; ... whose variables are declared in that order, in front of all sums.
std::string variable_chain(std::size_t sums) {
    std::string names = "a";
    std::string statements;
    for (std::size_t index = 1; index <= sums; ++index) {
        const std::string target = "t" + std::to_string(index);
        names += ", " + target;
        statements += target + " = " + (index == 1 ? "a" : "t" + std::to_string(index - 1)) + " + a;\n";
    }
    return "float " + names + ", y, z;\nmain()\n{\n" + statements + "y = t" + std::to_string(sums) + ";\n";
}

TEST(cluster_size, counts_through_passing_variables) {
    for (std::size_t size = 2; size <= 16; ++size) {
        renormalize_program(variable_chain(12) + "}\n", size);
        // A scan sees the variables before the sums, so that depths climb by one a scan, in step with the sums.
        std::vector<std::size_t> expected;
        for (std::size_t adder = size - 1; adder <= 12; adder += size - 1) {
            expected.push_back(adder);
        }
        EXPECT_EQ(renormalized(), expected) << size;
        // Every renormalized sum feeds a passing variable, the last one too.
        EXPECT_EQ(count_normalizers(), expected.size()) << size;
    }
}

TEST(cluster_size, starts_anew_behind_a_variable_with_a_constant) {
    // The constant that t got later hides the sum behind it from the count.
    renormalize("t = a + b + c; t = 2.5; y = t + a;", 4);
    EXPECT_TRUE(renormalized().empty());
    renormalize("t = a + b + c; y = t + a;", 4);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{3});
}

// ---- How the search ends ----

TEST(cluster_search, stops_when_a_scan_raises_less_than_the_one_before) {
    // On its own the chain of variables takes ten scans to reach depth 11 ...
    renormalize_program(variable_chain(12) + "}\n", 11);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{10});
    // ... but beside a sum of ten operands, which the first scan raises to 10, the second scan raises to 3 only.
    renormalize_program(variable_chain(12) + "z = " + sum(10) + ";\n}\n", 11);
    EXPECT_TRUE(renormalized().empty());
    EXPECT_EQ(count_normalizers(), 0U);
}

TEST(cluster_search, leaves_the_depths_of_its_last_scan) {
    renormalize_program(variable_chain(12) + "z = " + sum(10) + ";\n}\n", 11);
    // Two scans: the second sum and all behind it have reached depth 3, the first one depth 2.
    const slots adders = additions();
    EXPECT_EQ(attributes_at(adders[0]).cluster_depth, 2);
    EXPECT_EQ(attributes_at(adders[1]).cluster_depth, 3);
    EXPECT_EQ(attributes_at(adders[11]).cluster_depth, 3);
    EXPECT_EQ(attributes_at(adders[20]).cluster_depth, 10);
}

TEST(cluster_search, goes_on_while_scans_raise_to_the_same_depth) {
    // The first scan raises the sum of three operands to 3, the second the chain's sums to 3, the third to 4.
    renormalize_program(variable_chain(4) + "z = " + sum(3) + ";\n}\n", 5);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{4});
    // With a sum of four operands the second scan raises less than the first.
    renormalize_program(variable_chain(4) + "z = " + sum(4) + ";\n}\n", 5);
    EXPECT_TRUE(renormalized().empty());
}

TEST(cluster_search, starts_anew_behind_every_renormalization) {
    // The sum of eleven operands is cut first; only the scans behind that see the chain and the shortened sum alone,
    // whose first scan raises to 10 again.
    renormalize_program(variable_chain(12) + "z = " + sum(11) + ";\n}\n", 11);
    EXPECT_EQ(renormalized(), std::vector<std::size_t>{22});
}

TEST(cluster_search, renormalizes_one_node_a_scan_and_ends_after_a_hundred) {
    // Three sums of 45 operands: 132 sums that all reach depth 2 in every scan.
    renormalize("y = " + sum(45) + "; z = " + sum(45) + "; u = " + sum(45) + ";", 2);
    ASSERT_EQ(additions().size(), 132U);
    std::vector<std::size_t> expected;
    for (std::size_t adder = 1; adder <= 100; ++adder) {
        expected.push_back(adder);
    }
    EXPECT_EQ(renormalized(), expected);
    // The last sums of the first two statements, the 44th and the 88th, feed conversions.
    EXPECT_EQ(count_normalizers(), 98U);
}

TEST(cluster_search, counts_scans_that_renormalize_nothing) {
    // Depth 3 takes two scans in a chain of variables: sum 2 in scan 2, sum 4 in scan 4, ... sum 100 in scan 100.
    renormalize_program(variable_chain(120) + "}\n", 3);
    const std::vector<std::size_t> found = renormalized();
    ASSERT_EQ(found.size(), 50U);
    EXPECT_EQ(found.front(), 2U);
    EXPECT_EQ(found.back(), 100U);
}

TEST(cluster_search, of_a_program_without_sums_changes_nothing) {
    renormalize("y = a * b; z = sqrt(a);", 2);
    EXPECT_EQ(count_normalizers(), 0U);
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        EXPECT_EQ(attributes_at(slot).cluster_depth, 1);
    }
}

TEST(cluster_search, of_an_empty_graph_does_nothing) {
    start_graph();
    renormalize_complex_clusters();
    insert_normalizations();
    EXPECT_EQ(dfg_used_slots(), 0);
}

}  // namespace

}  // namespace xfc::test
