#include "exact/emit/frame_graphs.h"

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

std::int32_t add(std::string_view name, std::int32_t inputs, number_format format, std::int32_t width,
                 std::string_view component = "") {
    const std::int32_t slot = add_node(name, inputs, format, component);
    set_widths(slot, width);
    return slot;
}

}  // namespace

void build_two_outputs() {
    start_graph();
    current.source_path.clear();
    current.max_latency = 23;
    const std::int32_t a = add("a", 1, number_format::single_float, 32);
    const std::int32_t b = add("b", 1, number_format::double_float, 64);
    const std::int32_t y = add("y", 1, number_format::single_float, 32);
    const std::int32_t widened = add("cast", 1, number_format::xfloat, 45, "xfc_castftox");
    const std::int32_t z = add("z", 1, number_format::double_float, 64);
    const std::int32_t sum = add("+", 2, number_format::xfloat, 45, "xfc_alufp1x");
    const std::int32_t narrowed = add("cast", 1, number_format::single_float, 32, "xfc_castxtof");
    const std::int32_t t = add("t", 1, number_format::single_float, 32);
    const std::int32_t root = add("sqrt", 1, number_format::single_float, 32, "fp_sqr");
    const std::int32_t delay = add("delay", 1, number_format::double_float, 64, "xfc_delay");
    const std::int32_t merged = add("delay", 1, number_format::double_float, 64, "xfc_delay");
    attributes_at(delay).latency = 23;
    attributes_at(merged).latency = 23;
    attributes_at(merged).is_removed = 1;
    dfg_connect(a, widened, 0);
    dfg_connect(widened, sum, 0);
    make_constant(sum, 1, 1.5);
    dfg_connect(sum, narrowed, 0);
    dfg_connect(narrowed, t, 0);
    dfg_connect(t, root, 0);
    dfg_connect(root, y, 0);
    dfg_connect(b, merged, 0);
    dfg_connect(merged, z, 0);
    dfg_connect(b, delay, 0);
    dfg_connect(delay, z, 0);
}

void build_no_outputs() {
    start_graph();
    current.source_path.clear();
    current.max_latency = 1;
    const std::int32_t p = add("p", 1, number_format::single_float, 32);
    const std::int32_t q = add("q", 1, number_format::single_float, 32);
    dfg_connect(p, q, 0);
    dfg_connect(q, p, 0);
}

}  // namespace xfc::test
