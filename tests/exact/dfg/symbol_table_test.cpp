#include "exact/dfg/symbol_table.h"

#include <gtest/gtest.h>

#include "exact/frontend/label_list.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

using text_list = std::vector<std::string>;

/// The records of the readers' walk over a source without syntax errors whose declarations print nothing else.
std::vector<const symbol_record*> declared(const std::string& source, const std::string& printed = "") {
    const run_result result = declare_text(source);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_output, printed) << source;
    EXPECT_EQ(result.standard_error, "") << source;
    std::vector<const symbol_record*> records;
    for (const symbol_record* record = current.symbols.first; record != nullptr; record = following_symbol(*record)) {
        records.push_back(record);
    }
    return records;
}

text_list names(const std::vector<const symbol_record*>& records) {
    text_list found;
    for (const symbol_record* record : records) {
        found.emplace_back(record->name);
    }
    return found;
}

type_list types(const symbol_record* record) { return record->types == nullptr ? type_list{} : *record->types; }

/// The value of n in "long n = <initializer>;", which is also printed.
void expect_value(const std::string& initializer, std::int32_t value) {
    const auto records = declared("long n = " + initializer + ";", "Value : " + std::to_string(value));
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0]->name, "n") << initializer;
    EXPECT_EQ(records[0]->initial_value, value) << initializer;
}

/// The declaration of `name` ends the run with this line on the standard error.
void expect_refused(const std::string& source, const std::string& line) {
    const run_result result = declare_text(source);
    EXPECT_EQ(result.status, 1) << source;
    EXPECT_EQ(result.standard_output, "") << source;
    EXPECT_EQ(result.standard_error, line + "\n") << source;
}

TEST(symbol_records, are_empty_when_they_are_new) {
    current = {};
    const symbol_record* record = new_symbol();
    EXPECT_EQ(current.symbols.first, record);
    EXPECT_EQ(record->next, nullptr);
    EXPECT_EQ(record->prev, nullptr);
    EXPECT_EQ(record->block_successor, nullptr);
    EXPECT_EQ(record->scope_link, nullptr);
    EXPECT_EQ(record->name, "");
    EXPECT_EQ(record->types, nullptr);
    EXPECT_EQ(record->qualifier, "");
    EXPECT_EQ(record->block + record->depth + record->in_use + record->complete + record->initial_value, 0);
    const symbol_record* second = new_symbol();
    EXPECT_EQ(current.symbols.first, record);
    EXPECT_EQ(record->next, nullptr);
    EXPECT_EQ(second->prev, nullptr);
}

TEST(declarations, two_names_share_one_list_of_types) {
    const auto records = declared("float a, b;");
    EXPECT_EQ(names(records), (text_list{"a", "b"}));
    EXPECT_EQ(types(records.at(0)), (type_list{"T:Type_Float"}));
    EXPECT_EQ(records.at(0)->types, records.at(1)->types);
    EXPECT_EQ(records.at(0)->next, records.at(1));
    EXPECT_EQ(records.at(1)->prev, records.at(0));
    EXPECT_EQ(records.at(0)->prev, nullptr);
    EXPECT_EQ(records.at(1)->next, nullptr);
    EXPECT_EQ(records.at(0)->in_use, 1);
    EXPECT_EQ(records.at(1)->in_use, 1);
}

TEST(declarations, only_the_last_record_of_one_is_complete) {
    const auto records = declared("float a, b, c;");
    EXPECT_EQ(records.at(0)->complete, 0);
    EXPECT_EQ(records.at(1)->complete, 0);
    EXPECT_EQ(records.at(2)->complete, 1);
}

TEST(declarations, without_an_initializer_have_the_value_0) {
    const auto records = declared("float a, b; long n;");
    EXPECT_EQ(names(records), (text_list{"a", "b", "n"}));
    for (const symbol_record* record : records) {
        EXPECT_EQ(record->initial_value, 0);
    }
}

TEST(declarations, follow_each_other_in_one_chain) {
    const auto records = declared("float a; double b, c; long d;");
    EXPECT_EQ(names(records), (text_list{"a", "b", "c", "d"}));
    EXPECT_EQ(types(records.at(0)), (type_list{"T:Type_Float"}));
    EXPECT_EQ(types(records.at(1)), (type_list{"T:Type_Double"}));
    EXPECT_EQ(types(records.at(3)), (type_list{"T:Type_Long"}));
    EXPECT_NE(records.at(0)->types, records.at(1)->types);
    for (std::size_t index = 1; index < records.size(); ++index) {
        EXPECT_EQ(records.at(index - 1)->next, records.at(index));
        EXPECT_EQ(records.at(index)->prev, records.at(index - 1));
    }
    EXPECT_EQ(records.at(0)->scope_link, nullptr);
}

