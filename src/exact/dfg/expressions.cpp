// Translates assignment statements, which the label list holds in prefix order with the right operand first, into
// operator, function and constant-input nodes.
//
//     y = a - b * 2;   list: "-" "*" 2 b a   graph:   a -> "-" input 0,  b -> "*" input 0,
//                                                     2 at "*" input 1,  "*" -> "-" input 1,  "-" -> y

#include "exact/dfg/expressions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "base/wrapping.h"
#include "exact/dfg/dfg.h"
#include "exact/dfg/symbol_table.h"
#include "exact/frontend/label_list.h"
#include "exact/frontend/labels.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

constexpr std::size_t most_tokens = 1000;
constexpr int most_steps = 2000;

enum class token_kind : std::uint8_t { function, named_value, constant, operation };

struct expr_token {
    token_kind kind;
    std::string_view name;  ///< identifier, function name or operator
    literal_kind literal;   ///< a constant's kind
    double value;           ///< a constant's value
    std::int32_t node;      ///< node that holds the value; -1 until known
};

constexpr std::string_view reduced_name = "synth0000";

struct operator_label_row {
    std::string_view label;
    std::string_view node_name;
};
constexpr std::array<operator_label_row, 4> operator_labels{{{labels::multiply, node_names::multiply},
                                                             {labels::add, node_names::add},
                                                             {labels::subtract, node_names::subtract},
                                                             {labels::divide, node_names::divide}}};

struct type_label_row {
    std::string_view label;
    number_format format;
};
/// The types that a variable of the datapath may have.
constexpr std::array<type_label_row, 3> type_labels{{{labels::type_long, number_format::long_integer},
                                                     {labels::type_float, number_format::single_float},
                                                     {labels::type_double, number_format::double_float}}};

/// Slot of a name, with 0 for a name that no node has. A graph without any node has no such slot.
std::int32_t look_up(std::string_view name) {
    if (dfg_used_slots() == 0) {
        fail(message_id::no_variable_declared);
    }
    return dfg_find_node(name);
}

/// A decimal number; what follows its digits, as the suffix of an integer constant, is dropped.
double read_number(std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return value;
}

bool is_number_label(std::string_view label) {
    return label == labels::float_constant || label == labels::integer_constant;
}

// ---- Tokenizing ----

/// Collects the tokens of one statement from the cursor up to the statement's end mark, or the list's end.
class tokenizer {
public:
    explicit tokenizer(std::string_view target) : target_(target) {}

    std::vector<expr_token> run() {
        while (!at_end()) {
            classify();
            if (!at_end()) {
                ++current.label_cursor;
            }
        }
        return std::move(tokens_);
    }

private:
    static bool at_end() { return at_label_list_end() || label_ahead() == labels::statement_end; }

    void classify() {
        if (label_ahead() == labels::unary_operation) {
            ++current.label_cursor;
        }
        bool minus = false;
        if (label_ahead() == labels::unary_minus) {
            ++current.label_cursor;
            minus = is_number_label(label_ahead());
            if (!minus) {
                emit(token_kind::function, node_names::negation);
            }
        }
        const std::string_view label = label_ahead();
        const auto* operation = std::find_if(operator_labels.begin(), operator_labels.end(),
                                             [label](const operator_label_row& row) { return row.label == label; });
        if (operation != operator_labels.end()) {
            emit(token_kind::operation, operation->node_name);
        } else if (label == labels::function_call) {
            emit(token_kind::function, label_ahead(2));
            step_over_function_name();
        } else if (label == labels::identifier) {
            ++current.label_cursor;
            emit(token_kind::named_value, label_ahead());
        } else if (is_number_label(label)) {
            ++current.label_cursor;
            const double value = read_number(label_ahead());
            emit_constant(label == labels::float_constant ? literal_kind::floating : literal_kind::integer,
                          minus ? -value : value);
        }
    }

    /// Puts the cursor on the name, or it would be a value as well; on the end mark when that comes first, which takes
    /// a called string.
    static void step_over_function_name() {
        for (int steps = 0; steps < 2 && !at_end(); ++steps) {
            ++current.label_cursor;
        }
    }

