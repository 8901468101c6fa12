#include "flow/explore/cost_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <sstream>

#include "flow/explore/explore_texts.h"

namespace xfc::flow {

namespace {

template <class number_type>
bool read_number(std::string_view text, number_type& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size();
}

known_cost as_known(const resource_counts& counts, cost_basis basis) {
    return {static_cast<double>(counts.look_up_tables), static_cast<double>(counts.flip_flops),
            static_cast<double>(counts.multipliers), basis};
}

/// How far two sets of a component's generics are apart: those that choose a form or width count most.
int distance_of(const cost_key& a, const cost_key& b) {
    int distance = (a.subtract == b.subtract ? 0 : 1) + (a.beside_opposite == b.beside_opposite ? 0 : 2);
    for (const generic_row& generic : row_of(a.component).generics) {
        const int step = std::abs(a.generics.*generic.field - b.generics.*generic.field);
        const bool chooses_form = generic.flag != generic_row::no_flag || generic.name == "target";
        distance += step == 0 ? 0 : chooses_form ? 100 : generic.name == "mantissa" ? 8 : 4 * step;
    }
    return distance;
}

bool same_generics(const cost_key& a, const cost_key& b) {
    const auto& generics = row_of(a.component).generics;
    return std::all_of(generics.begin(), generics.end(), [&](const generic_row& generic) {
        return a.generics.*generic.field == b.generics.*generic.field;
    });
}

/// The operands are of the same kinds, whatever the digits of constants; and of two structures neither tells what the
/// other takes.
bool same_kinds(const cost_key& a, const cost_key& b) {
    return a.generics.synthesize == b.generics.synthesize &&
           std::equal(a.operands.begin(), a.operands.end(), b.operands.begin(),
                      [](const operand_class& one, const operand_class& other) {
                          return one.kind == other.kind && one.from == other.from &&
                                 (one.digits == 0) == (other.digits == 0) &&
                                 (one.digits == operand_class::uncounted) == (other.digits == operand_class::uncounted);
                      });
}

std::int32_t digits_of(const cost_key& key) {
    std::int32_t digits = 0;
    for (const operand_class& operand : key.operands) {
        digits += std::max(0, operand.digits);
    }
    return digits;
}

double ratio_of(double part, double whole) { return whole > 0 ? part / whole : 1; }

known_cost scaled(const known_cost& plain, const known_cost& part, const known_cost& whole) {
    return {plain.look_up_tables * ratio_of(part.look_up_tables, whole.look_up_tables),
            plain.flip_flops * ratio_of(part.flip_flops, whole.flip_flops),
            plain.multipliers * ratio_of(part.multipliers, whole.multipliers), cost_basis::derived};
}

}  // namespace

cost_table::cost_table(std::string_view text) {
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("# ")) {
            comments_.push_back(line.substr(2));
        } else {
            add(line);
        }
    }
}

void cost_table::add(std::string_view row_text) {
    std::vector<std::string_view> cells;
    for (std::size_t comma = row_text.find(','); comma != std::string_view::npos; comma = row_text.find(',')) {
        cells.push_back(row_text.substr(0, comma));
        row_text.remove_prefix(comma + 1);
    }
    cells.push_back(row_text);
    row made;
    resource_counts& counts = made.counts;
    if (cells.size() < 5 || cells.size() > 7 || !read_number(cells[2], counts.look_up_tables) ||
        !read_number(cells[3], counts.flip_flops) || !read_number(cells[4], counts.multipliers)) {
        return;
    }
    const auto key = key_of_text(cells[0]);
    if (!key || (cells.size() > 5 && !cells[5].empty() && !read_number(cells[5], made.megahertz))) {
        return;
    }
    made.key = *key;
    std::vector<row>& rows = rows_[std::string(cells[1])][key->component];
    std::erase_if(rows, [&](const row& old) { return text_of(old.key) == text_of(made.key); });
    rows.push_back(made);
}

const std::vector<cost_table::row>& cost_table::rows_for(component_id component, const family_row& family) const {
    static const std::vector<row> none;
    const auto of_family = rows_.find(family.name);
    if (of_family == rows_.end()) {
        return none;
    }
    const auto found = of_family->second.find(component);
    return found == of_family->second.end() ? none : found->second;
}