TEST(declarations, without_a_name_have_a_record_without_a_name) {
    const auto records = declared("float; double a;");
    EXPECT_EQ(names(records), (text_list{"", "a"}));
    EXPECT_EQ(records.at(0)->in_use, 1);
    EXPECT_EQ(records.at(0)->complete, 1);
}

TEST(declarations, none_at_all_leaves_one_unused_record) {
    const auto records = declared("main() { }");
    EXPECT_EQ(names(records), (text_list{""}));
    EXPECT_EQ(records.at(0)->in_use, 0);
    EXPECT_EQ(records.at(0)->complete, 0);
}

TEST(types, six_are_collected_in_order_of_appearance) {
    EXPECT_EQ(types(declared("long short char float double int a;").at(0)),
              (type_list{"T:Type_Long", "T:Type_Short", "T:Type_Char", "T:Type_Float", "T:Type_Double", "T:Type_Int"}));
    EXPECT_EQ(types(declared("int long int a;").at(0)), (type_list{"T:Type_Int", "T:Type_Long", "T:Type_Int"}));
}

TEST(types, other_specifiers_are_not_collected) {
    EXPECT_EQ(types(declared("static unsigned long a;").at(0)), (type_list{"T:Type_Long"}));
    EXPECT_EQ(types(declared("signed void a;").at(0)), type_list{});
    EXPECT_EQ(types(declared("extern struct s a;").at(0)), type_list{});
    EXPECT_EQ(types(declared("enum e a;").at(0)), type_list{});
    EXPECT_EQ(types(declared("typedef auto register float a;").at(0)), (type_list{"T:Type_Float"}));
}

TEST(qualifiers, mark_the_first_name_only) {
    const auto records = declared("const float a, b;");
    EXPECT_EQ(names(records), (text_list{"a", "b"}));
    EXPECT_EQ(records.at(0)->qualifier, "T:Const");
    EXPECT_EQ(records.at(1)->qualifier, "");
    EXPECT_EQ(records.at(0)->types, records.at(1)->types);
}

TEST(qualifiers, a_second_one_is_reported_and_wins) {
    EXPECT_EQ(declared("const volatile long n;", "type qualifier already exists").at(0)->qualifier, "T:Volatile");
    EXPECT_EQ(declared("volatile long const n;", "type qualifier already exists").at(0)->qualifier, "T:Const");
    EXPECT_EQ(declared("const const long n;", "type qualifier already exists").at(0)->qualifier, "T:Const");
    EXPECT_EQ(declared("const volatile const long n;", "type qualifier already existstype qualifier already exists")
                  .at(0)
                  ->qualifier,
              "T:Const");
}

TEST(qualifiers, each_declaration_has_its_own) {
    const auto records = declared("const float a; volatile float b; float c;");
    EXPECT_EQ(records.at(0)->qualifier, "T:Const");
    EXPECT_EQ(records.at(1)->qualifier, "T:Volatile");
    EXPECT_EQ(records.at(2)->qualifier, "");
}

TEST(qualifiers, one_behind_a_pointer_belongs_to_the_current_record) {
    EXPECT_EQ(declared("float * const p;").at(0)->qualifier, "T:Const");
    // The label stands before the second name, so the first record still gets it.
    const auto records = declared("const float a, * volatile b;", "type qualifier already exists");
    EXPECT_EQ(records.at(0)->qualifier, "T:Volatile");
    EXPECT_EQ(records.at(1)->qualifier, "");
}

TEST(names, in_array_bounds_and_parameter_lists_have_records_of_their_own) {
    EXPECT_EQ(names(declared("float a[n], b;")), (text_list{"a", "n", "b"}));
    const auto records = declared("float f(int i, long), g;");
    EXPECT_EQ(names(records), (text_list{"f", "i", "g"}));
    // The list is shared, so every name of the declaration sees all of its types.
    for (const symbol_record* record : records) {
        EXPECT_EQ(types(record), (type_list{"T:Type_Float", "T:Type_Int", "T:Type_Long"}));
    }
    EXPECT_EQ(names(declared("complex a, b;")), (text_list{"complex", "a", "b"}));
    EXPECT_EQ(names(declared("complex * p;")), (text_list{"complex", "p"}));
}

TEST(names, of_function_heads_have_none) { EXPECT_EQ(names(declared("float f(int a) { }")), (text_list{""})); }

TEST(names, in_an_initializer_have_none) {
    EXPECT_EQ(names(declared("long n = x = 4, m;", "Value : 4")), (text_list{"n", "m"}));
    EXPECT_EQ(names(declared("long n = x + y, m;", "Value : 0")), (text_list{"n", "m"}));
}

TEST(names, are_cut_to_31_characters) {
    EXPECT_EQ(names(declared("float " + std::string(40, 'a') + ";")), (text_list{std::string(31, 'a')}));
}

