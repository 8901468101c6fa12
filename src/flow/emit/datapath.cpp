#include "flow/emit/datapath.h"

#include <algorithm>
#include <map>
#include <tuple>

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

class datapath_maker {
public:
    datapath_maker(const graph& values, const design& made, const schedule& times, const design_names& names,
                   const source_map& places)
        : values_(values),
          made_(made),
          times_(times),
          names_(names),
          places_(places),
          delays_(delays_of(made, times)),
          kinds_(all_components().size() + 1) {}

    datapath run(std::vector<std::string> header) {
        result_.name = names_.design;
        result_.latency = times_.latency;
        result_.header = std::move(header);
        result_.start_chain = names_.others[static_cast<std::size_t>(common_name::start_chain)];
        result_.store = std::make_shared<datapath_store>();
        name_the_rest();
        for (std::size_t place = 0; place < names_.inputs.size(); ++place) {
            const port& one = values_.inputs()[place];
            result_.inputs.push_back({kept(names_.inputs[place]), format_bits(one.format), port_comment(one)});
        }
        result_.instances.reserve(made_.size() + delays_.cycles.size());
        result_.signals.reserve(made_.size() + delays_.cycles.size());
        for (node_id id = 0; id < made_.size(); ++id) {
            if (made_[id].kind == node_kind::input) {
                result_.inputs[made_[id].port].width = made_.width_of(id);
            }
            add_node(id);
            add_delays(id);
        }
        for (std::size_t place = 0; place < names_.outputs.size(); ++place) {
            const port& one = values_.outputs()[place];
            result_.outputs.push_back(
                {{kept(names_.outputs[place]), made_.width_of(made_.outputs[place]), port_comment(one)},
                 bus_at(made_.outputs[place], times_.latency)});
        }
        return std::move(result_);
    }

private:
    std::string_view kept(std::string_view text) { return result_.store->texts.copy_text(text); }

    /// A text put together of parts.
    template <class... parts>
    std::string_view kept_all(const parts&... all) {
        scratch_.clear();
        append_all(scratch_, all...);
        return kept(scratch_);
    }

    std::string_view port_comment(const port& one) {
        return one.c_access.empty() ? kept(format_name(one.format))
                                    : kept_all(format_name(one.format), ", ", comment_text(one.c_access));
    }

    /// Delayed buses are called after their bus and its delay, instances after the bus that they drive.
    void name_the_rest() {
        name_book book(names_.design, result_.store->texts);
        std::size_t given = 0;
        for (const auto* names : {&names_.inputs, &names_.outputs, &names_.others, &names_.nodes}) {
            for (std::size_t place = 0; place < names->size(); ++place) {
                // Inputs stand twice, as ports and as nodes.
                if (names != &names_.nodes || made_[static_cast<node_id>(place)].kind != node_kind::input) {
                    book.announce((*names)[place]);
                    ++given;
                }
            }
        }
        for (node_id id = 0; id < made_.size(); ++id) {
            const std::string& name = names_.nodes[id];
            if (made_[id].kind == node_kind::instance) {
                book.announce(derived(name, "_i"));
            }
            if (has_unread(id)) {
                book.announce(derived(name, "_unused"));
            }
            for (const std::int32_t delay : delays_[id]) {
                book.announce(derived(name, "_d", delay));
                book.announce(derived(name, "_d", delay, "_i"));
            }
        }
        for (; given > 0; --given) {
            (void)book.next();  // they are legal already
        }
        for (node_id id = 0; id < made_.size(); ++id) {
            labels_.push_back(made_[id].kind == node_kind::instance ? book.next() : std::string_view());
            unread_.push_back(has_unread(id) ? book.next() : std::string_view());
            for (std::size_t tap = 0; tap < delays_[id].size(); ++tap) {
                const std::string_view bus = book.next();
                delayed_.push_back({bus, book.next()});
            }
        }
    }

    /// Whether the instance delivers flags that its coding has no place for.
    bool has_unread(node_id id) {
        const design_node& node = made_[id];
        return node.kind == node_kind::instance && !result_group(node)->open.empty();
    }

    const port_group* result_group(const design_node& node) {
        const component_row& row = row_of(node.component);
        return group_of(row, most_operands, row.cc, node.code);
    }

    template <class... parts>
    std::string_view derived(const parts&... all) {
        scratch_.clear();
        append_all(scratch_, all...);
        return scratch_;
    }

    /// The name of a node's bus in a cycle.
    std::string_view bus_at(node_id id, std::int32_t cycle) {
        const std::int32_t delay = cycle - ready_time(made_, times_, id);
        if (delay <= 0 || made_[id].kind == node_kind::constant) {
            return bus_name(id);
        }
        const auto taps = delays_[id];
        const auto tap = static_cast<std::size_t>(std::lower_bound(taps.begin(), taps.end(), delay) - taps.begin());
        return delayed_[delays_.first[id] + tap].bus;
    }

    std::string_view bus_name(node_id id) {
        if (buses_.empty()) {
            buses_.resize(made_.size());
        }
        if (buses_[id].empty()) {
            buses_[id] = kept(names_.nodes[id]);
        }
        return buses_[id];
    }

    void add_node(node_id id) {
        const design_node& node = made_[id];
        if (node.kind == node_kind::input) {
            return;
        }
        const std::string comment = source_comment(values_, node.value, places_);
        const std::string_view code = row_of(node.code).text;
        const std::int32_t width = made_.width_of(id);
        if (node.kind == node_kind::constant) {
            result_.constants.push_back(
                {{bus_name(id), width, kept_all(code, ", ", comment)}, binary(node.bits, width)});
            return;
        }
        result_.signals.push_back({bus_name(id), width, kept_all(code, " in cycle ", ready_time(made_, times_, id))});
        add_instance(id, comment);
    }

