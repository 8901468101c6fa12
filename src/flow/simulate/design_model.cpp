#include "flow/simulate/design_model.h"

#include <stdexcept>

#include "model/model_list.h"

namespace xfc::flow {

design_model::design_model(const design& made) : made_(made), models_(made.size()), buses_(made.size()) {
    for (node_id id = 0; id < made.size(); ++id) {
        if (made[id].kind == node_kind::instance) {
            models_[id] = model_named(component_name(made[id]));
            if (models_[id] == nullptr) {
                throw std::logic_error("a design has a component without a model");
            }
        }
    }
}

std::vector<std::uint64_t> design_model::outputs_for(std::span<const std::uint64_t> inputs) {
    for (node_id id = 0; id < made_.size(); ++id) {
        const design_node& node = made_[id];
        switch (node.kind) {
            case node_kind::input:
                buses_[id] = inputs[node.port];
                break;
            case node_kind::constant:
                buses_[id] = node.bits;
                break;
            case node_kind::instance: {
                component_operands operands{.aa = buses_[node.operands[0]], .addsub = node.subtract};
                operands.bb = node.operands[1] == no_node ? 0 : buses_[node.operands[1]];
                operands.condition = node.operands[2] != no_node && buses_[node.operands[2]] != 0;
                buses_[id] = models_[id](node.generics(), operands);
                break;
            }
        }
    }
    std::vector<std::uint64_t> outputs;
    for (const node_id output : made_.outputs) {
        outputs.push_back(static_cast<std::uint64_t>(buses_[output]));
    }
    return outputs;
}

}  // namespace xfc::flow