TEST(names, may_be_declared_twice) { EXPECT_EQ(names(declared("float a; double a;")), (text_list{"a", "a"})); }

TEST(blocks, the_body_of_a_function_is_block_1) {
    const auto records = declared("float a; main() { float b, c; double d; }");
    EXPECT_EQ(names(records), (text_list{"a", "b", "c", "d"}));
    EXPECT_EQ(records.at(0)->block, 0);
    EXPECT_EQ(records.at(0)->depth, 0);
    for (std::size_t index = 1; index < records.size(); ++index) {
        EXPECT_EQ(records.at(index)->block, 1);
        EXPECT_EQ(records.at(index)->depth, 1);
    }
}

TEST(blocks, a_second_function_is_block_2) {
    const auto records = declared("f() { float a; } g() { float b; }");
    EXPECT_EQ(names(records), (text_list{"", "a", "b"}));
    EXPECT_EQ(records.at(1)->block, 1);
    EXPECT_EQ(records.at(1)->depth, 1);
    EXPECT_EQ(records.at(2)->block, 2);
    EXPECT_EQ(records.at(2)->depth, 1);
}

TEST(blocks, inner_ones_are_deeper) {
    const auto records = declared("main() { float a; { float b; { float c; } } { float d; } }");
    EXPECT_EQ(names(records), (text_list{"", "a", "b", "c", "d"}));
    const std::vector<std::int32_t> blocks{0, 1, 2, 3, 4};
    const std::vector<std::int32_t> depths{0, 1, 2, 3, 2};
    for (std::size_t index = 0; index < records.size(); ++index) {
        EXPECT_EQ(records.at(index)->block, blocks.at(index));
        EXPECT_EQ(records.at(index)->depth, depths.at(index));
    }
}

TEST(blocks, are_linked_to_the_records_before_them_through_block_successor_only) {
    const auto records = declared("float a, b; main() { float c; }");
    EXPECT_EQ(names(records), (text_list{"a", "b", "c"}));
    EXPECT_EQ(records.at(0)->block_successor, records.at(2));
    EXPECT_EQ(records.at(1)->block_successor, records.at(2));
    EXPECT_EQ(records.at(1)->next, nullptr);
    EXPECT_EQ(records.at(2)->prev, nullptr);
    EXPECT_EQ(records.at(2)->block_successor, nullptr);
}

TEST(blocks, without_declarations_keep_a_record_without_a_name) {
    const auto records = declared("float a; main() { { } { ; } { float b; } }");
    // An empty pair of braces opens no block.
    EXPECT_EQ(names(records), (text_list{"a", "", "", "b"}));
    EXPECT_EQ(records.at(1)->in_use, 0);
    EXPECT_EQ(records.at(1)->block, 1);
    EXPECT_EQ(records.at(2)->block, 2);
    EXPECT_EQ(records.at(3)->block, 3);
}

TEST(blocks, a_declaration_behind_a_function_follows_the_record_before_it) {
    const auto records = declared("float a; f() { float b; } float c; g() { float d; }");
    EXPECT_EQ(names(records), (text_list{"a", "b", "c", "d"}));
    EXPECT_EQ(records.at(1)->next, records.at(2));
    EXPECT_EQ(records.at(2)->prev, records.at(1));
    EXPECT_EQ(records.at(2)->depth, 0);
    EXPECT_EQ(records.at(0)->block_successor, records.at(1));
    EXPECT_EQ(records.at(1)->block_successor, records.at(3));
    EXPECT_EQ(records.at(2)->block_successor, records.at(3));
}

TEST(blocks, a_declaration_behind_a_function_stands_in_block_0) {
    const auto records = declared("float a; f() { float b; } float c;");
    EXPECT_EQ(names(records), (text_list{"a", "b", "c"}));
    EXPECT_EQ(records.at(2)->block, 0);
}

TEST(initializers, sums_products_and_differences) {
    expect_value("3", 3);
    expect_value("2 * 3 + 1", 7);
    expect_value("1 + 2 * 3", 7);
    expect_value("10 - 4", 6);
    expect_value("10 - 4 - 3", 3);
    expect_value("10 - (4 - 3)", 9);
    expect_value("(1 + 2) * (3 + 4)", 21);
    expect_value("2 * 3 - 4 * 5", -14);
    expect_value("1 + 2 + 3 + 4 + 5 + 6", 21);
    expect_value("((((7))))", 7);
}

TEST(initializers, a_unary_minus_is_dropped) {
    expect_value("-5", 5);
    expect_value("3 - -2", 1);
    expect_value("-(2 + 3)", 5);
    expect_value("~6", 6);
}

TEST(initializers, everything_but_sums_products_differences_and_whole_numbers_is_ignored) {
    expect_value("7 << a", 7);
    expect_value("(4, b)", 4);
    expect_value("b = 4", 4);
    expect_value("f(4)", 4);
    expect_value("'a' | 4", 4);
    expect_value("b ? c : 4", 4);
    expect_value("sizeof (int) ? 4 : (float) 3", 4);
}

