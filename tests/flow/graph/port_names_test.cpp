#include "flow/graph/port_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace xfc::flow::test {

namespace {

using names = std::vector<std::string>;

TEST(flow_port_names, legal_names_stay) {
    EXPECT_EQ(legal_names(names{"x_0", "Gain", "y2"}, "fir"), (names{"x_0", "Gain", "y2"}));
}

TEST(flow_port_names, words_of_either_language_and_of_the_design_are_changed) {
    EXPECT_EQ(legal_names(names{"in", "Signal", "wire", "enable", "xfc_mul", "fir"}, "fir"),
              (names{"c_in", "c_Signal", "c_wire", "c_enable", "c_xfc_mul", "fir_2"}));
}

TEST(flow_port_names, labels_of_every_design_and_words_of_single_tools_are_changed) {
    EXPECT_EQ(legal_names(names{"Follow_Start", "inherit", "vunit", "wreal", "wone"}, "f"),
              (names{"c_Follow_Start", "c_inherit", "c_vunit", "c_wreal", "c_wone"}));
}

TEST(flow_port_names, underscores_stand_only_between_letters) {
    EXPECT_EQ(legal_names(names{"_a", "b__c", "d_", "_", "_1"}, "f"), (names{"a", "b_c", "d", "v", "v1"}));
}

TEST(flow_port_names, names_that_differ_in_case_only_are_told_apart) {
    EXPECT_EQ(legal_names(names{"gain", "GAIN", "Gain"}, "f"), (names{"gain", "GAIN_2", "Gain_3"}));
    EXPECT_EQ(legal_names(names{"_x", "x"}, "f"), (names{"x_2", "x"}));
}

}  // namespace

}  // namespace xfc::flow::test