    void emit(token_kind kind, std::string_view name) { append({kind, name, literal_kind::none, 0, no_slot}); }
    void emit_constant(literal_kind kind, double value) { append({token_kind::constant, {}, kind, value, no_slot}); }

    void append(const expr_token& token) {
        if (tokens_.size() == most_tokens) {
            fail(message_id::expression_too_long, target_);
        }
        tokens_.push_back(token);
    }

    std::string_view target_;
    std::vector<expr_token> tokens_;
};

// ---- Reduction ----

/// Makes the port one that a literal feeds. A source that an earlier statement gave it stays.
void attach_constant(std::int32_t node, std::int32_t port, const expr_token& token) {
    dfg_input& input = node_at(node).inputs[port];
    input.is_constant = 1;
    input.constant_type = token.literal;
    input.constant_value = token.value;
}

/// Reduces the tokens of one statement to the node that holds its value.
class reducer {
public:
    explicit reducer(std::vector<expr_token> tokens) : tokens_(std::move(tokens)) {}

    /// The last node made. Ends the run after 2000 steps, those that changed nothing included.
    std::int32_t run() {
        for (int steps = 1; tokens_.size() != 1; ++steps) {
            if (steps > most_steps) {
                fail(message_id::reduction_endless);
            }
            step();
            if (cursor_ < tokens_.size()) {
                ++cursor_;
            }
            if (cursor_ >= tokens_.size()) {
                cursor_ = 0;
            }
        }
        return last_node_;
    }

private:
    [[nodiscard]] bool is_kind(std::size_t index, token_kind kind) const {
        return index < tokens_.size() && tokens_[index].kind == kind;
    }
    [[nodiscard]] bool is_value(std::size_t index) const {
        return is_kind(index, token_kind::named_value) || is_kind(index, token_kind::constant);
    }

    void step() {
        if (is_kind(cursor_, token_kind::function)) {
            if (takes_one_argument()) {
                reduce_one_argument();
                return;
            }
            if (is_value(cursor_ + 1) && is_value(cursor_ + 2)) {
                reduce_two_arguments();
            }
        } else if (is_kind(cursor_, token_kind::operation) && is_value(cursor_ + 1) && is_value(cursor_ + 2)) {
            reduce_operator();
        }
    }

    [[nodiscard]] bool takes_one_argument() const {
        const function_row* function = find_function(tokens_[cursor_].name);
        if (function == nullptr || function->arguments != 1) {
            return false;
        }
        if (is_kind(cursor_ + 1, token_kind::constant) && cursor_ + 2 >= tokens_.size()) {
            fail(message_id::constant_argument);
        }
        return is_kind(cursor_ + 1, token_kind::named_value);
    }

    void reduce_one_argument() {
        const std::int32_t node = dfg_create_node(tokens_[cursor_].name, 1, 1);
        const std::int32_t producer = attach(node, 0, tokens_[cursor_ + 1]);
        attributes_at(node).format = attributes_at(producer).format;
        replace_by(node, 1);
    }

    void reduce_two_arguments() {
        const std::int32_t node = dfg_create_node(tokens_[cursor_].name, 2, 1);
        expr_token& second = tokens_[cursor_ + 2];
        // A scale is a whole number of binary places.
        second.value = truncate_to_int32(second.value);
        attach(node, 0, second);
        if (is_kind(cursor_ + 1, token_kind::constant)) {
            fail(message_id::constant_operand);
        }
        attach(node, 1, tokens_[cursor_ + 1]);
        set_format(node);
        replace_by(node, 2);
    }

    void reduce_operator() {
        const std::int32_t node = dfg_create_node(tokens_[cursor_].name, 2, 1);
        attach(node, 0, tokens_[cursor_ + 2]);
        attach(node, 1, tokens_[cursor_ + 1]);
        set_format(node);
        replace_by(node, 2);
    }

