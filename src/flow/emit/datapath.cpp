#include "flow/emit/datapath.h"

#include <algorithm>
#include <iterator>

#include "flow/graph/port_names.h"

namespace xfc::flow {

namespace {

/// How a bus is spread over an instance's ports.
void connect_bus(instance_text& instance, port_shape shape, coding code, std::int32_t mantissa, bool is_result,
                 const std::string& prefix, const std::string& signal) {
    const bus_layout layout = layout_of(code, mantissa);
    const auto add = [&](const std::string& port, std::int32_t high, std::int32_t low, bool single_bit) {
        instance.connections.push_back({port, signal, high, low, single_bit, is_result});
    };
    if (shape == port_shape::boolean) {
        add(prefix, 1, 1, true);
        return;
    }
    if (shape == port_shape::unpacked_single || shape == port_shape::unpacked_double) {
        const std::string suffix = is_result ? "out" : "in";
        add("sign" + suffix, layout.sign, layout.sign, true);
        add("exponent" + suffix, layout.exponent.high, layout.exponent.low, false);
        add("mantissa" + suffix, layout.mantissa.high, layout.mantissa.low, false);
        return;
    }
    constexpr std::string_view flags[] = {"sat", "zip", "nan"};
    if (layout.sat == 0) {
        add(prefix, 0, 0, false);
        if (shape == port_shape::single_by_selector || shape == port_shape::double_by_selector) {
            for (const std::string_view flag : flags) {
                instance.open.push_back(prefix + std::string(flag));
            }
        }
        return;
    }
    add(prefix, layout.value, 1, false);
    add(prefix + std::string(flags[0]), layout.sat, layout.sat, true);
    add(prefix + std::string(flags[1]), layout.zip, layout.zip, true);
    add(prefix + std::string(flags[2]), layout.nan, layout.nan, true);
}

std::string binary(bus_bits bits, std::int32_t width) {
    std::string text;
    for (std::int32_t place = width - 1; place >= 0; --place) {
        text += bit(bits, place) ? '1' : '0';
    }
    return text;
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
          delays_(delays_of(made, times)) {}

    datapath run(std::vector<std::string> header) {
        result_.name = names_.design;
        result_.latency = times_.latency;
        result_.header = std::move(header);
        result_.start_chain = names_.others[static_cast<std::size_t>(common_name::start_chain)];
        name_the_rest();
        for (const port& one : values_.inputs()) {
            result_.inputs.push_back(
                {names_.inputs[result_.inputs.size()], format_bits(one.format), port_comment(one)});
        }
        for (node_id id = 0; id < made_.size(); ++id) {
            if (made_[id].kind == node_kind::input) {
                result_.inputs[made_[id].port].width = made_.width_of(id);
            }
            add_node(id);
            add_delays(id);
        }
        for (std::size_t place = 0; place < names_.outputs.size(); ++place) {
            const port& one = values_.outputs()[place];
            result_.outputs.push_back({{names_.outputs[place], made_.width_of(made_.outputs[place]), port_comment(one)},
                                       bus_at(made_.outputs[place], times_.latency)});
        }
        return std::move(result_);
    }

private:
    static std::string port_comment(const port& one) {
        return std::string(format_name(one.format)) + (one.c_access.empty() ? "" : ", " + one.c_access);
    }

    /// Delayed buses are called after their bus and its delay, instances after the bus that they drive.
    void name_the_rest() {
        std::vector<std::string> wanted;
        for (const auto& names : {names_.inputs, names_.outputs, names_.others, names_.nodes}) {
            wanted.insert(wanted.end(), names.begin(), names.end());
        }
        // Inputs stand twice, as ports and as nodes; names are wanted once each.
        std::sort(wanted.begin(), wanted.end());
        wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
        const std::size_t taken = wanted.size();
        for (node_id id = 0; id < made_.size(); ++id) {
            const std::string& name = names_.nodes[id];
            wanted.push_back(name + "_i");
            wanted.push_back(name + "_unused");
            for (const std::int32_t delay : delays_[id]) {
                wanted.push_back(name + "_d" + std::to_string(delay));
                wanted.push_back(wanted.back() + "_i");
            }
        }
        const std::vector<std::string> legal = legal_names(wanted, names_.design);
        auto next = legal.begin() + static_cast<std::ptrdiff_t>(taken);
        delayed_.resize(made_.size());
        for (node_id id = 0; id < made_.size(); ++id) {
            labels_.push_back(*next++);
            unread_.push_back(*next++);
            for (std::size_t tap = 0; tap < delays_[id].size(); ++tap) {
                const std::string& bus = *next++;
                delayed_[id].push_back({bus, *next++});
            }
        }
    }

    /// The name of a node's bus in a cycle.
    std::string bus_at(node_id id, std::int32_t cycle) const {
        const std::int32_t delay = cycle - ready_time(made_, times_, id);
        if (delay <= 0 || made_[id].kind == node_kind::constant) {
            return names_.nodes[id];
        }
        const auto tap = std::find(delays_[id].begin(), delays_[id].end(), delay) - delays_[id].begin();
        return delayed_[id][static_cast<std::size_t>(tap)].bus;
    }

    void add_node(node_id id) {
        const design_node& node = made_[id];
        const std::string& name = names_.nodes[id];
        const std::string comment = source_comment(values_, node.value, places_);
        if (node.kind == node_kind::input) {
            return;
        }
        bus_text bus{name, made_.width_of(id), std::string(row_of(node.code).text)};
        if (node.kind == node_kind::constant) {
            bus.comment += ", " + comment;
            result_.constants.push_back({bus, binary(node.bits, bus.width)});
            return;
        }
        bus.comment += " in cycle " + std::to_string(ready_time(made_, times_, id));
        result_.signals.push_back(bus);
        add_instance(id, comment);
    }

    void add_instance(node_id id, const std::string& comment) {
        const design_node& node = made_[id];
        const component_row& row = row_of(node.component);
        const bool converts =
            row.operation == component_operation::convert || row.operation == component_operation::normalize;
        instance_text instance{.label = labels_[id], .component = row.name, .clocked = row.clocked};
        instance.comment = comment + (converts ? ", as " + std::string(row_of(node.code).text) : "") + "; cycles " +
                           std::to_string(times_.start[id]) + " to " + std::to_string(ready_time(made_, times_, id));
        for (const generic_row& generic : row.generics) {
            instance.generics.emplace_back(generic.name, generic_value(generic, node.generics));
        }
        if (row.operation == component_operation::add_or_subtract) {
            (node.subtract ? instance.fixed_high : instance.fixed_low).emplace_back(control_port_of(row));
        }
        const std::string_view prefixes[] = {"aa", "bb", control_port_of(row)};
        const port_shape shapes[] = {row.aa, row.bb, port_shape::boolean};
        for (std::size_t place = 0; place < node.operand_span().size(); ++place) {
            const node_id operand = node.operands.at(place);
            connect_bus(instance, shapes[place], made_[operand].code, made_.options.mantissa, false,
                        std::string(prefixes[place]), bus_at(operand, times_.start[id]));
        }
        connect_bus(instance, row.cc, node.code, made_.options.mantissa, true, "cc", names_.nodes[id]);
        instance.unread = unread_[id];
        result_.instances.push_back(std::move(instance));
    }

    /// One line of delays with a tap for each cycle in which somebody reads the bus.
    void add_delays(node_id id) {
        std::string from = names_.nodes[id];
        std::int32_t done = 0;
        for (std::size_t tap = 0; tap < delays_[id].size(); ++tap) {
            const std::int32_t delay = delays_[id][tap];
            const std::string& to = delayed_[id][tap].bus;
            const std::int32_t width = made_.width_of(id);
            result_.signals.push_back({to, width, names_.nodes[id] + ", " + std::to_string(delay) + " cycles later"});
            result_.instances.push_back(
                {.label = delayed_[id][tap].label,
                 .component = row_of(component_id::delay).name,
                 .generics = {{"width", width}, {"delay", delay - done}, {"synthesize", 0}},
                 .connections = {{.port = "aa", .signal = from}, {.port = "cc", .signal = to, .output = true}}});
            from = to;
            done = delay;
        }
    }

    const graph& values_;
    const design& made_;
    const schedule& times_;
    const design_names& names_;
    const source_map& places_;
    const std::vector<std::vector<std::int32_t>> delays_;
    struct tap_names {
        std::string bus;
        std::string label;
    };
    std::vector<std::vector<tap_names>> delayed_;  ///< of each bus's taps
    std::vector<std::string> labels_;              ///< of instances, by node
    std::vector<std::string> unread_;              ///< of what an instance delivers and nobody reads, by node
    datapath result_;
};

}  // namespace

datapath make_datapath(const graph& values, const design& made, const schedule& times, const design_names& names,
                       const source_map& places, std::vector<std::string> header) {
    return datapath_maker(values, made, times, names, places).run(std::move(header));
}

}  // namespace xfc::flow
