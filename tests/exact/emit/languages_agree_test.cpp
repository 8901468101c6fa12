#include <gtest/gtest.h>

#include <string>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/emit/expected_instances.h"
#include "exact/properties/design_reader.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// Two instances of every component, the second with constants where it takes them.
void build_every_component() {
    start_operands();
    use_distinct_options();
    for (const expected_instance& row : expected_instances()) {
        const std::int32_t select = row.selectors.size() > 2 ? 2 : 0;
        const std::int32_t width = result_width(row, {.selector = select, .options_changed = true});
        attributes_at(add_instance(row.name, "-", 2, width, select)).latency = 6;
        const std::int32_t of_constant = add_instance(row.name, "+", 2, width, select);
        if (row.constants == constants_as::operands || row.bb == bus::word) {
            make_constant(of_constant, 0, -2.5);
        }
    }
}

/// Instances in a design that was read.
std::size_t instances_in(const std::string& design) {
    std::size_t count = 0;
    for (std::size_t at = design.find("instance "); at != std::string::npos; at = design.find("instance ", at + 1)) {
        ++count;
    }
    return count;
}

TEST(languages_agree, instances_have_the_same_generics_ports_signals_ranges_and_numbers) {
    build_every_component();
    const std::string design = read_vhdl_design(emit(language::vhdl).text);
    EXPECT_EQ(design, read_verilog_design(emit(language::verilog).text));
    EXPECT_EQ(instances_in(design), 82U);
}

}  // namespace

}  // namespace xfc::test
