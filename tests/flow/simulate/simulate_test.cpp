#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

#include "flow/passes/expand.h"
#include "flow/passes/options.h"
#include "flow/passes/select_components.h"
#include "flow/simulate/accuracy.h"
#include "flow/simulate/design_model.h"
#include "flow/simulate/reference.h"
#include "flow/simulate/stimulus.h"
#include "flow/support/graphs.h"

namespace xfc::flow {
namespace {

using test::graph_writer;

std::uint64_t bits_of_single(float number) { return std::bit_cast<std::uint32_t>(number); }

TEST(design_model, of_a_single_sum_is_correctly_rounded) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", w.add(a, w.input("b")));
    diagnostics messages;
    for (const bool low_latency : {false, true}) {
        const auto made = select_components(w.made, default_library_options(low_latency), messages);
        ASSERT_TRUE(made.has_value());
        design_model model(*made);
        const stimulus applied = make_stimulus(w.made, 20000, 7, 1);
        for (const auto& inputs : applied.vectors) {
            const auto got = std::bit_cast<float>(static_cast<std::uint32_t>(model.outputs_for(inputs)[0]));
            const float wanted = std::bit_cast<float>(static_cast<std::uint32_t>(c_outputs(w.made, inputs)[0]));
            if (std::isnan(wanted)) {
                EXPECT_TRUE(std::isnan(got));
            } else if (std::fpclassify(wanted) == FP_SUBNORMAL) {
                EXPECT_EQ(got, 0.0F);
            } else {
                EXPECT_EQ(got, wanted) << inputs[0] << " " << inputs[1];
            }
        }
    }
}

TEST(reference, measures_in_units_of_the_last_place) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", w.add(a, w.input("b")));
    exact_reference exact(w.made);
    exact.run(std::array{bits_of_single(1.0F), bits_of_single(0.5F)});
    EXPECT_EQ(exact.deviation_of(0, bits_of_single(1.5F)).ulp, 0.0);
    EXPECT_EQ(exact.deviation_of(0, bits_of_single(std::nextafter(1.5F, 2.0F))).ulp, 1.0);
    EXPECT_TRUE(exact.deviation_of(0, bits_of_single(INFINITY)).class_differs);
    EXPECT_TRUE(exact.deviation_of(0, bits_of_single(NAN)).class_differs);
    exact.run(std::array{bits_of_single(1.0F), bits_of_single(0x1p-30F)});
    EXPECT_EQ(exact.deviation_of(0, bits_of_single(1.0F)).ulp, 0x1p-7);
}

TEST(reference, takes_zero_for_what_is_too_small_and_infinity_for_what_is_too_large) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", w.multiply(a, w.input("b")));
    exact_reference exact(w.made);
    exact.run(std::array{bits_of_single(0x1p-100F), bits_of_single(0x1p-40F)});
    EXPECT_EQ(exact.deviation_of(0, bits_of_single(0.0F)).ulp, 0.0);
    exact.run(std::array{bits_of_single(0x1p100F), bits_of_single(0x1p40F)});
    EXPECT_FALSE(exact.deviation_of(0, bits_of_single(INFINITY)).class_differs);
    EXPECT_TRUE(exact.deviation_of(0, bits_of_single(-INFINITY)).class_differs);
    EXPECT_TRUE(exact.deviation_of(0, bits_of_single(1.0F)).class_differs);
}

/// What a bench would write of hardware that is right.
class perfect_bench {
public:
    explicit perfect_bench(int latency) : latency_(latency) {
        const value_id a = w.input("a", number_format::integer);
        w.output("y", a);
        applied = make_stimulus(w.made, 50, 5, latency);
        for (const auto& vector : applied.vectors) {
            expected.push_back({vector[0]});
        }
    }
    std::string seen() const {
        std::vector<std::string> data(static_cast<std::size_t>(latency_), std::string(32, 'U'));
        std::vector<char> starts(static_cast<std::size_t>(latency_), '0');
        std::string text;
        for (const stimulus_cycle& cycle : applied.cycles) {
            if (cycle.reset) {
                std::fill(starts.begin(), starts.end(), '0');
            }
            text += starts.back() + data.back() + "\n";
            if (cycle.enable) {
                data.pop_back();
                starts.pop_back();
                std::string bits;
                for (int place = 31; place >= 0; --place) {
                    bits += ((applied.vectors[cycle.vector][0] >> static_cast<unsigned>(place)) & 1U) != 0 ? '1' : '0';
                }
                data.insert(data.begin(), bits);
                starts.insert(starts.begin(), cycle.startin ? '1' : '0');
            }
        }
        return text;
    }
    std::string difference(const std::string& what) const {
        return difference_of(applied, expected, w.made, latency_, what);
    }

    graph_writer w;
    stimulus applied;
    std::vector<std::vector<std::uint64_t>> expected;

private:
    int latency_;
};

TEST(difference, is_none_for_hardware_that_is_right) {
    for (const int latency : {1, 2, 17}) {
        const perfect_bench bench(latency);
        EXPECT_EQ(bench.difference(bench.seen()), "");
    }
}

TEST(difference, finds_every_single_wrong_bit_behind_the_latency) {
    const perfect_bench bench(3);
    const std::string right = bench.seen();
    constexpr std::size_t line = 34;  // startout, 32 bits, end
    for (std::size_t at = 6 * line; at < right.size(); at += 7) {
        if (right[at] == '\n') {
            continue;
        }
        std::string wrong = right;
        wrong[at] = right[at] == '1' ? '0' : '1';
        EXPECT_NE(bench.difference(wrong), "") << at;
    }
}

TEST(difference, finds_a_late_output_an_unknown_bit_and_a_short_run) {
    const perfect_bench bench(3);
    const std::string right = bench.seen();
    EXPECT_NE(bench.difference(perfect_bench(4).seen()), "");
    std::string unknown = right;
    unknown[20 * 34 + 5] = 'X';
    EXPECT_NE(bench.difference(unknown), "");
    EXPECT_NE(bench.difference(right.substr(0, right.size() / 2)), "");
    EXPECT_NE(bench.difference(""), "");
}

TEST(stimulus, is_the_same_for_the_same_seed_and_has_pauses_and_gaps) {
    graph_writer w;
    w.output("y", w.input("a"));
    const stimulus one = make_stimulus(w.made, 100, 9, 5);
    EXPECT_EQ(one.vectors, make_stimulus(w.made, 100, 9, 5).vectors);
    EXPECT_NE(one.vectors, make_stimulus(w.made, 100, 10, 5).vectors);
    int pauses = 0;
    int gaps = 0;
    for (const stimulus_cycle& cycle : one.cycles) {
        pauses += !cycle.enable && !cycle.reset ? 1 : 0;
        gaps += cycle.enable && !cycle.startin ? 1 : 0;
    }
    EXPECT_GT(pauses, 10);
    EXPECT_GT(gaps, 20);
}

}  // namespace
}  // namespace xfc::flow