TEST(initializers, one_operator_alone_gives_0) {
    expect_value("a + b", 0);
    expect_value("1.5 * 2.5", 0);
    expect_value("a - 2.0", 0);
}

TEST(initializers, whole_numbers_are_64_bits_of_which_the_low_32_are_kept) {
    expect_value("017", 17);
    expect_value("12uL", 12);
    expect_value("2147483647", 2147483647);
    expect_value("2147483648", -2147483647 - 1);
    expect_value("4294967295", -1);
    expect_value("4294967299", 3);
    expect_value("9223372036854775807", -1);
    expect_value("99999999999999999999", -1);
    // Of more than 31 digits the first 31 are kept, which is still far too large.
    expect_value("1" + std::string(40, '0'), -1);
    // The first 31 of these are zeros.
    expect_value(std::string(31, '0') + "5", 0);
    expect_value(std::string(30, '0') + "5", 5);
}

TEST(initializers, arithmetic_wraps_at_32_bits) {
    expect_value("2147483647 + 1", -2147483647 - 1);
    expect_value("0 - 2147483648", -2147483647 - 1);
    expect_value("65536 * 65536", 0);
    expect_value("65537 * 65537", 131073);
    expect_value("2147483648 - 1", 2147483647);
    expect_value("4294967295 * 4294967295", 1);
}

TEST(initializers, belong_to_the_name_before_them) {
    const auto records = declared("long a = 1, b, c = 2 + 3;", "Value : 1Value : 5");
    EXPECT_EQ(names(records), (text_list{"a", "b", "c"}));
    EXPECT_EQ(records.at(0)->initial_value, 1);
    EXPECT_EQ(records.at(1)->initial_value, 0);
    EXPECT_EQ(records.at(2)->initial_value, 5);
}

TEST(initializers, of_a_list_the_first_one_counts) {
    const auto records = declared("long a[2] = { 4, 5 }; long b = { 6 };", "Value : 4Value : 6");
    EXPECT_EQ(names(records), (text_list{"a", "b"}));
    EXPECT_EQ(records.at(0)->initial_value, 4);
    EXPECT_EQ(records.at(1)->initial_value, 6);
}

std::string sum_of(std::size_t count) {
    std::string sum = "1";
    for (std::size_t index = 1; index < count; ++index) {
        sum += " + 1";
    }
    return sum;
}

TEST(initializers, hold_at_most_32_items) {
    // A sum of 16 numbers has 31 items, one of 17 has 33.
    expect_value(sum_of(16), 16);
    expect_refused("long n = " + sum_of(17) + ";", "Initializer of n is too long");
    // 32 items: the operator in front of the sum finds only one value.
    expect_refused("long n = (" + sum_of(16) + ") + a;", "Initializer of n cannot be evaluated");
    expect_refused("long n = (" + sum_of(16) + ") + a + b;", "Initializer of n is too long");
}

TEST(initializers, without_a_whole_number_are_refused) {
    expect_refused("float x = 2.5;", "Initializer of x has no integer constant");
    expect_refused("long n = a;", "Initializer of n has no integer constant");
    expect_refused("long n = 'a';", "Initializer of n has no integer constant");
    expect_refused("long n = \"a\";", "Initializer of n has no integer constant");
    expect_refused("long n = a + b + c;", "Initializer of n has no integer constant");
    expect_refused("long n = -a;", "Initializer of n has no integer constant");
    std::string many = "a";
    for (int count = 0; count < 40; ++count) {
        many += " + a";
    }
    expect_refused("long n = " + many + ";", "Initializer of n has no integer constant");
}

TEST(initializers, that_do_not_reduce_are_refused) {
    expect_refused("long n = 6 / 2;", "Initializer of n cannot be evaluated");
    const run_result second = declare_text("long n = 1, m = 6 / 2;");
    EXPECT_EQ(second.standard_output, "Value : 1");
    EXPECT_EQ(second.standard_error, "Initializer of m cannot be evaluated\n");
    expect_refused("long n = 2 + 2.5;", "Initializer of n cannot be evaluated");
    expect_refused("long n = f(1, 2);", "Initializer of n cannot be evaluated");
    expect_refused("long n = 1 << 2;", "Initializer of n cannot be evaluated");
    expect_refused("long n = a + 1 * 2;", "Initializer of n cannot be evaluated");
}

TEST(label_cursor, stands_at_the_end_of_the_list_afterwards) {
    static_cast<void>(declared("float a; main() { float b; a = b; }"));
    EXPECT_TRUE(at_label_list_end());
    EXPECT_EQ(label_ahead(), "");
}

}  // namespace

}  // namespace xfc::test
