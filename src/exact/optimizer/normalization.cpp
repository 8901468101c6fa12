// Decides where normalizers stand. Adders leave their result unnormalized; the error grows with every operand summed,
// and multipliers and dividers need normalized operands.
// Before: formats agree along every edge but those that a multiplier or divider serves itself.
// After:  a sum of `clustersize` operands is followed by a normalizer on its way to further sums (for the first hundred
//         such sums), and an unnormalized value of an internal format reaches a multiplier or divider only from another
//         one, or from a sum that was counted as normalized for its other consumers.
//     [+] -> [*]   becomes   [+] -> [norm] -> [*]

#include <algorithm>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"

namespace xfc {

namespace {

constexpr int most_iterations = 100;

void splice_normalizer(std::int32_t producer, dfg_link& link) {
    const std::int32_t normalizer = dfg_splice_node(producer, node_names::normalizer, link, link.node, link.port);
    attributes_at(normalizer).is_normalized = 1;
}

// ---- Renormalize complex clusters ----

void reset_cluster_depths() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        attributes_at(slot).cluster_depth = 1;
    }
}

/// Operands summed into the input's value since its last normalization. A literal counts as one.
std::int32_t operand_depth(const dfg_node& node, std::int32_t port) {
    const dfg_source* source = source_of(node, port);
    return has_constant(node, port) || source == nullptr ? 1 : attributes_at(source->node).cluster_depth;
}

/// One scan over the graph, ended by the first adder whose depth reaches the cluster size.
struct depth_scan {
    std::int32_t highest_raise = 0;
    std::int32_t full_adder = no_slot;

    void run() {
        for (std::int32_t slot = 0; slot < dfg_used_slots() && full_adder == no_slot; ++slot) {
            dfg_node& node = node_at(slot);
            if (node.attributes.is_internal == 1) {
                raise(node, node.attributes.is_normalized == 1 ? 1 : operand_depth(node, 0));
            } else if (is_additive(node.attributes.is)) {
                const std::int32_t depth =
                    node.attributes.is_normalized != 0 ? 1 : operand_depth(node, 0) + operand_depth(node, 1);
                raise(node, depth);
                if (depth >= current.options.clustersize) {
                    full_adder = slot;
                }
            }
        }
    }

    void raise(dfg_node& node, std::int32_t depth) {
        if (depth > node.attributes.cluster_depth) {
            node.attributes.cluster_depth = depth;
            highest_raise = std::max(highest_raise, depth);
        }
    }
};

/// Normalizes the node's value on its way to adders and pass-through variables. Other consumers get no normalizer,
/// here or later, since the node counts as normalized from now on.
void renormalize(std::int32_t slot) {
    attributes_at(slot).is_normalized = 1;
    for (dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
        if (is_additive(attributes_at(link->node).is) || attributes_at(link->node).is_internal == 1) {
            splice_normalizer(slot, *link);
        }
    }
}

// ---- Insert normalizations ----

bool is_internal_float(number_format format) {
    return format == number_format::xfloat || format == number_format::ydouble;
}

/// Whether values of the format may be unnormalized: IEEE values and integers need no normalizer.
bool may_be_unnormalized(number_format format) {
    return format != number_format::long_integer && format != number_format::single_float &&
           format != number_format::double_float;
}

/// Multipliers and dividers need normalized operands, but for those that one of them made in the same format.
bool needs_normalizer(std::int32_t producer, std::int32_t consumer) {
    if (!is_multiplicative(attributes_at(consumer).is)) {
        return false;
    }
    const number_format format = attributes_at(producer).format;
    return !is_multiplicative(attributes_at(producer).is) || format != attributes_at(consumer).format ||
           !is_internal_float(format);
}

}  // namespace

/// Kept: the pass stops when a scan raises nothing, or only to a lower depth, after one that raised something; it
/// restarts after every renormalization, and a hundred scans are all it makes.
void renormalize_complex_clusters() {
    reset_cluster_depths();
    std::int32_t previous_raise = 0;
    std::int32_t raise = 0;
    for (int iteration = 1; iteration <= most_iterations; ++iteration) {
        if (previous_raise > 0 && previous_raise > raise) {
            return;
        }
        depth_scan scan;
        scan.run();
        previous_raise = raise;
        raise = scan.highest_raise;
        if (scan.full_adder != no_slot) {
            renormalize(scan.full_adder);
            reset_cluster_depths();
            previous_raise = 0;
            raise = 0;
        } else if (previous_raise == 0 && raise == 0) {
            // The scans that remain would find the same graph and raise nothing either.
            return;
        }
    }
}

void insert_normalizations() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (attributes_at(slot).is_normalized != 0 || !may_be_unnormalized(attributes_at(slot).format)) {
            continue;
        }
        for (dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
            if (needs_normalizer(slot, link->node)) {
                splice_normalizer(slot, *link);
            }
        }
    }
}

}  // namespace xfc
