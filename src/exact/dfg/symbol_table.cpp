// Reads the declarations from the label list: one record per declared name.

#include "exact/dfg/symbol_table.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "base/wrapping.h"
#include "exact/frontend/label_list.h"
#include "exact/frontend/labels.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

/// The type labels that a declaration collects; storage classes, signed, unsigned and void are not among them.
constexpr std::array collected_types{labels::type_long,  labels::type_short,  labels::type_char,
                                     labels::type_float, labels::type_double, labels::type_int};

void append_type(symbol_record& record, std::string_view label) {
    if (record.types == nullptr) {
        record.types = &current.symbols.type_lists.emplace_back();
    }
    record.types->push_back(label);
}

void set_qualifier(symbol_record& record, std::string_view label) {
    if (!record.qualifier.empty()) {
        report(message_id::qualifier_already_exists);
    }
    record.qualifier = label;
}

symbol_record* link_new_symbol_behind(symbol_record& last) {
    symbol_record* record = new_symbol();
    last.next = record;
    record->prev = &last;
    record->in_use = 1;
    return record;
}

void open_block() {
    current.symbols.open_blocks.push_back(++current.symbols.block_counter);
    symbol_record* before = current.symbols.newest;
    symbol_record* first_of_block = new_symbol();
    for (symbol_record* record = before; record != nullptr; record = record->prev) {
        record->block_successor = first_of_block;
    }
}

void close_block() {
    if (!current.symbols.open_blocks.empty()) {
        current.symbols.open_blocks.pop_back();
    }
}

/// The cursor stands on the declaration's first label and is left on its end, or on the list's.
void process_declaration() {
    if (current.symbols.newest->in_use != 0) {
        link_new_symbol_behind(*current.symbols.newest);
    }
    current.symbols.newest->in_use = 1;
    bool named = false;
    while (!at_label_list_end() && label_ahead() != labels::declaration_end) {
        const std::string_view label = label_ahead();
        if (std::find(collected_types.begin(), collected_types.end(), label) != collected_types.end()) {
            append_type(*current.symbols.newest, label);
        } else if (label == labels::qualifier_const || label == labels::qualifier_volatile) {
            set_qualifier(*current.symbols.newest, label);
        } else if (label == labels::identifier) {
            if (named) {
                // Kept: the further names of a declaration share its types but not its qualifier.
                type_list* types = current.symbols.newest->types;
                link_new_symbol_behind(*current.symbols.newest)->types = types;
            }
            named = true;
            ++current.label_cursor;
            current.symbols.newest->name = label_ahead();
        } else if (label == labels::initialized_declarator) {
            current.label_cursor += 2;
            current.symbols.newest->initial_value = evaluate_constant(current.symbols.newest->name);
        }
        ++current.label_cursor;
    }
    if (label_ahead() == labels::declaration_end) {
        current.symbols.newest->complete = 1;
    }
}

struct initializer_item {
    char operation = 0;  // '*', '+' or '-'; 0 for a value
    std::int32_t value = 0;
};

constexpr std::size_t most_items = 32;

struct item_collection {
    std::array<initializer_item, most_items> items{};  // the first ones; items past them only count
    std::size_t count = 0;
    bool has_value = false;
};

/// A decimal text read as a saturating 64-bit number, of which the low 32 bits are kept.
std::int32_t read_integer(std::string_view text) {
    return static_cast<std::int32_t>(std::strtoll(std::string(text).c_str(), nullptr, 10));
}

/// Kept: a unary minus, floating constants and names contribute nothing.
item_collection collect_items() {
    item_collection collection;
    for (; !at_label_list_end() && label_ahead() != labels::initializer_end; ++current.label_cursor) {
        const std::string_view label = label_ahead();
        initializer_item item;
        if (label == labels::multiply || label == labels::add || label == labels::subtract) {
            item.operation = label.back();
        } else if (label == labels::integer_constant) {
            ++current.label_cursor;
            item.value = read_integer(label_ahead());
            collection.has_value = true;
        } else {
            continue;
        }
        if (collection.count < most_items) {
            collection.items[collection.count] = item;
        }
        ++collection.count;
    }
    return collection;
}

/// The right operand stands before the left one.
std::int32_t apply(char operation, std::int32_t right, std::int32_t left) {
    switch (operation) {
        case '*':
            return wrapping_multiply(left, right);
        case '+':
            return wrapping_add(left, right);
        default:
            return wrapping_subtract(left, right);
    }
}

/// Replaces operators followed by two values until one item is left. Returns false when nothing more can be replaced.
bool reduce(item_collection& collection) {
    auto& items = collection.items;
    while (collection.count > 1) {
        bool replaced = false;
        for (std::size_t index = 0; index + 2 < collection.count; ++index) {
            if (items[index].operation == 0 || items[index + 1].operation != 0 || items[index + 2].operation != 0) {
                continue;
            }
            items[index] = {0, apply(items[index].operation, items[index + 1].value, items[index + 2].value)};
            std::move(items.begin() + index + 3, items.begin() + collection.count, items.begin() + index + 1);
            collection.count -= 2;
            replaced = true;
        }
        if (!replaced) {
            return false;
        }
    }
    return true;
}

}  // namespace

symbol_record* new_symbol() {
    current.symbols.newest = &current.symbols.records.emplace_back();
    current.symbols.newest->block = current.symbols.open_blocks.empty() ? 0 : current.symbols.open_blocks.back();
    current.symbols.newest->depth = static_cast<std::int32_t>(current.symbols.open_blocks.size());
    if (current.symbols.first == nullptr) {
        current.symbols.first = current.symbols.newest;
    }
    return current.symbols.newest;
}

std::int32_t evaluate_constant(std::string_view name) {
    item_collection collection = collect_items();
    const bool lone_operator = collection.count == 1 && !collection.has_value;
    if (!collection.has_value && !lone_operator) {
        fail(message_id::initializer_without_constant, name);
    }
    if (collection.count > most_items) {
        fail(message_id::initializer_too_long, name);
    }
    if (!reduce(collection)) {
        fail(message_id::initializer_not_reducible, name);
    }
    const std::int32_t value = collection.items[0].value;
    write_format(standard_output, "Value : %ld", value);
    return value;
}

void process_declarations() {
    new_symbol();
    for (current.label_cursor = 0; !at_label_list_end(); ++current.label_cursor) {
        const std::string_view label = label_ahead();
        if (label == labels::block_begin) {
            open_block();
        } else if (label == labels::block_end) {
            close_block();
        } else if (label == labels::declaration) {
            process_declaration();
        }
    }
}

const symbol_record* following_symbol(const symbol_record& record) {
    return record.next != nullptr && record.next->in_use != 0 ? record.next : record.block_successor;
}

}  // namespace xfc
