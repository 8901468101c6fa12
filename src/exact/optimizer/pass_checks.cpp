#include "exact/optimizer/pass_checks.h"

#include <cstdlib>
#include <string>

#include "exact/dfg/dfg.h"
#include "exact/dfg/graph_dump.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

void dump_if_asked_for(std::size_t index) {
    const char* asked = std::getenv("XFC_DUMP");
    if (asked == nullptr || (std::string_view(asked) != "all" && asked != std::to_string(index + 1))) {
        return;
    }
    text_writer& out = open_message_stream(message_stream::standard_error);
    write_format(out, "%s%s", optimizer_passes()[index].banner, dump_graph());
}

}  // namespace

graph_expectations expectations_behind(std::size_t index) {
    graph_expectations expected{.every_consumer_agrees = true};
    for (const optimizer_pass& pass : optimizer_passes().first(index + 1)) {
        expected.balanced = pass.effect == pass_effect::balances_edges;
        expected.acyclic = expected.acyclic || pass.effect == pass_effect::refuses_cycles;
        expected.every_consumer_agrees = expected.every_consumer_agrees && pass.effect != pass_effect::merges_nodes;
    }
    return expected;
}

void check_behind_pass(std::size_t index) {
    dump_if_asked_for(index);
    if (index == 0) {
        current.graph.consumers_agreed = consumers_agree();
    }
    const graph_expectations expected =
        current.graph.consumers_agreed ? expectations_behind(index) : graph_expectations{};
    if (const std::string violation = verify_graph(expected); !violation.empty()) {
        throw graph_violation(std::string(optimizer_passes()[index].banner) + "graph check: " + violation + "\n" +
                              dump_graph());
    }
}

}  // namespace xfc
