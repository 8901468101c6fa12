#include "flow/emit/datapath.h"

#include <algorithm>
#include <deque>
#include <map>
#include <tuple>
#include <utility>

#include "base/arena.h"
#include "flow/emit/template.h"
#include "flow/graph/port_names.h"

namespace xfc::flow {

namespace {

/// How a bus is spread over an instance's ports.
port_group spread_bus(port_shape shape, coding code, std::int32_t mantissa, bool is_result, std::string_view prefix) {
    const bus_layout layout = layout_of(code, mantissa);
    port_group group;
    const auto add = [&](std::string_view front, std::string_view rest, std::int32_t high, std::int32_t low,
                         bool single_bit) {
        group.ports.push_back({std::string(front).append(rest), high, low, single_bit});
    };
    if (shape == port_shape::boolean) {
        add(prefix, "", 1, 1, true);
        return group;
    }
    if (shape == port_shape::unpacked_single || shape == port_shape::unpacked_double) {
        const std::string_view suffix = is_result ? "out" : "in";
        add("sign", suffix, layout.sign, layout.sign, true);
        add("exponent", suffix, layout.exponent.high, layout.exponent.low, false);
        add("mantissa", suffix, layout.mantissa.high, layout.mantissa.low, false);
        return group;
    }
    constexpr std::string_view flags[] = {"sat", "zip", "nan"};
    if (layout.sat == 0) {
        add(prefix, "", 0, 0, false);
        if (shape == port_shape::single_by_selector || shape == port_shape::double_by_selector) {
            for (const std::string_view flag : flags) {
                group.open.push_back(std::string(prefix).append(flag));
            }
        }
        return group;
    }
    add(prefix, "", layout.value, 1, false);
    add(prefix, flags[0], layout.sat, layout.sat, true);
    add(prefix, flags[1], layout.zip, layout.zip, true);
    add(prefix, flags[2], layout.nan, layout.nan, true);
    return group;
}

/// Whether a name ends as derived ones do: _i, _unused, _d and a number. No word of a language does.
bool ends_as_derived(std::string_view name) {
    const auto drop_end = [&](std::string_view end) {
        const bool found = name.size() >= end.size() &&
                           std::equal(end.begin(), end.end(), name.end() - static_cast<std::ptrdiff_t>(end.size()),
                                      [](char wanted, char letter) {
                                          return wanted == letter || wanted == (letter >= 'A' ? letter + 0x20 : letter);
                                      });
        name.remove_suffix(found ? end.size() : 0);
        return found;
    };
    if (drop_end("_i") || drop_end("_unused")) {
        return true;
    }
    const std::size_t length = name.size();
    while (!name.empty() && name.back() >= '0' && name.back() <= '9') {
        name.remove_suffix(1);
    }
    return name.size() < length && drop_end("_d");
}

/// A text put together in `scratch`, whose old one is gone.
template <class... parts>
std::string_view put(std::string& scratch, const parts&... all) {
    scratch.clear();
    append_all(scratch, all...);
    return scratch;
}

/// Names that follow from those of buses: instances are called after the bus that they drive, delayed buses after their
/// bus and its delay. They are looked up only where some other name ends like one of them.
class derived_names {
public:
    template <class unread_predicate>
    derived_names(const design& made, const design_names& names, const delay_taps& delays,
                  const unread_predicate& has_unread)
        : names_(names), delays_(delays) {
        const auto among = [](const auto& some) { return std::any_of(some.begin(), some.end(), ends_as_derived); };
        if (ends_as_derived(names.design) || among(names.inputs) || among(names.outputs) || among(names.others) ||
            among(names.nodes)) {
            choose(made, has_unread);
        }
    }

    // `scratch` holds a name that is put together.
    std::string_view label(node_id id, std::string& scratch) const {
        return chosen_.empty() ? put(scratch, names_.nodes[id], "_i") : chosen_[first(id)];
    }
    std::string_view unread(node_id id, std::string& scratch) const {
        return chosen_.empty() ? put(scratch, names_.nodes[id], "_unused") : chosen_[first(id) + 1];
    }
    std::string_view delayed(node_id id, std::size_t tap, std::string& scratch) const {
        return chosen_.empty() ? put(scratch, names_.nodes[id], "_d", delays_[id][tap])
                               : chosen_[first(id) + 2 + 2 * tap];
    }
    std::string_view delay_label(node_id id, std::size_t tap, std::string& scratch) const {
        return chosen_.empty() ? put(scratch, names_.nodes[id], "_d", delays_[id][tap], "_i")
                               : chosen_[first(id) + 3 + 2 * tap];
    }

private:
    /// Of a node's names: that of its instance, of what nobody reads, of each tap's bus and instance.
    std::size_t first(node_id id) const { return 2 * (std::size_t{id} + delays_.first[id]); }

