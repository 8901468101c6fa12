#include "contract.h"

namespace xfc::proof::promises {

extern const contract xfc_delay;
const contract xfc_delay{
    .promise = "the bits as they came",
    .check = [](const component_generics&, const component_operands& operands,
                bus_bits result) { return verdict{.met = result == operands.aa}; },
};

}  // namespace xfc::proof::promises
