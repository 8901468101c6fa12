#include <gtest/gtest.h>

#include "exact/frontend/label_texts.h"

namespace xfc::test {

namespace {

const label_texts float_a{"S:Declaration", "B:decl_spec init_decl_list", "T:Type_Float", "T:IDENTIFIER", "a", "S:END"};
const label_texts float_b{"S:Declaration", "B:decl_spec init_decl_list", "T:Type_Float", "T:IDENTIFIER", "b", "S:END"};

TEST(translation_unit, a_single_declaration_is_the_tree_by_itself) { EXPECT_EQ(labels_of("float a;"), float_a); }

TEST(translation_unit, further_declarations_nest_to_the_left) {
    EXPECT_EQ(labels_of("float a; float b;"), (label_texts{"B:tran_unit ext_decl"} + float_a + float_b));
    EXPECT_EQ(labels_of("float a; float b; float a;"),
              (label_texts{"B:tran_unit ext_decl", "B:tran_unit ext_decl"} + float_a + float_b + float_a));
}

TEST(declarations, with_and_without_declarators) {
    EXPECT_EQ(labels_of("float;"), (label_texts{"S:Declaration", "T:Type_Float", "S:END"}));
    EXPECT_EQ(labels_of("float a;"), float_a);
    EXPECT_EQ(labels_of("float x = 3;"),
              (label_texts{"S:Declaration", "B:decl_spec init_decl_list", "T:Type_Float", "T:IDENTIFIER", "x",
                           "B:decl=init", "T:start_expr", "T:INTEGER_CONSTANT", "3", "T:end_expr", "S:END"}));
}

TEST(declarations, may_begin_with_a_name) {
    EXPECT_EQ(declaration_labels("complex a;"), (label_texts{"B:id id_list"} + name("complex") + name("a")));
    EXPECT_EQ(declaration_labels("complex a, b, c;"),
              (label_texts{"B:id id_list"} + name("complex") + label_texts{"id_list,id", "id_list,id"} + name("a") +
               name("b") + name("c")));
    EXPECT_EQ(declaration_labels("vector a[n];"),
              (label_texts{"B:id id[id]"} + name("vector") + label_texts{"B:id[id]"} + name("a") + name("n")));
    EXPECT_EQ(declaration_labels("complex * p;"), (label_texts{"B:id*id"} + name("complex") + name("p")));
}

TEST(declarations, in_a_row_nest_to_the_left) {
    EXPECT_EQ(between({"B:decl comp_stat", "B:direct_decl()", "T:IDENTIFIER", "main", "B:{decl_list}", "{"},
                      labels_of("main() { float a; float b; float a; }"), {"}"}),
              (label_texts{"B:decl_list decl", "B:decl_list decl"} + float_a + float_b + float_a));
}

TEST(specifiers, each_storage_class_has_its_label) {
    const std::vector<std::pair<std::string, std::string>> rows{{"auto", "T:Auto"},
                                                                {"extern", "T:Extern"},
                                                                {"register", "T:Register"},
                                                                {"static", "T:Static"},
                                                                {"typedef", "T:Typedef"}};
    for (const auto& [word, label] : rows) {
        EXPECT_EQ(specifier_labels(word), (label_texts{label}));
        EXPECT_EQ(specifier_labels(word + " int"), (label_texts{"B:storage_class_decl_spec", label, "T:Type_Int"}));
    }
}

TEST(specifiers, each_type_has_its_label) {
    const std::vector<std::pair<std::string, std::string>> rows{{"char", "T:Type_Char"},
                                                                {"double", "T:Type_Double"},
                                                                {"float", "T:Type_Float"},
                                                                {"int", "T:Type_Int"},
                                                                {"long", "T:Type_Long"},
                                                                {"short", "T:Type_Short"},
                                                                {"signed", "Type_Signed"},
                                                                {"unsigned", "T:Type_Unsigned"},
                                                                {"void", "T;Type_Void"},
                                                                {"enum e", "TYPE_ENUM_SPECIFIER"},
                                                                {"struct s", "TYPE_STRUCTORUNION"},
                                                                {"union u", "TYPE_STRUCTORUNION"}};
    for (const auto& [word, label] : rows) {
        EXPECT_EQ(specifier_labels(word), (label_texts{label}));
        EXPECT_EQ(specifier_labels(word + " int"), (label_texts{"type_spec_decl_spec", label, "T:Type_Int"}));
    }
}

TEST(specifiers, each_qualifier_has_its_label) {
    EXPECT_EQ(specifier_labels("const"), (label_texts{"T:Const"}));
    EXPECT_EQ(specifier_labels("volatile"), (label_texts{"T:Volatile"}));
    EXPECT_EQ(specifier_labels("const int"), (label_texts{"B:type_qualifier_decl_spec", "T:Const", "T:Type_Int"}));
    EXPECT_EQ(specifier_labels("volatile int"),
              (label_texts{"B:type_qualifier_decl_spec", "T:Volatile", "T:Type_Int"}));
}

TEST(specifiers, lean_to_the_right) {
    EXPECT_EQ(specifier_labels("static const unsigned long"),
              (label_texts{"B:storage_class_decl_spec", "T:Static", "B:type_qualifier_decl_spec", "T:Const",
                           "type_spec_decl_spec", "T:Type_Unsigned", "T:Type_Long"}));
}

TEST(specifiers, the_inside_of_structures_and_enumerations_leaves_nothing) {
    EXPECT_EQ(specifier_labels("struct { float a, *b; const int c : 3, : 2; long (*d)(int); }"),
              (label_texts{"TYPE_STRUCTORUNION"}));
    EXPECT_EQ(specifier_labels("union u { const struct { int i; } s; double d[3]; }"),
              (label_texts{"TYPE_STRUCTORUNION"}));
    EXPECT_EQ(specifier_labels("enum { red, green = 1 + 2, blue }"), (label_texts{"TYPE_ENUM_SPECIFIER"}));
    EXPECT_EQ(specifier_labels("enum color { red }"), (label_texts{"TYPE_ENUM_SPECIFIER"}));
    EXPECT_EQ(declaration_labels("struct s { int i; };"), (label_texts{"TYPE_STRUCTORUNION"}));
}

TEST(specifiers, structures_and_enumerations_are_neither_empty_nor_end_in_a_comma) {
    for (const std::string source : {"struct s { } x;", "enum e { } x;", "enum e { red, } x;", "union { } x;"}) {
        EXPECT_NE(parse_text(source).standard_output, "") << source;
    }
}

TEST(declarators, in_a_row_nest_to_the_left) {
    EXPECT_EQ(declarator_labels("a, b, c"), (label_texts{"B:init_decl_list,init_decl", "B:init_decl_list,init_decl"} +
                                             name("a") + name("b") + name("c")));
    EXPECT_EQ(declarator_labels("a = 1, b"),
              (label_texts{"B:init_decl_list,init_decl"} + name("a") + label_texts{"B:decl=init", "T:start_expr"} +
               integer("1") + label_texts{"T:end_expr"} + name("b")));
}

TEST(declarators, arrays_functions_and_parentheses) {
    EXPECT_EQ(declarator_labels("a"), name("a"));
    EXPECT_EQ(declarator_labels("(a)"), (label_texts{"B:(direct_decl)"} + name("a")));
    EXPECT_EQ(declarator_labels("a[3]"), (label_texts{"B:direct_decl[const_exp]"} + name("a") + integer("3")));
    EXPECT_EQ(declarator_labels("a[]"), (label_texts{"B:direct_decl[]"} + name("a")));
    EXPECT_EQ(declarator_labels("a(int)"),
              (label_texts{"B:direct_decl(parm_type_list)"} + name("a") + label_texts{"T:Type_Int"}));
    EXPECT_EQ(declarator_labels("a(b)"), (label_texts{"B:direct_decl(id_list)"} + name("a") + name("b")));
    EXPECT_EQ(declarator_labels("a(b, c)"),
              (label_texts{"B:direct_decl(id_list)"} + name("a") + label_texts{"id_list,id"} + name("b") + name("c")));
    EXPECT_EQ(declarator_labels("a()"), (label_texts{"B:direct_decl()"} + name("a")));
    EXPECT_EQ(declarator_labels("a[2][3]"), (label_texts{"B:direct_decl[const_exp]", "B:direct_decl[const_exp]"} +
                                             name("a") + integer("2") + integer("3")));
}

TEST(declarators, pointers) {
    const label_texts p = name("p");
    EXPECT_EQ(declarator_labels("*p"), (label_texts{"B:pointer direct_decl", "B:*"} + p));
    EXPECT_EQ(declarator_labels("* const p"), (label_texts{"B:pointer direct_decl", "B:*type_q_list", "T:Const"} + p));
    EXPECT_EQ(declarator_labels("**p"), (label_texts{"B:pointer direct_decl", "B:* pointer", "B:*"} + p));
    EXPECT_EQ(declarator_labels("* volatile * p"),
              (label_texts{"B:pointer direct_decl", "B:* type_q_list pointer", "T:Volatile", "B:*"} + p));
    EXPECT_EQ(declarator_labels("* const volatile const p"),
              (label_texts{"B:pointer direct_decl", "B:*type_q_list", "B:type_q_list type_q", "B:type_q_list type_q",
                           "T:Const", "T:Volatile", "T:Const"} +
               p));
    EXPECT_EQ(declarator_labels("(*p)(int)"),
              (label_texts{"B:direct_decl(parm_type_list)", "B:(direct_decl)", "B:pointer direct_decl", "B:*"} + p +
               label_texts{"T:Type_Int"}));
}

TEST(parameters, with_and_without_names) {
    const label_texts frame = label_texts{"B:direct_decl(parm_type_list)"} + name("f");
    EXPECT_EQ(declarator_labels("f(int a)"), (frame + label_texts{"B:decl_spec_decl", "T:Type_Int"} + name("a")));
    EXPECT_EQ(declarator_labels("f(int *)"), (frame + label_texts{"B:decl_spec_abs_decl", "T:Type_Int", "B:*"}));
    EXPECT_EQ(declarator_labels("f(int, long, char)"),
              (frame + label_texts{"B:parm_list,parm_decl", "B:parm_list,parm_decl", "T:Type_Int", "T:Type_Long",
                                   "T:Type_Char"}));
    EXPECT_EQ(declarator_labels("f(int a, long b)"),
              (frame + label_texts{"B:parm_list,parm_decl", "B:decl_spec_decl", "T:Type_Int"} + name("a") +
               label_texts{"B:decl_spec_decl", "T:Type_Long"} + name("b")));
}

TEST(parameters, an_abstract_declarator_passes_on_its_first_symbol) {
    const label_texts frame =
        label_texts{"B:direct_decl(parm_type_list)"} + name("f") + label_texts{"B:decl_spec_abs_decl", "T:Type_Int"};
    EXPECT_EQ(declarator_labels("f(int [3])"), frame);
    EXPECT_EQ(declarator_labels("f(int [])"), frame);
    EXPECT_EQ(declarator_labels("f(int ())"), frame);
    EXPECT_EQ(declarator_labels("f(int (long))"), frame);
    EXPECT_EQ(declarator_labels("f(int (*)(long))"), frame);
    EXPECT_EQ(declarator_labels("f(int (*)())"), frame);
    EXPECT_EQ(declarator_labels("f(int [][2])"), frame);
    EXPECT_EQ(declarator_labels("f(int [2][])"), frame);
    EXPECT_EQ(declarator_labels("f(int * [3])"), (frame + label_texts{"B:*"}));
}

TEST(initializers, an_expression_stands_between_its_marks) {
    const label_texts start = name("a") + label_texts{"B:decl=init", "T:start_expr"};
    EXPECT_EQ(declarator_labels("a = 1 - 2"),
              (start + label_texts{"OP:-"} + integer("2") + integer("1") + label_texts{"T:end_expr"}));
    EXPECT_EQ(declarator_labels("a = b = 1"),
              (start + label_texts{"B:assignment_expression"} + name("b") + label_texts{"B:=expression", "T:="} +
               integer("1") + label_texts{"T:end_expr"}));
}

TEST(initializers, lists) {
    const label_texts one = label_texts{"T:start_expr"} + integer("1") + label_texts{"T:end_expr"};
    const label_texts two = label_texts{"T:start_expr"} + integer("2") + label_texts{"T:end_expr"};
    const label_texts start = name("a") + label_texts{"B:decl=init"};
    EXPECT_EQ(declarator_labels("a = {1}"), (start + label_texts{"B:{init_list}"} + one));
    EXPECT_EQ(declarator_labels("a = {1,}"), (start + label_texts{"B:{init_list,}"} + one));
    EXPECT_EQ(declarator_labels("a = {1, 2}"),
              (start + label_texts{"B:{init_list}", "B:init_list,init_list"} + one + two));
    EXPECT_EQ(declarator_labels("a = {1, 2,}"),
              (start + label_texts{"B:{init_list,}", "B:init_list,init_list"} + one + two));
    EXPECT_EQ(declarator_labels("a = {{1}, 2}"),
              (start + label_texts{"B:{init_list}", "B:init_list,init_list", "B:{init_list}"} + one + two));
}

TEST(functions, the_four_forms) {
    const label_texts f_of_a = label_texts{"B:direct_decl(id_list)"} + name("f") + name("a");
    // The first label has 36 characters, of which 31 are kept.
    EXPECT_EQ(labels_of("float f(a) float a; { }"),
              (label_texts{"B:decl_spec decl decl_list comp", "T:Type_Float", "B:decl decl_list comp_stat"} + f_of_a +
               label_texts{"B:decl_list comp_stat"} + float_a + label_texts{"T:{}"}));
    EXPECT_EQ(
        labels_of("float f(a) { }"),
        (label_texts{"B:decl_spec decl comp_stat", "T:Type_Float", "B:decl comp_stat"} + f_of_a + label_texts{"T:{}"}));
    EXPECT_EQ(labels_of("f(a) float a; { }"), (label_texts{"B:decl decl_list comp_stat"} + f_of_a +
                                               label_texts{"B:decl_list comp_stat"} + float_a + label_texts{"T:{}"}));
    EXPECT_EQ(labels_of("f(a) { }"), (label_texts{"B:decl comp_stat"} + f_of_a + label_texts{"T:{}"}));
}

TEST(functions, follow_declarations_in_the_unit) {
    EXPECT_EQ(labels_of("float a; f() { }"),
              (label_texts{"B:tran_unit ext_decl"} + float_a + label_texts{"B:decl comp_stat", "B:direct_decl()"} +
               name("f") + label_texts{"T:{}"}));
}

}  // namespace

}  // namespace xfc::test
