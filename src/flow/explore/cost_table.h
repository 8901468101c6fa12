#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "flow/explore/cost_key.h"
#include "flow/synth/synthesis.h"

namespace xfc::flow {

/// How well a cost is known.
enum class cost_basis : std::uint8_t {
    measured,      ///< this very key was synthesised
    derived,       ///< from measurements of the same component with other generics or other operands
    not_measured,  ///< nobody knows
};

struct known_cost {
    double look_up_tables = 0;
    double flip_flops = 0;
    double multipliers = 0;
    cost_basis basis = cost_basis::not_measured;
};

/// What components take, measured one by one: lines of comment that begin with #, a head, then a line
/// KEY,FAMILY,look-up tables,flip-flops,multiplier blocks each, the highest clock in MHz where it is
/// known, and a mark of the component's texts, by which a table that is measured anew knows what has changed.
class cost_table {
public:
    /// Lines that are no rows are left out.
    explicit cost_table(std::string_view text);

    /// Takes a further row.
    void add(std::string_view row);

    /// The counts of this key's row; null when there is none.
    [[nodiscard]] const resource_counts* measured(const cost_key& key, const family_row& family) const;

    /// The highest clock of this key, or of the component with all operands of any kind, in MHz; 0 when nobody knows.
    [[nodiscard]] double clock_of(const cost_key& key, const family_row& family) const;

    /// What the key costs, derived where it is not measured. Constants are interpolated between rows that were; for
    /// other generics the nearest ones that were count; for operands the factor by which they change the component
    /// with the nearest generics.
    [[nodiscard]] known_cost cost_of(const cost_key& key, const family_row& family) const;

    /// Lines of comment in front of the rows, without the mark.
    [[nodiscard]] const std::vector<std::string>& comments() const { return comments_; }

private:
    struct row {
        cost_key key;
        resource_counts counts;
        double megahertz = 0;
    };
    using rows_of_component = std::map<component_id, std::vector<row>>;

    [[nodiscard]] const row* row_for(const cost_key& key, const family_row& family) const;
    [[nodiscard]] const std::vector<row>& rows_for(component_id component, const family_row& family) const;

    std::map<std::string, rows_of_component, std::less<>> rows_;  ///< by family
    std::vector<std::string> comments_;
};

/// The table of a family that comes with the program, and its text.
[[nodiscard]] const cost_table& component_costs(const family_row& family);
[[nodiscard]] std::string_view component_costs_text(const family_row& family);

}  // namespace xfc::flow
