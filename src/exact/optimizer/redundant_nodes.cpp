// Merges nodes that compute the same from the same value: conversions, normalizers, delays, one phase each.
// Before: every edge is balanced; equal nodes have equal ready times.
// After:  of equal nodes the one in the lowest slot feeds their first consumers, the others are marked removed.
//     x -> [delay 3] -> [+]   becomes   x -> [delay 3] -> [+]
//     x -> [delay 3] -> [-]                          '--> [-]

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

/// The nodes that may be merged in one phase, in classes of equal driver and kind, each class in slot order. A merge
/// gives a consumer another driver; when the consumer may be merged itself it changes its class.
class merge_classes {
public:
    /// `kind_of` tells what two nodes of one class share besides their driver.
    using kind_function = std::int64_t (*)(const dfg_node&);

    /// Takes every node that `may_be_merged` accepts and that has a driver.
    template <class predicate>
    merge_classes(predicate may_be_merged, kind_function kind_of)
        : kind_of_(kind_of), next_(static_cast<std::size_t>(dfg_used_slots()), not_a_member) {
        for (std::int32_t slot = dfg_used_slots() - 1; slot >= 0; --slot) {
            const dfg_node& node = node_at(slot);
            if (source_of(node, 0) != nullptr && may_be_merged(node)) {
                std::int32_t& first = first_of_class(slot);
                next_[index(slot)] = first;
                first = slot;
            }
        }
    }

    [[nodiscard]] bool contains(std::int32_t slot) const { return next_[index(slot)] != not_a_member; }

    /// The next member of the slot's class in slot order, or `no_slot`. The slot must be a member.
    [[nodiscard]] std::int32_t following(std::int32_t slot) const { return next_[index(slot)]; }

    /// The member of the class of `kept` that comes next behind `slot`, which may have been a member of another class.
    [[nodiscard]] std::int32_t following_in_class_of(std::int32_t kept, std::int32_t slot) const {
        std::int32_t member = following(kept);
        while (member != no_slot && member <= slot) {
            member = following(member);
        }
        return member;
    }

    /// Gives an input of a node another source and the node, if it is a member, its place in its new class.
    void change_source(std::int32_t slot, std::int32_t port, std::int32_t producer) {
        const bool changes_class = port == 0 && contains(slot);
        if (changes_class) {
            std::int32_t* place = &first_of_class(slot);
            while (*place != slot) {
                place = &next_[index(*place)];
            }
            *place = next_[index(slot)];
        }
        dfg_set_source(slot, port, producer, 0);
        if (changes_class) {
            std::int32_t* place = &first_of_class(slot);
            while (*place != no_slot && *place < slot) {
                place = &next_[index(*place)];
            }
            next_[index(slot)] = *place;
            *place = slot;
        }
    }

private:
    static constexpr std::int32_t not_a_member = -2;

    static std::size_t index(std::int32_t slot) { return static_cast<std::size_t>(slot); }

    std::int32_t& first_of_class(std::int32_t slot) {
        const dfg_node& node = node_at(slot);
        const std::int64_t driver = source_of(node, 0)->node;
        return first_.try_emplace((driver << 32) + kind_of_(node), no_slot).first->second;
    }

    kind_function kind_of_;
    std::unordered_map<std::int64_t, std::int32_t> first_;
    std::vector<std::int32_t> next_;
};

std::int64_t component_of(const dfg_node& node) { return static_cast<std::int64_t>(node.attributes.component); }
std::int64_t length_of(const dfg_node& node) { return node.attributes.latency; }

/// Merges node `merged` into node `kept`, which stands in a lower slot; returns the consumer that changed its driver.
/// Kept: only the first consumer moves, and the consumer's port is printed for conversions only.
std::int32_t merge(merge_classes& classes, std::int32_t merged, std::int32_t kept, bool prints_port) {
    write_format(standard_output, "  Replace %ld with %ld  ", merged, kept);
    attributes_at(merged).is_removed = 1;
    const dfg_link consumer = *consumers_of(node_at(merged));
    classes.change_source(consumer.node, consumer.port, kept);
    if (prints_port) {
        write_format(standard_output, "Connect %ld,%ld to %ld  \n", consumer.node, consumer.port, kept);
    } else {
        write_format(standard_output, "Connect %ld to %ld  \n", consumer.node, kept);
    }
    dfg_add_consumer(kept, consumer.node, consumer.port);
    return consumer.node;
}

