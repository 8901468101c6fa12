#include <string_view>

#include "exact/reference/optimizer/reference_graph.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/compilation.h"

namespace xfc::reference {

namespace {

std::int32_t depth_of_operand(std::int32_t slot, std::int32_t port) {
    return is_constant(slot, port) ? 1 : attributes_at(source(slot, port)->node).cluster_depth;
}

void put_normalizer(std::int32_t producer, dfg_link& link) {
    const std::int32_t normalizer = dfg_splice_node(producer, "norm", link, link.node, link.port);
    attributes_at(normalizer).is_normalized = 1;
}

void start_depths() {
    for_each_node([](std::int32_t slot) { attributes_at(slot).cluster_depth = 1; });
}

}  // namespace

void renormalize_complex_clusters() {
    start_depths();
    std::int32_t previous = 0;
    std::int32_t raised = 0;
    std::int32_t iterations = 0;
    do {
        ++iterations;
        if (previous > 0 && previous > raised) {
            break;
        }
        previous = raised;
        raised = 0;
        const auto store = [&](std::int32_t slot, std::int32_t depth) {
            if (depth > attributes_at(slot).cluster_depth) {
                attributes_at(slot).cluster_depth = depth;
                if (depth > raised) {
                    raised = depth;
                }
            }
        };
        std::int32_t full = -1;
        for_each_node([&](std::int32_t slot) {
            if (full != -1) {
                return;
            }
            if (attributes_at(slot).is_internal == 1) {
                const bool starts_anew = attributes_at(slot).is_normalized == 1 || is_constant(slot, 0);
                store(slot, starts_anew ? 1 : depth_of_operand(slot, 0));
            } else if (is_additive(slot)) {
                const std::int32_t depth =
                    attributes_at(slot).is_normalized != 0 ? 1 : depth_of_operand(slot, 0) + depth_of_operand(slot, 1);
                store(slot, depth);
                if (depth >= current.options.clustersize) {
                    full = slot;
                }
            }
        });
        if (full == -1) {
            continue;
        }
        attributes_at(full).is_normalized = 1;
        for (dfg_link* link = first_consumer(full); link != nullptr; link = link->next) {
            if (is_additive(link->node) || attributes_at(link->node).is_internal == 1) {
                put_normalizer(full, *link);
            }
        }
        previous = 0;
        raised = 0;
        start_depths();
    } while (iterations < 100);
}

void insert_normalizations() {
    for_each_node([](std::int32_t slot) {
        if (first_consumer(slot) == nullptr || attributes_at(slot).is_normalized != 0) {
            return;
        }
        for (dfg_link* link = first_consumer(slot); link != nullptr; link = link->next) {
            if (!is_multiplicative(link->node)) {
                continue;
            }
            const std::string_view own = format_of(slot);
            const std::string_view other = format_of(link->node);
            if (is_multiplicative(slot) &&
                ((own == "YDouble" && other == "YDouble") || (own == "XFloat" && other == "XFloat"))) {
                continue;
            }
            if (own == "Long" || own == "Float" || own == "Double") {
                continue;
            }
            put_normalizer(slot, *link);
        }
    });
}

}  // namespace xfc::reference