    /// Feeds the port from the token: a constant, or the token's producer, which is returned.
    static std::int32_t attach(std::int32_t node, std::int32_t port, const expr_token& token) {
        if (token.kind == token_kind::constant) {
            attach_constant(node, port, token);
            return no_slot;
        }
        const std::int32_t producer = token.node >= 0 ? token.node : look_up(token.name);
        dfg_connect(producer, node, port);
        return producer;
    }

    static void set_format(std::int32_t slot) {
        dfg_node& node = node_at(slot);
        const auto operand_format = [&node](std::int32_t port) {
            const dfg_source* source = source_of(node, port);
            return source != nullptr ? attributes_at(source->node).format : number_format::none;
        };
        const number_format left = operand_format(0);
        const number_format right = operand_format(1);
        number_format& format = node.attributes.format;
        if (has_constant(node, 0)) {
            format = right;
            return;
        }
        if (has_constant(node, 1)) {
            format = left;
            return;
        }
        for (const number_format wider :
             {number_format::double_float, number_format::single_float, number_format::long_integer}) {
            if (left == wider || right == wider) {
                format = wider;
                return;
            }
        }
        fail(message_id::invalid_type);
    }

    /// The token at the cursor now stands for the node; the operands behind it are gone.
    void replace_by(std::int32_t node, std::ptrdiff_t operands) {
        tokens_[cursor_] = {token_kind::named_value, reduced_name, literal_kind::none, 0, node};
        const auto first = tokens_.begin() + static_cast<std::ptrdiff_t>(cursor_) + 1;
        tokens_.erase(first, first + operands);
        last_node_ = node;
    }

    std::vector<expr_token> tokens_;
    std::size_t cursor_ = 0;
    std::int32_t last_node_ = no_slot;
};

void assign_single_token(std::int32_t target, std::string_view target_name, const expr_token& token) {
    if (token.kind == token_kind::constant) {
        attach_constant(target, 0, token);
    } else if (token.kind == token_kind::named_value) {
        dfg_connect(look_up(token.name), target, 0);
        attributes_at(target).is_internal = 1;
    } else {
        fail(message_id::expression_without_value, target_name);
    }
}

}  // namespace

void create_variable_nodes() {
    for (const symbol_record* symbol = current.symbols.first; symbol != nullptr; symbol = following_symbol(*symbol)) {
        if (symbol->in_use == 0 || symbol->name.empty()) {
            continue;
        }
        const std::int32_t node = dfg_create_node(symbol->name, 1, 1);
        if (symbol->types == nullptr) {
            continue;
        }
        for (const std::string_view type : *symbol->types) {
            for (const type_label_row& row : type_labels) {
                if (row.label == type) {
                    attributes_at(node).format = row.format;
                }
            }
        }
    }
}

void translate_statement() {
    while (!at_label_list_end() && label_ahead() != labels::identifier) {
        ++current.label_cursor;
    }
    if (at_label_list_end()) {
        fail(message_id::assignment_missing);
    }
    ++current.label_cursor;
    const std::string_view target_name = label_ahead();
    const std::int32_t target = look_up(target_name);
    ++current.label_cursor;
    if (label_ahead() != labels::assignment) {
        fail(message_id::assignment_missing);
    }
    ++current.label_cursor;
    if (label_ahead() != labels::plain_assignment) {
        fail(message_id::assignment_not_plain);
    }
    ++current.label_cursor;

    std::vector<expr_token> tokens = tokenizer(target_name).run();
    if (tokens.size() == 1) {
        assign_single_token(target, target_name, tokens.front());
        return;
    }
    if (tokens.empty()) {
        fail(message_id::reduction_endless);
    }
    dfg_connect(reducer(std::move(tokens)).run(), target, 0);
    attributes_at(target).is_internal = 1;
}

void make_expressions() {
    dfg_create_graph();
    create_variable_nodes();
    write_format(standard_output, "***MAKE EXPRESSIONS***\n");
    for (current.label_cursor = 0; !at_label_list_end();) {
        if (label_ahead() == labels::statement_begin) {
            translate_statement();
        } else {
            ++current.label_cursor;
        }
    }
}

}  // namespace xfc
