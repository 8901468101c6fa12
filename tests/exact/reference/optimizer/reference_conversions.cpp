#include <string>
#include <vector>

#include "exact/reference/optimizer/reference_graph.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc::reference {

namespace {

/// The component whose name, without the library's prefix, is `kind`.
component_id conversion_of_kind(std::string_view kind) {
    for (const component_row& row : all_components()) {
        if (row.name.ends_with(kind)) {
            return row.id;
        }
    }
    return component_id::wire;
}

bool reaches_itself(std::int32_t start) {
    std::vector<bool> reached(static_cast<std::size_t>(current.graph.capacity), false);
    std::vector<std::int32_t> open{start};
    while (!open.empty()) {
        const std::int32_t slot = open.back();
        open.pop_back();
        for (std::int32_t port = 0; port < node_at(slot).input_count; ++port) {
            const dfg_source* link = source(slot, port);
            if (link == nullptr) {
                continue;
            }
            if (link->node == start) {
                return true;
            }
            if (!reached[static_cast<std::size_t>(link->node)]) {
                reached[static_cast<std::size_t>(link->node)] = true;
                open.push_back(link->node);
            }
        }
    }
    return false;
}

number_format format_named(std::string_view text) {
    for (const number_format_row& row : number_format_table) {
        if (row.text == text) {
            return row.format;
        }
    }
    return number_format::none;
}

char code_of(std::string_view format) {
    if (format == "Long") {
        return 'l';
    }
    if (format == "Float") {
        return 'f';
    }
    if (format == "Double") {
        return 'd';
    }
    if (format == "XFloat") {
        return 'x';
    }
    if (format == "YDouble") {
        return 'y';
    }
    fail(message_id::unknown_type, format);
}

void use_internal_formats() {
    for_each_node([](std::int32_t slot) {
        if (is_input(slot) || first_consumer(slot) == nullptr) {
            return;
        }
        if (format_of(slot) == "Float" && (is_additive(slot) || is_multiplicative(slot))) {
            attributes_at(slot).format = format_named("XFloat");
        } else if (format_of(slot) == "Double" && (is_additive(slot) || is_multiplicative(slot))) {
            attributes_at(slot).format = format_named("YDouble");
        }
    });
}

void follow_variables_one_by_one() {
    for_each_node([](std::int32_t slot) {
        if (is_input(slot) || first_consumer(slot) == nullptr || attributes_at(slot).is_internal != 1) {
            return;
        }
        std::int32_t reached = slot;
        do {
            const dfg_source* link = source(reached, 0);
            if (link == nullptr) {
                return;
            }
            reached = link->node;
        } while (attributes_at(reached).is_internal != 0);
        if (format_of(reached) == "XFloat" || format_of(reached) == "YDouble") {
            attributes_at(slot).format = attributes_at(reached).format;
        }
    });
}

void keep_products_of_inputs() {
    if (current.options.optimization <= 0) {
        return;
    }
    for_each_node([](std::int32_t slot) {
        if (name_of(slot) != "*" || format_of(slot) != "XFloat" || is_constant(slot, 0) || is_constant(slot, 1)) {
            return;
        }
        if (!is_input(source(slot, 0)->node) || !is_input(source(slot, 1)->node)) {
            return;
        }
        if (is_additive(first_consumer(slot)->node) && attributes_at(slot).fanout == 1) {
            attributes_at(slot).format = format_named("Float");
        }
    });
}

bool is_exempt(std::int32_t slot) {
    if (dfg_count_consumers(slot) != 1) {
        return false;
    }
    const std::string_view own = format_of(slot);
    const std::string_view other = format_of(first_consumer(slot)->node);
    return (is_multiplicative(slot) && own == "XFloat" && other == "Float") ||
           (name_of(slot) == "*" && own == "Float" && other == "XFloat") ||
           (is_multiplicative(slot) && own == "YDouble" && other == "Double");
}

void put_conversions() {
    for_each_node([](std::int32_t slot) {
        if (first_consumer(slot) == nullptr || is_exempt(slot)) {
            return;
        }
        for (dfg_link* link = first_consumer(slot); link != nullptr; link = link->next) {
            if (format_of(slot) == format_of(link->node)) {
                continue;
            }
            std::string kind = "castatoa";
            kind[4] = code_of(format_of(slot));
            kind[7] = code_of(format_of(link->node));
            const std::int32_t conversion = dfg_splice_node(slot, "cast", *link, link->node, link->port);
            attributes_at(conversion).component = conversion_of_kind(kind);
            if (kind != "castxtoy" && kind != "castytox") {
                attributes_at(conversion).is_normalized = 1;
            }
        }
    });
}

}  // namespace

std::string value_that_depends_on_itself() {
    std::string name;
    for_each_node([&](std::int32_t slot) {
        if (name.empty() && reaches_itself(slot)) {
            name = name_of(slot);
        }
    });
    return name;
}

void initialize_scratchpad() {
    for_each_node([](std::int32_t slot) { attributes_at(slot).fanout = dfg_count_consumers(slot); });
}

void identify_nodes() {
    for_each_node([](std::int32_t slot) {
        if (attributes_at(slot).is_internal == 1 && dfg_count_consumers(slot) == 0) {
            attributes_at(slot).is_internal = 0;
        }
    });
}

void insert_type_conversions() {
    if (const std::string name = value_that_depends_on_itself(); !name.empty()) {
        fail(message_id::cyclic_value, name);
    }
    use_internal_formats();
    follow_variables_one_by_one();
    keep_products_of_inputs();
    put_conversions();
}

}  // namespace xfc::reference