    template <class unread_predicate>
    void choose(const design& made, const unread_predicate& has_unread) {
        name_book book(names_.design, texts_);
        std::size_t given = 0;
        const auto announce_given = [&](std::string_view name) {
            book.announce(name);
            ++given;
        };
        for (const auto* names : {&names_.inputs, &names_.outputs, &names_.others}) {
            std::for_each(names->begin(), names->end(), announce_given);
        }
        for (node_id id = 0; id < made.size(); ++id) {
            if (made[id].kind != node_kind::input) {  // those are ports
                announce_given(names_.nodes[id]);
            }
        }
        std::vector<bool> asked;  // as in `chosen_`
        std::string scratch;
        const auto announce = [&](bool exists, std::string_view name) {
            asked.push_back(exists);
            if (exists) {
                book.announce(name);
            }
        };
        for (node_id id = 0; id < made.size(); ++id) {
            announce(made[id].kind == node_kind::instance, label(id, scratch));
            announce(has_unread(id), unread(id, scratch));
            for (std::size_t tap = 0; tap < delays_[id].size(); ++tap) {
                announce(true, delayed(id, tap, scratch));
                announce(true, delay_label(id, tap, scratch));
            }
        }
        for (; given > 0; --given) {
            (void)book.next();  // they are legal already
        }
        chosen_.reserve(asked.size());
        for (const bool exists : asked) {
            chosen_.push_back(exists ? book.next() : std::string_view());
        }
    }

    const design_names& names_;
    const delay_taps& delays_;
    arena texts_;
    std::vector<std::string_view> chosen_;  ///< empty: all are as they are derived
};

/// What stands behind a datapath that is told.
class datapath_teller {
public:
    datapath_teller(const graph& values, const design& made, const schedule& times,
                    std::shared_ptr<const design_names> names, const source_map& places)
        : values_(values),
          made_(made),
          times_(times),
          shared_names_(std::move(names)),
          names_(*shared_names_),
          places_(places),
          delays_(delays_of(made, times)),
          derived_(made, names_, delays_, [&](node_id id) { return has_unread(id); }) {}

    /// All but what is told one by one.
    datapath summary(std::vector<std::string> header) {
        datapath result{.name = names_.design, .latency = times_.latency, .header = std::move(header)};
        result.start_chain = names_.others[static_cast<std::size_t>(common_name::start_chain)];
        for (std::size_t place = 0; place < names_.inputs.size(); ++place) {
            const port& one = values_.inputs()[place];
            result.inputs.push_back({names_.inputs[place], format_bits(one.format), port_comment(one)});
        }
        std::vector<bool> uses(all_components().size() + 1, false);
        for (node_id id = 0; id < made_.size(); ++id) {
            const design_node& node = made_[id];
            if (node.kind == node_kind::input) {
                result.inputs[node.port].width = made_.width_of(id);
            } else if (node.kind == node_kind::constant) {
                result.constants.push_back(
                    {{names_.nodes[id], made_.width_of(id),
                      kept_all(row_of(node.code).text, ", ", source_comment(values_, node.value, places_))},
                     binary(node.bits, made_.width_of(id))});
            } else if (!uses[static_cast<std::size_t>(node.component)]) {
                uses[static_cast<std::size_t>(node.component)] = true;
                result.components.insert(row_of(node.component).name);
            }
        }
        if (!delays_.cycles.empty()) {
            result.components.insert(row_of(component_id::delay).name);
        }
        for (std::size_t place = 0; place < names_.outputs.size(); ++place) {
            const port& one = values_.outputs()[place];
            const std::string_view driver = kept(bus_at(made_.outputs[place], times_.latency, scratch_));
            result.outputs.push_back(
                {{names_.outputs[place], made_.width_of(made_.outputs[place]), port_comment(one)}, driver});
        }
        return result;
    }

