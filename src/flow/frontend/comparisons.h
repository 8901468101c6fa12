#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "flow/frontend/integer_ranges.h"
#include "flow/graph/graph.h"

namespace xfc::flow {

/// Comparisons that are taken to hold or to fail, one behind the other, and whether numbers exist for which all do.
/// What is found impossible is so; not all that is impossible is found.
class comparisons {
public:
    /// One integer may be taken for 0.
    comparisons(const graph& values, integer_ranges& ranges, value_id zero);

    /// Takes a boolean for true or false. False when that contradicts what was taken before.
    bool take(value_id condition, bool truth);
    /// Takes back the last one, which has to be taken back whether it contradicts or not.
    void take_back();

    [[nodiscard]] bool is_possible() const { return possible_; }

private:
    /// What an integer can be.
    struct domain {
        integer_range range;
        std::vector<std::int64_t> excluded;
    };
    using pair = std::pair<value_id, value_id>;
    struct change {
        value_id integer = no_value;  ///< whose domain was changed, if any
        domain before = {all_integers, {}};
        pair two = {no_value, no_value};  ///< whose relation was, if any
        std::uint8_t relation_before = 0;
    };

    [[nodiscard]] std::optional<std::int64_t> known(value_id integer, int level = 0) const;
    bool narrow(operation op, value_id integer, bool is_left, std::int64_t number, bool truth);
    bool relate(operation op, value_id left, value_id right, bool truth);

    const graph& values_;
    integer_ranges& ranges_;
    value_id zero_;
    bool possible_;
    std::map<value_id, domain> domains_;
    std::map<pair, std::uint8_t> relations_;
    std::vector<change> changes_;
};

}  // namespace xfc::flow