/// Lets every node for which `may_keep` holds take the later members of its class for which `may_merge` holds.
template <class keep_predicate, class merge_predicate>
void merge_class_members(merge_classes& classes, keep_predicate may_keep, merge_predicate may_merge, bool prints_port) {
    for (std::int32_t kept = 0; kept < dfg_used_slots(); ++kept) {
        if (!classes.contains(kept) || !may_keep(kept)) {
            continue;
        }
        for (std::int32_t slot = classes.following(kept); slot != no_slot;) {
            // A stale entry can make the keeping node itself the consumer that moves, and then it changes its class.
            const bool kept_moves = may_merge(kept, slot) && merge(classes, slot, kept, prints_port) == kept;
            slot = kept_moves ? classes.following_in_class_of(kept, slot) : classes.following(slot);
        }
    }
}

/// A node that nothing reads has no consumer to move and stays.
bool has_consumer(std::int32_t slot) { return consumers_of(node_at(slot)) != nullptr; }

// ---- Conversions ----

std::string_view first_consumer_name(std::int32_t slot) {
    return has_consumer(slot) ? node_at(consumers_of(node_at(slot))->node).name : std::string_view{};
}

/// Conversions into an internal format have attributes that depend on the operator they feed.
bool feed_alike(std::int32_t kept, std::int32_t merged) {
    switch (attributes_at(kept).format) {
        case number_format::xfloat:
        case number_format::ydouble:
            return has_consumer(kept) && first_consumer_name(kept) == first_consumer_name(merged);
        case number_format::single_float:
        case number_format::double_float:
            return true;
        default:
            return false;
    }
}

void merge_conversions() {
    // A variable may be named "cast"; then nodes with its component, wires, are candidates as well.
    std::vector<bool> candidate_components(all_components().size() + 1, false);
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (attributes_at(slot).is == node_class::conversion) {
            candidate_components[static_cast<std::size_t>(component_of(node_at(slot)))] = true;
        }
    }
    merge_classes classes(
        [&](const dfg_node& node) { return candidate_components[static_cast<std::size_t>(component_of(node))]; },
        component_of);
    merge_class_members(
        classes,
        [](std::int32_t slot) {
            return attributes_at(slot).is == node_class::conversion && attributes_at(slot).is_removed == 0;
        },
        [](std::int32_t kept, std::int32_t slot) {
            return attributes_at(slot).is_removed == 0 && has_consumer(slot) && feed_alike(kept, slot);
        },
        true);
}

// ---- Normalizers ----

bool is_normalizer(const dfg_node& node) {
    return node.attributes.component == component_id::normfp1x || node.attributes.component == component_id::normfp2x;
}

/// Kept: a normalizer that was merged already may be merged once more.
void merge_normalizers() {
    merge_classes classes(is_normalizer, component_of);
    const auto not_removed = [](std::int32_t slot) { return attributes_at(slot).is_removed == 0; };
    merge_class_members(
        classes, not_removed,
        [&](std::int32_t kept, std::int32_t slot) {
            return not_removed(kept) && has_consumer(slot) &&
                   node_at(slot).bus_modes.output_select == node_at(kept).bus_modes.output_select;
        },
        false);
}

// ---- Delays ----

void merge_delays() {
    merge_classes classes([](const dfg_node& node) { return node.attributes.is == node_class::delay; }, length_of);
    merge_class_members(
        classes, [](std::int32_t slot) { return attributes_at(slot).is_removed == 0; },
        [](std::int32_t kept, std::int32_t slot) {
            return attributes_at(slot).is_removed == 0 && has_consumer(slot) &&
                   node_at(slot).outputs[0].width == node_at(kept).outputs[0].width;
        },
        false);
}

}  // namespace

void remove_redundant_nodes() {
    merge_conversions();
    merge_normalizers();
    merge_delays();
}

}  // namespace xfc