    void tell_signals(const signal_taker& take) const {
        std::string name;
        std::string comment;
        for (node_id id = 0; id < made_.size(); ++id) {
            const std::int32_t width = made_.width_of(id);
            if (made_[id].kind == node_kind::instance) {
                take({names_.nodes[id], width,
                      put(comment, row_of(made_[id].code).text, " in cycle ", ready_time(made_, times_, id))});
            }
            for (std::size_t tap = 0; tap < delays_[id].size(); ++tap) {
                take({derived_.delayed(id, tap, name), width,
                      put(comment, names_.nodes[id], ", ", counted_cycles(delays_[id][tap]), " later")});
            }
        }
    }

    void tell_instances(const instance_taker& take) const {
        instance_maker maker(*this);
        for (node_id id = 0; id < made_.size(); ++id) {
            if (made_[id].kind == node_kind::instance) {
                take(maker.instance(id));
            }
            for (std::size_t tap = 0; tap < delays_[id].size(); ++tap) {
                take(maker.delay(id, tap));
            }
        }
    }

private:
    /// Makes instances one after the other; each stands until the next one is made.
    class instance_maker {
    public:
        explicit instance_maker(const datapath_teller& what) : what_(what), kinds_(all_components().size() + 1) {}

        instance_text instance(node_id id) {
            const design_node& node = what_.made_[id];
            const component_row& row = row_of(node.component);
            const bool converts =
                row.operation == component_operation::convert || row.operation == component_operation::normalize;
            const std::int32_t start = what_.times_.start[id];
            const std::string_view code = converts ? row_of(node.code).text : std::string_view();
            comment_.clear();
            append_source_comment(comment_, what_.values_, node.value, what_.places_);
            append_all(comment_, converts ? ", as " : "", code, "; cycles ", start, " to ", start + node.latency());
            instance_text made{.label = what_.derived_.label(id, label_),
                               .comment = comment_,
                               .component = row.name,
                               .kind = kind_of(node)};
            const port_shape shapes[] = {row.aa, row.bb, port_shape::boolean};
            std::size_t place = 0;
            for (; place < node.operand_span().size(); ++place) {
                const node_id operand = node.operands.at(place);
                made.connections.at(place) = {group_of(row, place, shapes[place], what_.made_[operand].code),
                                              what_.bus_at(operand, start, buses_.at(place))};
            }
            const port_group* result = group_of(row, most_operands, row.cc, node.code);
            made.connections.at(place) = {result, what_.names_.nodes[id]};
            made.connection_count = place + 1;
            made.unread = result->open.empty() ? std::string_view() : what_.derived_.unread(id, unread_);
            return made;
        }

        /// One piece of a line of delays, which has a tap for each cycle in which somebody reads the bus.
        instance_text delay(node_id id, std::size_t tap) {
            const auto taps = what_.delays_[id];
            const std::string_view from =
                tap == 0 ? std::string_view(what_.names_.nodes[id]) : what_.derived_.delayed(id, tap - 1, buses_[0]);
            return {
                .label = what_.derived_.delay_label(id, tap, label_),
                .component = row_of(component_id::delay).name,
                .kind = kind_of_delay(what_.made_.width_of(id), taps[tap] - (tap == 0 ? 0 : taps[tap - 1])),
                .connections = {{{&delay_operand, from}, {&delay_result, what_.derived_.delayed(id, tap, buses_[1])}}},
                .connection_count = 2};
        }

    private:
        /// The ports of operand 0 (aa), 1 (bb) or 2 (the condition) or of the result, for a bus in a coding.
        const port_group* group_of(const component_row& row, std::size_t place, port_shape shape, coding code) {
            const std::string_view prefix = prefix_of(row, place);
            const auto [found, is_new] = groups_.try_emplace({prefix, shape, code});
            if (is_new) {
                found->second = spread_bus(shape, code, what_.made_.options.mantissa, place == most_operands, prefix);
            }
            return &found->second;
        }

