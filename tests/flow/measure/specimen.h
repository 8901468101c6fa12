#pragma once

#include <memory>
#include <string>
#include <vector>

#include "flow/emit/datapath.h"
#include "flow/explore/cost_key.h"

namespace xfc::flow::test {

/// A design that has nothing but an instance of a key, the conversions of its operands and its ports.
struct specimen {
    std::shared_ptr<const datapath> text = {};
    std::vector<cost_key> drivers = {};  ///< whose cost is taken off again: conversions, the opposite
    std::int32_t chain = 0;              ///< flip-flops from startin to startout
};

[[nodiscard]] specimen specimen_of(const cost_key& key, const std::string& name);

}  // namespace xfc::flow::test
