#include "flow/passes/design.h"

#include <algorithm>
#include <bit>
#include <cstdio>

namespace xfc::flow {

namespace {

std::string hexadecimal(bus_bits bits) {
    std::string text;
    do {
        text.insert(text.begin(), "0123456789abcdef"[static_cast<std::size_t>(bits & 15U)]);
        bits >>= 4U;
    } while (bits != 0);
    return text;
}

std::string name_of(node_id id) { return "#" + std::to_string(id); }

std::string generics_text(const design_node& node) {
    std::string text;
    for (const generic_row& row : row_of(node.component).generics) {
        text += (text.empty() ? "" : " ") + std::string(row.name) + "=" +
                std::to_string(generic_value(row, node.generics()));
    }
    return text;
}

class design_verifier {
public:
    design_verifier(const design& made, const graph& source) : made_(made), source_(source) {}

    std::vector<std::string> run() {
        for (node_id id = 0; id < made_.size(); ++id) {
            const design_node& node = made_[id];
            expect(node.value < source_.size(), id, "carries no value");
            switch (node.kind) {
                case node_kind::input:
                    expect(node.port < source_.inputs().size() &&
                               node.code == plain_coding(source_.inputs()[node.port].format),
                           id, "is coded otherwise than its port");
                    break;
                case node_kind::constant:
                    expect((node.bits & ~low_ones(made_.width_of(id))) == 0, id, "has bits beyond its bus");
                    break;
                case node_kind::instance:
                    check_instance(id);
                    break;
            }
        }
        check_outputs();
        return std::move(faults_);
    }

private:
    void expect(bool holds, node_id id, const std::string& otherwise) {
        if (!holds) {
            faults_.push_back("node " + std::to_string(id) + " (" + std::string(component_name(made_[id])) + ") " +
                              otherwise);
        }
    }

    void check_instance(node_id id) {
        const design_node& node = made_[id];
        if (node.setting == nullptr || node.setting->component != node.component) {
            expect(false, id, "has the generics of another component");
            return;
        }
        const component_row& row = row_of(node.component);
        const bool selects = row.operation == component_operation::select;
        const std::size_t wanted = selects ? 3 : row.bb == port_shape::none ? 1 : 2;
        if (node.operand_span().size() != wanted) {
            expect(false, id, "has a wrong number of operands");
            return;
        }
        expect(selects ? node.generics().width == made_.width_of(id)
                       : node.code == result_coding(node.component, node.generics()),
               id, "delivers another coding");
        expect(node.summands >= 1 && node.summands <= most_summands, id, "uses up the guard bits");
        std::int32_t summands = 0;
        for (std::size_t place = 0; place < node.operand_span().size(); ++place) {
            const node_id operand = node.operands.at(place);
            if (operand >= id) {
                expect(false, id, "has an operand that is not earlier");
                return;
            }
            const coding reads = !selects     ? operand_coding(node.component, place)
                                 : place == 2 ? coding::boolean
                                              : node.code;
            expect(made_[operand].code == reads, id,
                   "reads operand " + std::to_string(place + 1) + " in a wrong coding");
            summands += made_[operand].summands;
        }
        if (row.operation == component_operation::add_or_subtract && has_guard_bits(node.code)) {
            expect(node.summands == summands, id, "counts its summands wrongly");
        }
        for (const generic_row& generic : row.generics) {
            const std::int32_t value = generic_value(generic, node.generics());
            expect(value >= generic.low && value <= generic.high, id,
                   "has the generic " + std::string(generic.name) + " out of range");
        }
    }

    void check_outputs() {
        if (made_.outputs.size() != source_.outputs().size()) {
            faults_.emplace_back("outputs are missing");
            return;
        }
        for (std::size_t place = 0; place < made_.outputs.size(); ++place) {
            const node_id id = made_.outputs[place];
            if (id >= made_.size() || made_[id].code != plain_coding(source_.outputs()[place].format)) {
                faults_.push_back("output " + source_.outputs()[place].name + " is driven in a wrong coding");
            }
        }
    }

    const design& made_;
    const graph& source_;
    std::vector<std::string> faults_;
};

}  // namespace

const component_setting& component_settings::find_or_make(component_id component, const component_generics& generics) {
    using fields = std::array<std::int32_t, sizeof(component_generics) / sizeof(std::int32_t)>;
    const fields wanted = std::bit_cast<fields>(generics);
    const auto found = std::find_if(all_.begin(), all_.end(), [&](const component_setting& one) {
        return one.component == component && std::bit_cast<fields>(one.generics) == wanted;
    });
    return found != all_.end()
               ? *found
               : all_.emplace_back(component_setting{.component = component,
                                                     .generics = generics,
                                                     .latency = latency_of(component, generics),
                                                     .number = static_cast<std::uint32_t>(all_.size())});
}

std::vector<std::string> faults_of(const design& made, const graph& source) {
    return design_verifier(made, source).run();
}

std::string dump(const design& made, const graph& source) {
    std::string text;
    for (node_id id = 0; id < made.size(); ++id) {
        const design_node& node = made[id];
        text += name_of(id) + " = ";
        switch (node.kind) {
            case node_kind::input:
                text += "input " + std::string(row_of(node.code).text) + " " + source.inputs()[node.port].name;
                break;
            case node_kind::constant:
                text += "constant " + std::string(row_of(node.code).text) + " " + hexadecimal(node.bits);
                break;
            case node_kind::instance:
                text += std::string(component_name(node)) + " " + std::string(row_of(node.code).text) + " " +
                        name_of(node.operands[0]);
                if (node.operands[1] != no_node) {
                    const bool adds = row_of(node.component).operation == component_operation::add_or_subtract;
                    text += !adds ? " " : node.subtract ? " - " : " + ";
                    text += name_of(node.operands[1]);
                }
                if (node.operands[2] != no_node) {
                    text += " by " + name_of(node.operands[2]);
                }
                if (node.summands > 1) {
                    text += " [" + std::to_string(node.summands) + " summands]";
                }
                text += " {" + generics_text(node) + "} " + std::to_string(node.latency()) + " cycles";
                break;
        }
        text += " ; %" + std::to_string(node.value) + "\n";
    }
    for (std::size_t place = 0; place < made.outputs.size(); ++place) {
        text += "output " + source.outputs()[place].name + " = " + name_of(made.outputs[place]) + "\n";
    }
    return text;
}

}  // namespace xfc::flow
