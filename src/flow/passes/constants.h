#pragma once

#include <cstdint>

#include "flow/graph/number_format.h"
#include "flow/passes/coding.h"
#include "model/component_model.h"

namespace xfc::flow {

/// The bus that carries a constant, exactly: `bits` in `format` as the graph holds them, in the coding that the reader
/// asks for. Subnormal numbers are zero, as everywhere in the library; of a zero, an infinity and what is no number the
/// flags say so, and the sign stays. Booleans, integers and IEEE codings keep their bits.
[[nodiscard]] bus_bits encoded_constant(number_format format, std::uint64_t bits, coding code, std::int32_t mantissa);

}  // namespace xfc::flow
