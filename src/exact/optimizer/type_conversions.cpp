// Puts arithmetic into the internal formats and a conversion on every edge whose two ends speak different formats.
// Before: formats are declared ones (Long, Float, Double) or empty.
// After:  producer and consumer of every edge agree, or the producer is a multiplier or divider whose component can
//         drive its only consumer's format itself.
//     [a : Float] -> [+ : Float]   becomes   [a : Float] -> [cast castftox : XFloat] -> [+ : XFloat]

#include <array>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/cycle_check.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

bool is_driven_and_read(const dfg_node& node) { return !is_primary_input(node) && consumers_of(node) != nullptr; }

void choose_internal_formats() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dfg_node& node = node_at(slot);
        if (!is_driven_and_read(node) || !(is_additive(node.attributes.is) || is_multiplicative(node.attributes.is))) {
            continue;
        }
        number_format& format = node.attributes.format;
        if (format == number_format::single_float) {
            format = number_format::xfloat;
        } else if (format == number_format::double_float) {
            format = number_format::ydouble;
        }
    }
}

/// Follows input 0 through pass-through variables to the node whose value they pass on. The chains share their tails,
/// so each step is remembered.
class passed_value_finder {
public:
    passed_value_finder() : origin_(static_cast<std::size_t>(dfg_used_slots()), no_slot) {}

    /// The first producer that is not a pass-through variable, or `no_slot` when the chain has no driver.
    std::int32_t origin_of(std::int32_t variable) {
        std::vector<std::int32_t> chain;
        std::int32_t slot = variable;
        while (attributes_at(slot).is_internal != 0 && remembered(slot) == no_slot) {
            chain.push_back(slot);
            const dfg_source* source = source_of(node_at(slot), 0);
            if (source == nullptr) {
                return no_slot;
            }
            slot = source->node;
        }
        const std::int32_t origin = attributes_at(slot).is_internal != 0 ? remembered(slot) : slot;
        for (const std::int32_t passed : chain) {
            remembered(passed) = origin;
        }
        return origin;
    }

private:
    std::int32_t& remembered(std::int32_t slot) { return origin_[static_cast<std::size_t>(slot)]; }

    std::vector<std::int32_t> origin_;
};

void give_variables_the_passed_format() {
    passed_value_finder finder;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dfg_node& node = node_at(slot);
        if (!is_driven_and_read(node) || node.attributes.is_internal != 1) {
            continue;
        }
        const std::int32_t origin = finder.origin_of(slot);
        if (origin == no_slot) {
            continue;
        }
        const number_format format = attributes_at(origin).format;
        if (format == number_format::xfloat || format == number_format::ydouble) {
            node.attributes.format = format;
        }
    }
}

/// Whether a literal-free product of two primary inputs goes to one adder.
bool is_dot_product_term(std::int32_t slot) {
    const dfg_node& node = node_at(slot);
    if (node.attributes.is != node_class::multiply || node.attributes.format != number_format::xfloat ||
        node.attributes.fanout != 1) {
        return false;
    }
    for (std::int32_t port = 0; port < 2; ++port) {
        const dfg_source* source = source_of(node, port);
        if (source == nullptr || has_constant(node, port) || !is_primary_input(node_at(source->node))) {
            return false;
        }
    }
    const dfg_link* consumer = consumers_of(node);
    return consumer != nullptr && is_additive(attributes_at(consumer->node).is);
}

/// IEEE products of inputs that feed an adder are mapped to the dot-product multipliers later.
void keep_dot_product_terms_in_ieee_format() {
    if (current.options.optimization <= 0) {
        return;
    }
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (is_dot_product_term(slot)) {
            attributes_at(slot).format = number_format::single_float;
        }
    }
}

struct exemption_row {
    node_class producer;
    number_format producer_format;
    number_format consumer_format;
};

/// Multipliers and dividers with an output in their only consumer's format.
constexpr std::array<exemption_row, 5> exemptions{{
    {node_class::divide, number_format::xfloat, number_format::single_float},
    {node_class::multiply, number_format::xfloat, number_format::single_float},
    {node_class::multiply, number_format::single_float, number_format::xfloat},
    {node_class::divide, number_format::ydouble, number_format::double_float},
    {node_class::multiply, number_format::ydouble, number_format::double_float},
}};

/// The consumer list must not be empty.
bool is_exempt(const dfg_node& producer) {
    const dfg_link* only = consumers_of(producer);
    if (only->next != nullptr) {
        return false;
    }
    const number_format consumer_format = attributes_at(only->node).format;
    for (const exemption_row& row : exemptions) {
        if (producer.attributes.is == row.producer && producer.attributes.format == row.producer_format &&
            consumer_format == row.consumer_format) {
            return true;
        }
    }
    return false;
}

/// Ends the run when a conversion from or to the format has no letter for it.
void require_format_code(number_format format) {
    const number_format_row& row = format_row(format);
    if (row.code == 0) {
        fail(message_id::unknown_type, row.text);
    }
}

/// The conversion between two formats.
component_id conversion_kind(number_format from, number_format to) {
    require_format_code(from);
    require_format_code(to);
    return conversion_between(from, to);
}

void insert_conversion(std::int32_t producer, dfg_link& link) {
    const std::int32_t consumer = link.node;
    const component_id kind = conversion_kind(attributes_at(producer).format, attributes_at(consumer).format);
    node_attributes& conversion =
        attributes_at(dfg_splice_node(producer, node_names::conversion, link, consumer, link.port));
    conversion.component = kind;
    if (kind != component_id::castxtoy && kind != component_id::castytox) {
        conversion.is_normalized = 1;
    }
}

void insert_conversions() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dfg_link* link = consumers_of(node_at(slot));
        if (link == nullptr || is_exempt(node_at(slot))) {
            continue;
        }
        const number_format format = attributes_at(slot).format;
        for (; link != nullptr; link = link->next) {
            if (attributes_at(link->node).format != format) {
                insert_conversion(slot, *link);
            }
        }
    }
}

}  // namespace

void insert_type_conversions() {
    require_acyclic_graph();
    choose_internal_formats();
    give_variables_the_passed_format();
    keep_dot_product_terms_in_ieee_format();
    insert_conversions();
}

}  // namespace xfc