const cost_table::row* cost_table::row_for(const cost_key& key, const family_row& family) const {
    for (const row& one : rows_for(key.component, family)) {
        if (one.key.subtract == key.subtract && one.key.beside_opposite == key.beside_opposite &&
            one.key.operands == key.operands && same_generics(one.key, key)) {
            return &one;
        }
    }
    return nullptr;
}

const resource_counts* cost_table::measured(const cost_key& key, const family_row& family) const {
    const row* found = row_for(key, family);
    return found == nullptr ? nullptr : &found->counts;
}

double cost_table::clock_of(const cost_key& key, const family_row& family) const {
    const row* own = row_for(key, family);
    const row* plain = own != nullptr && own->megahertz > 0 ? own : row_for(without_operands(key), family);
    return plain == nullptr ? 0 : plain->megahertz;
}

known_cost cost_table::cost_of(const cost_key& key, const family_row& family) const {
    if (const resource_counts* counts = measured(key, family)) {
        return as_known(*counts, cost_basis::measured);
    }
    const std::vector<row>& rows = rows_for(key.component, family);
    // Among rows of the same kinds of operands the nearest generics, and of these the digits on both sides.
    const auto nearest = [&](const cost_key& wanted) -> std::pair<known_cost, cost_key> {
        int best = std::numeric_limits<int>::max();
        for (const row& one : rows) {
            best = same_kinds(one.key, wanted) ? std::min(best, distance_of(one.key, wanted)) : best;
        }
        const row* below = nullptr;
        const row* above = nullptr;
        for (const row& one : rows) {
            if (!same_kinds(one.key, wanted) || distance_of(one.key, wanted) != best) {
                continue;
            }
            const std::int32_t digits = digits_of(one.key);
            if (digits <= digits_of(wanted) && (below == nullptr || digits > digits_of(below->key))) {
                below = &one;
            }
            if (digits >= digits_of(wanted) && (above == nullptr || digits < digits_of(above->key))) {
                above = &one;
            }
        }
        below = below == nullptr ? above : below;
        above = above == nullptr ? below : above;
        if (below == nullptr) {
            return {};
        }
        const double span = digits_of(above->key) - digits_of(below->key);
        const double part = span == 0 ? 0 : (digits_of(wanted) - digits_of(below->key)) / span;
        const known_cost low = as_known(below->counts, cost_basis::derived);
        const known_cost high = as_known(above->counts, cost_basis::derived);
        return {{low.look_up_tables + part * (high.look_up_tables - low.look_up_tables),
                 low.flip_flops + part * (high.flip_flops - low.flip_flops),
                 low.multipliers + part * (high.multipliers - low.multipliers), cost_basis::derived},
                below->key};
    };
    const auto [alike, alike_key] = nearest(key);
    if (alike.basis != cost_basis::not_measured && same_generics(alike_key, key)) {
        return alike;
    }
    const auto [plain, plain_key] = nearest(without_operands(key));
    if (alike.basis == cost_basis::not_measured) {
        return plain;
    }
    // How the operands change the component with other generics, applied to it with these.
    cost_key reference = without_operands(key);
    reference.generics = alike_key.generics;
    const auto [whole, whole_key] = nearest(reference);
    if (plain.basis == cost_basis::not_measured || !same_generics(plain_key, key) ||
        !same_generics(whole_key, alike_key)) {
        return alike;
    }
    return scaled(plain, alike, whole);
}

std::string_view component_costs_text(const family_row& family) {
    static const std::map<std::string_view, std::string_view> texts = {{"ice40", component_costs_ice40},
                                                                       {"ecp5", component_costs_ecp5},
                                                                       {"xilinx", component_costs_xilinx},
                                                                       {"intel", component_costs_intel}};
    return texts.at(family.name);
}

const cost_table& component_costs(const family_row& family) {
    static const auto tables = [] {
        std::map<std::string_view, cost_table> made;
        for (const family_row& one : family_rows()) {
            made.emplace(one.name, component_costs_text(one));
        }
        return made;
    }();
    return tables.at(family.name);
}

}  // namespace xfc::flow