        const instance_kind* kind_of(const design_node& node) {
            const component_row& row = row_of(node.component);
            std::deque<instance_kind>& known = kinds_[static_cast<std::size_t>(node.component)];
            const std::string_view control =
                row.operation == component_operation::add_or_subtract ? control_port_of(row) : std::string_view();
            const auto has_value = [&](const generic_row& generic, const auto& known_generic) -> bool {
                return generic_value(generic, node.generics()) == known_generic.second;
            };
            for (const instance_kind& one : known) {
                const bool same_control = control.empty() || node.subtract == one.fixed_low.empty();
                if (same_control &&
                    std::equal(row.generics.begin(), row.generics.end(), one.generics.begin(), has_value)) {
                    return &one;
                }
            }
            instance_kind kind{.clocked = row.clocked};
            for (const generic_row& generic : row.generics) {
                kind.generics.emplace_back(generic.name, generic_value(generic, node.generics()));
            }
            (node.subtract ? kind.fixed_high : kind.fixed_low) = control;
            return &known.emplace_back(std::move(kind));
        }

        const instance_kind* kind_of_delay(std::int32_t width, std::int32_t delay) {
            const auto [found, is_new] = delay_kinds_.try_emplace({width, delay});
            if (is_new) {
                found->second.generics = {{"width", width}, {"delay", delay}, {"synthesize", 0}};
            }
            return &found->second;
        }

        const datapath_teller& what_;
        std::map<std::tuple<std::string_view, port_shape, coding>, port_group> groups_;
        std::vector<std::deque<instance_kind>> kinds_;  ///< by component
        std::map<std::pair<std::int32_t, std::int32_t>, instance_kind> delay_kinds_;
        std::string label_;
        std::string comment_;
        std::string unread_;
        std::array<std::string, most_operands> buses_;
    };

    static std::string_view prefix_of(const component_row& row, std::size_t place) {
        const std::string_view prefixes[] = {"aa", "bb", control_port_of(row), "cc"};
        return prefixes[place];
    }

    /// Whether the instance delivers flags that its coding has no place for.
    bool has_unread(node_id id) const {
        const design_node& node = made_[id];
        const component_row& row = row_of(node.component);
        return node.kind == node_kind::instance &&
               !spread_bus(row.cc, node.code, made_.options.mantissa, true, "cc").open.empty();
    }

    /// The name of a node's bus in a cycle.
    std::string_view bus_at(node_id id, std::int32_t cycle, std::string& scratch) const {
        const std::int32_t delay = cycle - ready_time(made_, times_, id);
        if (delay <= 0 || made_[id].kind == node_kind::constant) {
            return names_.nodes[id];
        }
        const auto taps = delays_[id];
        const auto tap = static_cast<std::size_t>(std::lower_bound(taps.begin(), taps.end(), delay) - taps.begin());
        return derived_.delayed(id, tap, scratch);
    }

    std::string_view kept(std::string_view text) { return texts_.copy_text(text); }

    /// A text put together of parts.
    template <class... parts>
    std::string_view kept_all(const parts&... all) {
        return kept(put(scratch_, all...));
    }

    std::string_view port_comment(const port& one) {
        return one.c_access.empty() ? kept(format_name(one.format))
                                    : kept_all(format_name(one.format), ", ", comment_text(one.c_access));
    }

    std::string_view binary(bus_bits bits, std::int32_t width) {
        scratch_.clear();
        for (std::int32_t place = width - 1; place >= 0; --place) {
            scratch_ += bit(bits, place) ? '1' : '0';
        }
        return kept(scratch_);
    }

    static inline const port_group delay_operand{.ports = {{.port = "aa"}}};
    static inline const port_group delay_result{.ports = {{.port = "cc"}}};

    const graph& values_;
    const design& made_;
    const schedule& times_;
    const std::shared_ptr<const design_names> shared_names_;
    const design_names& names_;
    const source_map& places_;
    const delay_taps delays_;
    const derived_names derived_;
    arena texts_;  ///< of the summary
    std::string scratch_;
};

}  // namespace

datapath make_datapath(const graph& values, const design& made, const schedule& times,
                       const std::shared_ptr<const design_names>& names, const source_map& places,
                       std::vector<std::string> header) {
    const auto teller = std::make_shared<datapath_teller>(values, made, times, names, places);
    datapath result = teller->summary(std::move(header));
    // The functions have no share in the teller: the store has it.
    result.for_each_signal = [what = teller.get()](const signal_taker& take) { what->tell_signals(take); };
    result.for_each_instance = [what = teller.get()](const instance_taker& take) { what->tell_instances(take); };
    result.store = teller;
    return result;
}

}  // namespace xfc::flow
