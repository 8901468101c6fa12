#pragma once

#include <span>
#include <vector>

#include "flow/graph/graph.h"
#include "flow/passes/design.h"

namespace xfc::flow {

/// The library's bit-exact models run over a design, without its timing.
class design_model {
public:
    /// Every component of the design must have a model, which selection sees to. The design must outlive this.
    explicit design_model(const design& made);

    /// The bits of the outputs for the bits of the inputs, both in the order of the graph's ports.
    [[nodiscard]] std::vector<std::uint64_t> outputs_for(std::span<const std::uint64_t> inputs);

private:
    const design& made_;
    std::vector<component_model> models_;  ///< by node; null where there is no instance
    std::vector<bus_bits> buses_;          ///< by node
};

}  // namespace xfc::flow
