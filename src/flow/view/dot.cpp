#include "flow/emit/template.h"
#include "flow/view/page.h"
#include "flow/view/texts.h"

namespace xfc::flow {

namespace {

constexpr std::string_view graph_text =
    "digraph @name@ {\n  rankdir=LR;\n  node [shape=box, fontname=\"sans-serif\"];\n";
constexpr std::string_view bar_text = "  @node@ [label=@label@@style@];\n";
constexpr std::string_view port_text = "  @node@ [shape=cds, label=@label@];\n";
constexpr std::string_view edge_text = "  @from@ -> @to@@delay@;\n";

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char letter : text) {
        result += letter == '"' || letter == '\\' ? std::string("\\") + letter : std::string(1, letter);
    }
    return result + "\"";
}

std::string node_of(std::size_t bar) { return "n" + std::to_string(bar); }

std::string edge(const std::string& from, const std::string& to, std::int32_t delay) {
    return filled_template(
        edge_text,
        {{"from", from}, {"to", to}, {"delay", delay > 0 ? " [label=\"" + std::to_string(delay) + "\"]" : ""}});
}

}  // namespace

std::string dot_text(const picture& what, const view_input& input) {
    std::string text = filled_template(graph_text, {{"name", quoted(input.names.design)}});
    for (std::size_t index = 0; index < what.bars.size(); ++index) {
        const bar& one = what.bars[index];
        const bool is_input = one.kind == bar_kind::input;
        std::string label(input.names.nodes[one.node]);
        label.append("\n").append(is_input ? "port" : component_name(input.made[one.node]));
        label.append("\n").append(cycles_text(one));
        text += filled_template(
            bar_text,
            {{"node", node_of(index)}, {"label", quoted(label)}, {"style", one.on_path ? ", penwidth=3" : ""}});
        for (const std::uint32_t operand : one.operands) {
            const std::int32_t ready = what.bars[operand].end;
            text += edge(node_of(operand), node_of(index), one.start - ready);
        }
        for (const std::string& output : one.outputs) {
            const std::string port = "\"output " + output + "\"";
            text += filled_template(port_text, {{"node", port}, {"label", quoted(output)}});
            text += edge(node_of(index), port, what.latency - one.end);
        }
    }
    return text + "}\n";
}

}  // namespace xfc::flow
