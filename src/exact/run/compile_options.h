#pragma once

#include <cstdint>

namespace xfc {

/// Settings of one compilation. The argument loop writes them once; every pass only reads them.
/// A field that is passed to the components as a generic bears the generic's name.
struct compile_option_record {
    std::int32_t mantissa = 32;         ///< bits of the internal single-precision mantissa, 32 or 36
    std::int32_t doublespeed = 0;       ///< 1: longer double-precision additions are pipelined
    std::int32_t fittingregisters = 0;  ///< Kept: accepted and stored, read by no pass.
    std::int32_t inputnormalize = 0;    ///< 1: single-precision multipliers get fully normalized operands
    std::int32_t outputscale = 0;       ///< 1: single-precision multipliers normalize their result
    std::int32_t roundconvert = 0;      ///< 1: conversions round
    std::int32_t roundnormalize = 0;    ///< 1: normalizations round
    std::int32_t outputpipe = 1;        ///< 0: no register on simple internal output nodes
    std::int32_t normspeed = 3;         ///< normalizer performance, 1 to 3
    std::int32_t normspeed2 = 2;        ///< the same for components that offer only levels 1 and 2
    std::int32_t shiftspeed = 1;        ///< 0: no pipeline in large alignment shifts
    std::int32_t clustersize = 16;      ///< unnormalized operands summed before a normalizer stands, 2 to 16
    std::int32_t doubleaccuracy = 1;    ///< 0: the double-precision multiplier is pruned
    std::int32_t device = 0;            ///< target family: 0 generic, 1 with -s3, 2 with -s5
    std::int32_t optimization = 1;      ///< dot-product optimization; at most 3, negative values allowed
    std::int32_t synthesize = 0;        ///< 1: synthesizable components instead of behavioural models
    std::int32_t verilog = 0;           ///< 1: the output is Verilog instead of VHDL
};

extern compile_option_record compile_options;

}  // namespace xfc
