#include "exact/dfg/graph_dump.h"

#include "base/text_writer.h"
#include "exact/dfg/dfg.h"

namespace xfc {

namespace {

void dump_input(text_writer& out, const dfg_input& input) {
    if (input.is_constant != 0) {
        write_format(out, " %s=%f", literal_kind_text(input.constant_type), input.constant_value);
    } else if (input.source.node != no_slot) {
        write_format(out, " %ld", input.source.node);
    } else {
        write_format(out, " -");
    }
}

void dump_node(text_writer& out, std::int32_t slot) {
    const dfg_node& node = node_at(slot);
    const node_attributes& attributes = node.attributes;
    write_format(out, "%ld \"%s\"", slot, node.name);
    for (const std::string_view mark :
         {format_row(attributes.format).text, std::string_view(attributes.is_internal != 0 ? "internal" : ""),
          std::string_view(attributes.is_normalized != 0 ? "normalized" : ""),
          std::string_view(attributes.is_removed != 0 ? "removed" : ""), row_of(attributes.component).name}) {
        if (!mark.empty()) {
            write_format(out, " %s", mark);
        }
    }
    write_format(out, " latency %ld ready %ld widths ", attributes.latency, attributes.ready_time);
    for (std::int32_t port = 0; port < node.input_count; ++port) {
        out.append(port == 0 ? "" : ",");
        out.append_integer(node.inputs[port].width);
    }
    write_format(out, ">%ld from", node.outputs[0].width);
    for (std::int32_t port = 0; port < node.input_count; ++port) {
        dump_input(out, node.inputs[port]);
    }
    write_format(out, " to");
    for (const dfg_link* link = consumers_of(node); link != nullptr; link = link->next) {
        write_format(out, " %ld.%ld", link->node, link->port);
    }
    out.append('\n');
}

}  // namespace

std::string dump_graph() {
    text_writer out;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dump_node(out, slot);
    }
    return out.take_text();
}

}  // namespace xfc
