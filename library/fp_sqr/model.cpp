#include "model/digit_recurrence.h"

namespace xfc::model {

bus_bits fp_sqr(const component_generics&, const component_operands& operands) {
    return square_root<std::uint64_t>(operands.aa, bus_form::single_float);
}

}  // namespace xfc::model