    std::string_view binary(bus_bits bits, std::int32_t width) {
        scratch_.clear();
        for (std::int32_t place = width - 1; place >= 0; --place) {
            scratch_ += bit(bits, place) ? '1' : '0';
        }
        return kept(scratch_);
    }

    void add_instance(node_id id, const std::string& comment) {
        const design_node& node = made_[id];
        const component_row& row = row_of(node.component);
        const bool converts =
            row.operation == component_operation::convert || row.operation == component_operation::normalize;
        const std::int32_t start = times_.start[id];
        const std::string_view code = converts ? row_of(node.code).text : std::string_view();
        instance_text instance{.label = labels_[id],
                               .comment = kept_all(comment, converts ? ", as " : "", code, "; cycles ", start, " to ",
                                                   start + node.latency()),
                               .component = row.name,
                               .kind = kind_of(node)};
        const port_shape shapes[] = {row.aa, row.bb, port_shape::boolean};
        std::size_t place = 0;
        for (; place < node.operand_span().size(); ++place) {
            const node_id operand = node.operands.at(place);
            instance.connections.at(place) = {group_of(row, place, shapes[place], made_[operand].code),
                                              bus_at(operand, start)};
        }
        instance.connections.at(place) = {result_group(node), bus_name(id)};
        instance.connection_count = place + 1;
        instance.unread = unread_[id];
        result_.instances.push_back(instance);
    }

    /// The ports of operand 0 (aa), 1 (bb) or 2 (the condition) or of the result, for a bus in a coding.
    const port_group* group_of(const component_row& row, std::size_t place, port_shape shape, coding code) {
        const std::string_view prefixes[] = {"aa", "bb", control_port_of(row), "cc"};
        const port_group*& group = groups_[{prefixes[place], shape, code}];
        if (group == nullptr) {
            result_.store->groups.push_back(
                spread_bus(shape, code, made_.options.mantissa, place == most_operands, prefixes[place]));
            group = &result_.store->groups.back();
        }
        return group;
    }

    const instance_kind* kind_of(const design_node& node) {
        const component_row& row = row_of(node.component);
        std::vector<const instance_kind*>& known = kinds_[static_cast<std::size_t>(node.component)];
        const std::string_view control =
            row.operation == component_operation::add_or_subtract ? control_port_of(row) : std::string_view();
        const auto has_value = [&](const generic_row& generic, const auto& known_generic) -> bool {
            return generic_value(generic, node.generics) == known_generic.second;
        };
        for (const instance_kind* one : known) {
            const bool same_control = control.empty() || node.subtract == one->fixed_low.empty();
            if (same_control &&
                std::equal(row.generics.begin(), row.generics.end(), one->generics.begin(), has_value)) {
                return one;
            }
        }
        instance_kind kind{.clocked = row.clocked};
        for (const generic_row& generic : row.generics) {
            kind.generics.emplace_back(generic.name, generic_value(generic, node.generics));
        }
        (node.subtract ? kind.fixed_high : kind.fixed_low) = control;
        result_.store->kinds.push_back(std::move(kind));
        return known.emplace_back(&result_.store->kinds.back());
    }

    const instance_kind* kind_of_delay(std::int32_t width, std::int32_t delay) {
        const instance_kind*& kind = delay_kinds_[{width, delay}];
        if (kind == nullptr) {
            result_.store->kinds.push_back({.generics = {{"width", width}, {"delay", delay}, {"synthesize", 0}}});
            kind = &result_.store->kinds.back();
        }
        return kind;
    }

    /// One line of delays with a tap for each cycle in which somebody reads the bus.
    void add_delays(node_id id) {
        std::int32_t done = 0;
        std::string_view from = bus_name(id);
        for (std::size_t tap = 0; tap < delays_[id].size(); ++tap) {
            const std::int32_t delay = delays_[id][tap];
            const tap_names& to = delayed_[delays_.first[id] + tap];
            const std::int32_t width = made_.width_of(id);
            result_.signals.push_back({to.bus, width, kept_all(bus_name(id), ", ", counted_cycles(delay), " later")});
            result_.instances.push_back({.label = to.label,
                                         .component = row_of(component_id::delay).name,
                                         .kind = kind_of_delay(width, delay - done),
                                         .connections = {{{&delay_operand, from}, {&delay_result, to.bus}}},
                                         .connection_count = 2});
            from = to.bus;
            done = delay;
        }
    }

    static inline const port_group delay_operand{.ports = {{.port = "aa"}}};
    static inline const port_group delay_result{.ports = {{.port = "cc"}}};

    const graph& values_;
    const design& made_;
    const schedule& times_;
    const design_names& names_;
    const source_map& places_;
    const delay_taps delays_;
    struct tap_names {
        std::string_view bus;
        std::string_view label;
    };
    std::vector<tap_names> delayed_;        ///< of each bus's taps, as `delays_` has them
    std::vector<std::string_view> labels_;  ///< of instances, by node
    std::vector<std::string_view> unread_;  ///< of what an instance delivers and nobody reads, by node
    std::vector<std::string_view> buses_;   ///< by node, as they are asked for
    std::map<std::tuple<std::string_view, port_shape, coding>, const port_group*> groups_;
    std::vector<std::vector<const instance_kind*>> kinds_;  ///< by component
    std::map<std::pair<std::int32_t, std::int32_t>, const instance_kind*> delay_kinds_;
    std::string scratch_;
    datapath result_;
};

}  // namespace

datapath make_datapath(const graph& values, const design& made, const schedule& times, const design_names& names,
                       const source_map& places, std::vector<std::string> header) {
    return datapath_maker(values, made, times, names, places).run(std::move(header));
}

}  // namespace xfc::flow
