// The accepted language, ANSI C without preprocessing, and the parse tree built from it.
//
// A production without an assignment to $$ passes on the value of its first symbol; tokens have no value. So the
// keyword-led statements and everything inside structures, enumerations, type names and abstract declarators leave no
// subtree, and a parenthesised expression passes on the inner one.
//
// Leaves take the text of the token just read. That is sound because the state behind such a token has one reduction
// and nothing else, so it reduces without reading ahead.
//
// Kept: shift, additive and multiplicative nodes hold their right operand first; all other operators the left one.
// Kept: children taken from punctuation are empty: a cast loses type and operand, a member access the member's name.
// Kept: the labels without their prefix ("Type_Signed", "type_spec_decl_spec") or with a wrong one ("T;Type_Void").

%require "3.8"
%define api.prefix {xfc_yy}
%define api.token.prefix {token_}
%define api.value.type {parse_node*}

// Conflicts fall to yacc's rules. Five shift/reduce: the dangling else, and an identifier that may begin a declaration
// ("name * name ;") as well as a declarator or an expression; all shift. Thirty-one reduce/reduce: an erroneous "... ;"
// at the head of a block is a declaration rather than a statement, whatever token follows.

%code requires {
#include "exact/frontend/parse_tree.h"

using xfc::parse_node;
}

%code {
#include "exact/run/console.h"
#include "exact/run/compilation.h"
#include "exact/frontend/labels.h"
#include "exact/frontend/parser.h"
#include "exact/frontend/scanner.h"

using namespace xfc;

namespace {

constexpr std::string_view stack_overflow = "pcyacc internal stack overflow";

parse_node* make_leaf(std::string_view label, std::string_view text = {}) {
    return make_node(nullptr, nullptr, label, text);
}

int xfc_yylex() { return next_token(); }

void xfc_yyerror(const char* text) {
    const bool overflow = text == stack_overflow;
    if (!overflow) {
        ++current.error_count;
    }
    report(message_id::parse_error_line, current.line_number, text, token_text());
}

}  // namespace

// The stack's last place holds a state only for the moment in which the overflow is noticed.
#define YYINITDEPTH (parser_stack_states + 1)
#define YYMAXDEPTH YYINITDEPTH
// The parser's two texts; the one for a full stack is this compiler's own.
#define YY_(text) (std::string_view(text) == "memory exhausted" ? stack_overflow.data() : text)
}

%token END_OF_INPUT 0
%token CHARACTER_CONSTANT 258 FLOATING_CONSTANT 259 INTEGER_CONSTANT 260 STRING 261 IDENTIFIER 262
// Declared, and never returned by the scanner.
%token TYPENAME 263 ENUMERATION_CONSTANT 264 DDD 318
%token AUTO 265 BREAK 266 CASE 267 CHAR 268 CONST 269 CONTINUE 270 DEFAULT 271 DO 272 DOUBLE 273 ELSE 274 ENUM 275
%token EXTERN 276 FLOAT 277 FOR 278 GOTO 279 IF 280 INT 281 LONG 282 REGISTER 283 RETURN 284 SHORT 285 SIGNED 286
%token SIZEOF 287 STATIC 288 STRUCT 289 SWITCH 290 TYPEDEF 291 VOID 292 VOLATILE 293 UNION 294 UNSIGNED 295 WHILE 296
%token OROR 297 ANDAND 298 EQU 299 NEQ 300 LEQ 301 GEQ 302 SHL 303 SHR 304 ADDADD 305 SUBSUB 306 PTR 307
%token ADD_ASSIGN 308 SUB_ASSIGN 309 MUL_ASSIGN 310 DIV_ASSIGN 311 MOD_ASSIGN 312 SHL_ASSIGN 313 SHR_ASSIGN 314
%token AND_ASSIGN 315 XOR_ASSIGN 316 OR_ASSIGN 317

%%

translation_unit:
      external_declaration
        { trace_reduction("Top:translation_unit:external_declaration\n"); current.tree.root = $$ = $1; }
    | translation_unit external_declaration
        { trace_reduction("Top:translation_unit:translation_unit external_declaration\n");
          current.tree.root = $$ = make_node($1, $2, "B:tran_unit ext_decl"); }
    | error { trace_reduction("Top:translation_unit:error\n"); current.tree.root = $$ = $1; }
    ;

external_declaration:
      function_definition { trace_reduction("Node:external_declaration:function_definition\n"); }
    | declaration { trace_reduction("Node:external_declaration:declaration\n"); }
    ;

function_definition:
      declaration_specifiers declarator declaration_list compound_statement
        { trace_reduction("Branch:function_definition:declaration_specifiers declarator declaration_list "
                          "compound_statement\n");
          $$ = make_node($1, make_node($2, make_node($3, $4, "B:decl_list comp_stat"),
                         "B:decl decl_list comp_stat"), "B:decl_spec decl decl_list comp_stat"); }
    | declaration_specifiers declarator compound_statement
        { trace_reduction("Branch:function_definition:declaration_specifiers declarator compound_statement\n");
          $$ = make_node($1, make_node($2, $3, "B:decl comp_stat"), "B:decl_spec decl comp_stat"); }
    | declarator declaration_list compound_statement
        { trace_reduction("Branch:function_definition:declarator declaration_list compound_statement\n");
          $$ = make_node($1, make_node($2, $3, "B:decl_list comp_stat"), "B:decl decl_list comp_stat"); }
    | declarator compound_statement
        { trace_reduction("Branch:function_definition:declarator compound_statement\n");
          $$ = make_node($1, $2, "B:decl comp_stat"); }
    | declaration_specifiers error compound_statement
        { trace_reduction("Branch:function_definition:declaration_specifiers error compound_statement\n"); }
    | declarator error compound_statement
        { trace_reduction("Branch:function_definition:declarator error compound_statement\n"); }
    ;

declaration:
      declaration_specifiers init_declarator_list ';'
        { trace_reduction("Branch:declaration:declaration_specifiers init_declarator_list ;\n");
          $$ = make_node(make_node($1, $2, "B:decl_spec init_decl_list"), make_leaf(labels::declaration_end),
                         labels::declaration); }
    | declaration_specifiers ';'
        { trace_reduction("Branch:declaration:declaration_specifiers ;\n");
          $$ = make_node($1, make_leaf(labels::declaration_end), labels::declaration); }
    | identifier identifier_list ';'
        { trace_reduction("Branch:declaration:identifier identifier_list ;\n");
          $$ = make_node(make_node($1, $2, "B:id id_list"), make_leaf(labels::declaration_end),
                         labels::declaration); }
    | identifier identifier '[' identifier ']' ';'
        { trace_reduction("Branch:declaration:identifier identifier [ identifier ] ;\n");
          $$ = make_node(make_node($1, make_node($2, $4, "B:id[id]"), "B:id id[id]"),
                         make_leaf(labels::declaration_end), labels::declaration); }
    | identifier '*' identifier ';'
        { trace_reduction("Branch:declaration:identifier * identifier ;\n");
          $$ = make_node(make_node($1, $3, "B:id*id"), make_leaf(labels::declaration_end), labels::declaration); }
    | error ';' { trace_reduction("Branch:declaration:error ;\n"); yyerrok; }
    ;

declaration_list:
      declaration { trace_reduction("Node:declaration_list:declaration\n"); }
    | declaration_list declaration
        { trace_reduction("Branch:declaration_list:declaration_list declaration\n");
          $$ = make_node($1, $2, "B:decl_list decl"); }
    ;

declaration_specifiers:
      storage_class_specifier { trace_reduction("Node:declaration_specifiers:storage_class_specifier\n"); }
    | storage_class_specifier declaration_specifiers
        { trace_reduction("Branch:declaration_specifiers:storage_class_specifier declaration_specifiers\n");
          $$ = make_node($1, $2, "B:storage_class_decl_spec"); }
    | type_qualifier { trace_reduction("Node:declaration_specifiers:type_qualifier\n"); }
    | type_qualifier declaration_specifiers
        { trace_reduction("Branch:declaration_specifiers:type_qualifier declaration_specifiers\n");
          $$ = make_node($1, $2, "B:type_qualifier_decl_spec"); }
    | type_specifier { trace_reduction("Node:declaration_specifiers:type_specifier\n"); }
    | type_specifier declaration_specifiers
        { trace_reduction("Branch:declaration_specifiers:type_specifier declaration_specifiers\n");
          $$ = make_node($1, $2, "type_spec_decl_spec"); }
    ;

storage_class_specifier:
      AUTO { trace_reduction("Node:storage_class_specifier:AUTO\n"); $$ = make_leaf("T:Auto"); }
    | EXTERN { trace_reduction("Node:storage_class_specifier:EXTERN\n"); $$ = make_leaf("T:Extern"); }
    | REGISTER { trace_reduction("Node:storage_class_specifier:REGISTER\n"); $$ = make_leaf("T:Register"); }
    | STATIC { trace_reduction("Node:storage_class_specifier:STATIC\n"); $$ = make_leaf("T:Static"); }
    | TYPEDEF { trace_reduction("Node:storage_class_specifier:TYPEDEF\n"); $$ = make_leaf("T:Typedef"); }
    ;

type_specifier:
      CHAR { trace_reduction("Node:type_specifier:CHAR\n"); $$ = make_leaf(labels::type_char); }
    | DOUBLE { trace_reduction("Node:type_specifier:DOUBLE\n"); $$ = make_leaf(labels::type_double); }
    | FLOAT { trace_reduction("Node:type_specifier:FLOAT\n"); $$ = make_leaf(labels::type_float); }
    | INT { trace_reduction("Node:type_specifier:INT\n"); $$ = make_leaf(labels::type_int); }
    | LONG { trace_reduction("Node:type_specifier:LONG\n"); $$ = make_leaf(labels::type_long); }
    | SHORT { trace_reduction("Node:type_specifier:SHORT\n"); $$ = make_leaf(labels::type_short); }
    | SIGNED { trace_reduction("Node:type_specifier:SIGNED\n"); $$ = make_leaf("Type_Signed"); }
    | UNSIGNED { trace_reduction("Node:type_specifier:UNSIGNED\n"); $$ = make_leaf("T:Type_Unsigned"); }
    | VOID { trace_reduction("Node:type_specifier:VOID\n"); $$ = make_leaf("T;Type_Void"); }
    | typedef_name { trace_reduction("Node:type_specifier:typedef_name\n"); $$ = make_leaf("T:Typedef_Name"); }
    | enum_specifier
        { trace_reduction("Node:type_specifier:enum_specifier\n"); $$ = make_leaf("TYPE_ENUM_SPECIFIER"); }
    | struct_or_union_specifier
        { trace_reduction("Node:type_specifier:struct_or_union_specifier\n"); $$ = make_leaf("TYPE_STRUCTORUNION"); }
    ;

type_qualifier:
      CONST { trace_reduction("Node:type_qualifier:CONST\n"); $$ = make_leaf(labels::qualifier_const); }
    | VOLATILE { trace_reduction("Node:type_qualifier:VOLATILE\n"); $$ = make_leaf(labels::qualifier_volatile); }
    ;

struct_or_union_specifier:
      struct_or_union identifier '{' struct_declaration_list '}'
        { trace_reduction("Branch:struct_or_union_specifier:struct_or_union identifier { struct_declaration_list }\n");
          }
    | struct_or_union '{' struct_declaration_list '}'
        { trace_reduction("Branch:struct_or_union_specifier:struct_or_union { struct_declaration_list }\n"); }
    | struct_or_union identifier { trace_reduction("Branch:struct_or_union_specifier:struct_or_union identifier\n"); }
    ;

struct_or_union:
      STRUCT { trace_reduction("Node:struct_or_union:STRUCT\n"); }
    | UNION { trace_reduction("Node:struct_or_union:UNION\n"); }
    ;

struct_declaration_list:
      struct_declaration { trace_reduction("Node:struct_declaration_list:struct_declaration\n"); }
    | struct_declaration_list struct_declaration
        { trace_reduction("Branch:struct_declaration_list:struct_declaration_list struct_declaration\n"); }
    ;

struct_declaration:
      specifier_qualifier_list struct_declarator_list ';'
        { trace_reduction("Branch:struct_declaration:specifier_qualifier_list struct_declarator_list ;\n"); }
    | error ';' { trace_reduction("Branch:struct_declaration:error ;\n"); yyerrok; }
    ;

specifier_qualifier_list:
      type_specifier specifier_qualifier_list
        { trace_reduction("Branch:specifier_qualifier_list:type_specifier specifier_qualifier_list\n"); }
    | type_specifier { trace_reduction("Node:specifier_qualifier_list:type_specifier\n"); }
    | type_qualifier specifier_qualifier_list
        { trace_reduction("Branch:specifier_qualifier_list:type_qualifier specifier_qualifier_list\n"); }
    | type_qualifier { trace_reduction("Node:specifier_qualifier_list:type_qualifier\n"); }
    ;

struct_declarator_list:
      struct_declarator { trace_reduction("Node:struct_declarator_list:struct_declarator\n"); }
    | struct_declarator_list ',' struct_declarator
        { trace_reduction("Branch:struct_declarator_list:struct_declarator_list , struct_declarator\n"); }
    ;

struct_declarator:
      declarator { trace_reduction("Node:struct_declarator:declarator\n"); }
    | ':' constant_expression { trace_reduction("Branch:struct_declarator:: constant_expression\n"); }
    | declarator ':' constant_expression
        { trace_reduction("Branch:struct_declarator:declarator : constant_expression\n"); }
    ;

enum_specifier:
      ENUM '{' enumerator_list '}' { trace_reduction("Branch:enum_specifier:ENUM { enumerator_list }\n"); }
    | ENUM identifier '{' enumerator_list '}'
        { trace_reduction("Branch:enum_specifier:ENUM identifier { enumerator_list }\n"); }
    | ENUM identifier { trace_reduction("Branch:enum_specifier:ENUM identifier\n"); }
    ;

enumerator_list:
      enumerator { trace_reduction("Node:enumerator_list:enumerator\n"); }
    | enumerator_list ',' enumerator { trace_reduction("Branch:enumerator_list:enumerator_list , enumerator\n"); }
    ;

enumerator:
      identifier { trace_reduction("Node:enumerator:identifier\n"); }
    | identifier '=' constant_expression { trace_reduction("Branch:enumerator:identifier = constant_expression\n"); }
    | error { trace_reduction("Node:enumerator:error\n"); }
    ;

init_declarator_list:
      init_declarator { trace_reduction("Node:init_declarator_list:init_declarator\n"); }
    | init_declarator_list ',' init_declarator
        { trace_reduction("Branch:init_declarator_list:init_declarator_list , init_declarator\n");
          $$ = make_node($1, $3, "B:init_decl_list,init_decl"); }
    ;

init_declarator:
      declarator { trace_reduction("Node:init_declarator:declarator\n"); }
    | declarator '=' initializer
        { trace_reduction("Branch:init_declarator:declarator = initializer\n");
          $$ = make_node($1, make_node($3, nullptr, labels::initialized_declarator), ""); }
    ;

declarator:
      pointer direct_declarator
        { trace_reduction("Branch:declarator:pointer direct_declarator\n");
          $$ = make_node($1, $2, "B:pointer direct_decl"); }
    | direct_declarator { trace_reduction("Node:declarator:direct_declarator\n"); }
    ;

direct_declarator:
      identifier { trace_reduction("Node:direct_declarator:identifier\n"); }
    | '(' declarator ')'
        { trace_reduction("Branch:direct_declarator:( declarator )\n");
          $$ = make_node($2, nullptr, "B:(direct_decl)"); }
    | direct_declarator '[' constant_expression ']'
        { trace_reduction("Branch:direct_declarator:direct_declarator [ constant_expression ]\n");
          $$ = make_node($1, $3, "B:direct_decl[const_exp]"); }
    | direct_declarator '[' ']'
        { trace_reduction("Branch:direct_declarator:direct_declarator [ ]\n");
          $$ = make_node($1, nullptr, "B:direct_decl[]"); }
    | direct_declarator '(' parameter_type_list ')'
        { trace_reduction("Branch:direct_declarator:direct_declarator ( parameter_type_list )\n");
          $$ = make_node($1, $3, "B:direct_decl(parm_type_list)"); }
    | direct_declarator '(' identifier_list ')'
        { trace_reduction("Branch:direct_declarator:direct_declarator ( identifier_list )\n");
          $$ = make_node($1, $3, "B:direct_decl(id_list)"); }
    | direct_declarator '(' ')'
        { trace_reduction("Branch:direct_declarator:direct_declarator ( )\n");
          $$ = make_node($1, nullptr, "B:direct_decl()"); }
    ;

pointer:
      '*' type_qualifier_list
        { trace_reduction("Branch:pointer:* type_qualifier_list\n"); $$ = make_node($2, nullptr, "B:*type_q_list"); }
    | '*' { trace_reduction("Node:pointer:*\n"); $$ = make_leaf("B:*"); }
    | '*' type_qualifier_list pointer
        { trace_reduction("Branch:pointer:* type_qualifier_list pointer\n");
          $$ = make_node($2, $3, "B:* type_q_list pointer"); }
    | '*' pointer { trace_reduction("Branch:pointer:* pointer\n"); $$ = make_node($2, nullptr, "B:* pointer"); }
    ;

type_qualifier_list:
      type_qualifier { trace_reduction("Node:type_qualifier_list:type_qualifier\n"); }
    | type_qualifier_list type_qualifier
        { trace_reduction("Branch:type_qualifier_list:type_qualifier_list type_qualifier\n");
          $$ = make_node($1, $2, "B:type_q_list type_q"); }
    ;

parameter_type_list:
      parameter_list { trace_reduction("Node:parameter_type_list:parameter_list\n"); }
    | parameter_list ',' DDD
        { trace_reduction("Branch:parameter_type_list:parameter_list , DDD\n");
          $$ = make_node($1, $3, "B:parm_list,DDD"); }
    ;

parameter_list:
      parameter_declaration { trace_reduction("Node:parameter_list:parameter_declaration\n"); }
    | parameter_list ',' parameter_declaration
        { trace_reduction("Branch:parameter_list:parameter_list , parameter_declaration\n");
          $$ = make_node($1, $3, "B:parm_list,parm_decl"); }
    ;

parameter_declaration:
      declaration_specifiers declarator
        { trace_reduction("Branch:parameter_declaration:declaration_specifiers declarator\n");
          $$ = make_node($1, $2, "B:decl_spec_decl"); }
    | declaration_specifiers abstract_declarator
        { trace_reduction("Branch:parameter_declaration:declaration_specifiers abstract_declarator\n");
          $$ = make_node($1, $2, "B:decl_spec_abs_decl"); }
    | declaration_specifiers { trace_reduction("Node:parameter_declaration:declaration_specifiers\n"); }
    | declaration_specifiers error { trace_reduction("Branch:parameter_declaration:declaration_specifiers error\n"); }
    ;

identifier_list:
      identifier { trace_reduction("Node:identifier_list:identifier\n"); }
    | identifier_list ',' identifier
        { trace_reduction("Branch:identifier_list:identifier_list , identifier\n");
          $$ = make_node($1, $3, "id_list,id"); }
    | error { trace_reduction("Node:identifier_list:error\n"); }
    ;

initializer:
      assignment_expression
        { trace_reduction("Node:initializer:assignment_expression\n");
          $$ = make_node($1, make_leaf(labels::initializer_end), labels::initializer_begin); }
    | '{' initializer_list '}'
        { trace_reduction("Branch:initializer:{ initializer_list }\n");
          $$ = make_node($2, nullptr, "B:{init_list}"); }
    | '{' initializer_list ',' '}'
        { trace_reduction("Branch:initializer:{ initializer_list , }\n");
          $$ = make_node($2, nullptr, "B:{init_list,}"); }
    ;

initializer_list:
      initializer { trace_reduction("Node:initializer_list:initializer\n"); }
    | initializer_list ',' initializer
        { trace_reduction("Branch:initializer_list:initializer_list , initializer\n");
          $$ = make_node($1, $3, "B:init_list,init_list"); }
    | error { trace_reduction("Node:initializer_list:error\n"); }
    ;

type_name:
      specifier_qualifier_list { trace_reduction("Node:type_name:specifier_qualifier_list\n"); }
    | specifier_qualifier_list abstract_declarator
        { trace_reduction("Branch:type_name:specifier_qualifier_list abstract_declarator\n"); }
    ;

abstract_declarator:
      pointer { trace_reduction("Node:abstract_declarator:pointer\n"); }
    | direct_abstract_declarator { trace_reduction("Node:abstract_declarator:direct_abstract_declarator\n"); }
    | pointer direct_abstract_declarator
        { trace_reduction("Branch:abstract_declarator:pointer direct_abstract_declarator\n"); }
    ;

direct_abstract_declarator:
      '(' abstract_declarator ')' { trace_reduction("Branch:direct_abstract_declarator:( abstract_declarator )\n"); }
    | '[' ']' { trace_reduction("Branch:direct_abstract_declarator:[ ]\n"); }
    | '[' constant_expression ']' { trace_reduction("Branch:direct_abstract_declarator:[ constant_expression ]\n"); }
    | direct_abstract_declarator '[' ']'
        { trace_reduction("Branch:direct_abstract_declarator:direct_abstract_declarator [ ]\n"); }
    | direct_abstract_declarator '[' constant_expression ']'
        { trace_reduction("Branch:direct_abstract_declarator:direct_abstract_declarator [ constant_expression ]\n"); }
    | '(' ')' { trace_reduction("Branch:direct_abstract_declarator:( )\n"); }
    | '(' parameter_type_list ')' { trace_reduction("Branch:direct_abstract_declarator:( parameter_type_list )\n"); }
    | direct_abstract_declarator '(' ')'
        { trace_reduction("Branch:direct_abstract_declarator:direct_abstract_declarator ( )\n"); }
    | direct_abstract_declarator '(' parameter_type_list ')'
        { trace_reduction("Branch:direct_abstract_declarator:direct_abstract_declarator ( parameter_type_list )\n"); }
    ;

typedef_name:
      TYPENAME { trace_reduction("Node:typedef_name:TYPENAME\n"); $$ = make_node($1, nullptr, "B:Typedef"); }
    ;

statement:
      labeled_statement { trace_reduction("Node:statement:labeled_statement\n"); }
    | expression_statement { trace_reduction("Node:statement:expression_statement\n"); }
    | compound_statement { trace_reduction("Node:statement:compound_statement\n"); }
    | selection_statement { trace_reduction("Node:statement:selection_statement\n"); }
    | iteration_statement { trace_reduction("Node:statement:iteration_statement\n"); }
    | jump_statement { trace_reduction("Node:statement:jump_statement\n"); }
    | error ';' { trace_reduction("Branch:statement:error ;\n"); yyerrok; }
    ;

labeled_statement:
      identifier ':' statement
        { trace_reduction("Branch:labeled_statement:identifier : statement\n");
          $$ = make_node($3, $1, "B:ID:statement"); }
    | CASE constant_expression ':' statement
        { trace_reduction("Branch:labeled_statement:CASE constant_expression : statement\n");
          $$ = make_node($4, $2, "B:case_expression:statement"); }
    | DEFAULT ':' statement
        { trace_reduction("Branch:labeled_statement:DEFAULT : statement\n");
          $$ = make_node($3, nullptr, "B:default:statement"); }
    ;

expression_statement:
      expression ';'
        { trace_reduction("Branch:expression_statement:expression ;\n");
          $$ = make_node($1, make_leaf(labels::statement_end), labels::statement_begin); }
    | ';' { trace_reduction("Node:expression_statement:;\n"); $$ = make_leaf(""); }
    ;

compound_statement:
      '{' declaration_list statement_list '}'
        { trace_reduction("Branch:compound_statement:{ declaration_list statement_list }\n");
          $$ = make_node(make_leaf(labels::block_begin), make_node($2, make_node($3, make_leaf(labels::block_end),
                         ""), ""), "B:{decl_list,statement_list}"); }
    | '{' declaration_list '}'
        { trace_reduction("Branch:compound_statement:{ declaration_list }\n");
          $$ = make_node(make_leaf(labels::block_begin), make_node($2, make_leaf(labels::block_end), ""),
                         "B:{decl_list}"); }
    | '{' statement_list '}'
        { trace_reduction("Branch:compound_statement:{ statement_list }\n");
          $$ = make_node(make_leaf(labels::block_begin), make_node($2, make_leaf(labels::block_end), ""),
                         "B:{statement_list}"); }
    | '{' '}' { trace_reduction("Branch:compound_statement:{ }\n"); $$ = make_leaf("T:{}"); }
    ;

statement_list:
      statement { trace_reduction("Node:statement_list:statement\n"); }
    | statement_list statement
        { trace_reduction("Branch:statement_list:statement_list statement\n");
          $$ = make_node($1, $2, "B:statement_list"); }
    ;

selection_statement:
      IF '(' expression ')' statement { trace_reduction("Branch:selection_statement:IF ( expression ) statement\n"); }
    | IF '(' expression ')' statement ELSE statement
        { trace_reduction("Branch:selection_statement:IF ( expression ) statement ELSE statement\n"); }
    | SWITCH '(' expression ')' statement
        { trace_reduction("Branch:selection_statement:SWITCH ( expression ) statement\n"); }
    ;

iteration_statement:
      WHILE '(' expression ')' statement
        { trace_reduction("Branch:iteration_statement:WHILE ( expression ) statement\n"); }
    | DO statement WHILE '(' expression ')' ';'
        { trace_reduction("Branch:iteration_statement:DO statement WHILE ( expression ) ;\n"); }
    | FOR '(' ';' ';' ')' statement { trace_reduction("Branch:iteration_statement:FOR ( ; ; ) statement\n"); }
    | FOR '(' ';' ';' expression ')' statement
        { trace_reduction("Branch:iteration_statement:FOR ( ; ; expression ) statement\n"); }
    | FOR '(' ';' expression ';' ')' statement
        { trace_reduction("Branch:iteration_statement:FOR ( ; expression ; ) statement\n"); }
    | FOR '(' ';' expression ';' expression ')' statement
        { trace_reduction("Branch:iteration_statement:FOR ( ; expression ; expression ) statement\n"); }
    | FOR '(' expression ';' ';' ')' statement
        { trace_reduction("Branch:iteration_statement:FOR ( expression ; ; ) statement\n"); }
    | FOR '(' expression ';' ';' expression ')' statement
        { trace_reduction("Branch:iteration_statement:FOR ( expression ; ; expression ) statement\n"); }
    | FOR '(' expression ';' expression ';' ')' statement
        { trace_reduction("Branch:iteration_statement:FOR ( expression ; expression ; ) statement\n"); }
    | FOR '(' expression ';' expression ';' expression ')' statement
        { trace_reduction("Branch:iteration_statement:FOR ( expression ; expression ; expression ) statement\n"); }
    | FOR '(' error ')' statement { trace_reduction("Branch:iteration_statement:FOR ( error ) statement\n"); }
    ;

jump_statement:
      GOTO identifier ';' { trace_reduction("Branch:jump_statement:GOTO identifier ;\n"); $$ = make_leaf("B:Goto"); }
    | CONTINUE ';' { trace_reduction("Branch:jump_statement:CONTINUE ;\n"); $$ = make_leaf("T:Continue"); }
    | BREAK ';' { trace_reduction("Branch:jump_statement:BREAK ;\n"); $$ = make_leaf("T:Break"); }
    | RETURN expression ';'
        { trace_reduction("Branch:jump_statement:RETURN expression ;\n"); $$ = make_leaf("B:Return_expression"); }
    | RETURN ';' { trace_reduction("Branch:jump_statement:RETURN ;\n"); $$ = make_leaf("B:Return"); }
    ;

expression:
      assignment_expression { trace_reduction("Node:expression:assignment_expression\n"); }
    | expression ',' assignment_expression
        { trace_reduction("Branch:expression:expression , assignment_expression\n");
          $$ = make_node($1, $3, "B:expression,expression"); }
    | expression error assignment_expression
        { trace_reduction("Branch:expression:expression error assignment_expression\n"); }
    ;

assignment_expression:
      conditional_expression { trace_reduction("Node:assignment_expression:conditional_expression\n"); }
    | unary_expression assignment_operator assignment_expression
        { trace_reduction("Branch:assignment_expression:unary_expression assignment_operator assignment_expression\n");
          $$ = make_node($1, make_node($2, $3, labels::assignment), "B:assignment_expression"); }
    ;

assignment_operator:
      '=' { trace_reduction("Node:assignment_operator:=\n"); $$ = make_leaf(labels::plain_assignment); }
    | MUL_ASSIGN { trace_reduction("Node:assignment_operator:MUL_ASSIGN\n"); $$ = make_leaf("T:*="); }
    | DIV_ASSIGN { trace_reduction("Node:assignment_operator:DIV_ASSIGN\n"); $$ = make_leaf("T:/="); }
    | MOD_ASSIGN { trace_reduction("Node:assignment_operator:MOD_ASSIGN\n"); $$ = make_leaf("T:%="); }
    | ADD_ASSIGN { trace_reduction("Node:assignment_operator:ADD_ASSIGN\n"); $$ = make_leaf("T:+="); }
    | SUB_ASSIGN { trace_reduction("Node:assignment_operator:SUB_ASSIGN\n"); $$ = make_leaf("T:-="); }
    | SHL_ASSIGN { trace_reduction("Node:assignment_operator:SHL_ASSIGN\n"); $$ = make_leaf("T:<<="); }
    | SHR_ASSIGN { trace_reduction("Node:assignment_operator:SHR_ASSIGN\n"); $$ = make_leaf("T:>>="); }
    | AND_ASSIGN { trace_reduction("Node:assignment_operator:AND_ASSIGN\n"); $$ = make_leaf("T:&="); }
    | OR_ASSIGN { trace_reduction("Node:assignment_operator:OR_ASSIGN\n"); $$ = make_leaf("T:|="); }
    | XOR_ASSIGN { trace_reduction("Node:assignment_operator:XOR_ASSIGN\n"); $$ = make_leaf("T:^="); }
    ;

conditional_expression:
      logical_or_expression { trace_reduction("Node:conditional_expression:logical_or_expression\n"); }
    | logical_or_expression '?' expression ':' conditional_expression
        { trace_reduction("Branch:conditional_expression:logical_or_expression ? expression : "
                          "conditional_expression\n");
          $$ = make_node($1, make_node($3, $5, "OP:??"), "OP:?"); }
    ;

constant_expression:
      conditional_expression { trace_reduction("Node:constant_expression:conditional_expression\n"); }
    ;

logical_or_expression:
      logical_and_expression { trace_reduction("Node:logical_or_expression:logical_and_expression\n"); }
    | logical_or_expression OROR logical_and_expression
        { trace_reduction("Branch:logical_or_expression:logical_or_expression OROR logical_and_expression\n");
          $$ = make_node($1, $3, "OP:a||b"); }
    ;

logical_and_expression:
      inclusive_or_expression { trace_reduction("Node:logical_and_expression:inclusive_or_expression\n"); }
    | logical_and_expression ANDAND inclusive_or_expression
        { trace_reduction("Branch:logical_and_expression:logical_and_expression ANDAND inclusive_or_expression\n");
          $$ = make_node($1, $3, "OP:a&&b"); }
    ;

inclusive_or_expression:
      exclusive_or_expression { trace_reduction("Node:inclusive_or_expression:exclusive_or_expression\n"); }
    | inclusive_or_expression '|' exclusive_or_expression
        { trace_reduction("Branch:inclusive_or_expression:inclusive_or_expression | exclusive_or_expression\n");
          $$ = make_node($1, $3, "OP:a|b"); }
    ;

exclusive_or_expression:
      and_expression { trace_reduction("Node:exclusive_or_expression:and_expression\n"); }
    | exclusive_or_expression '^' and_expression
        { trace_reduction("Branch:exclusive_or_expression:exclusive_or_expression ^ and_expression\n");
          $$ = make_node($1, $3, "OP:a^b"); }
    ;

and_expression:
      equality_expression { trace_reduction("Node:and_expression:equality_expression\n"); }
    | and_expression '&' equality_expression
        { trace_reduction("Branch:and_expression:and_expression & equality_expression\n");
          $$ = make_node($1, $3, "OP:a&b"); }
    ;

equality_expression:
      relational_expression { trace_reduction("Node:equality_expression:relational_expression\n"); }
    | equality_expression EQU relational_expression
        { trace_reduction("Branch:equality_expression:equality_expression EQU relational_expression\n");
          $$ = make_node($1, $3, "OP:a==b"); }
    | equality_expression NEQ relational_expression
        { trace_reduction("Branch:equality_expression:equality_expression NEQ relational_expression\n");
          $$ = make_node($1, $3, "OP:a!=b"); }
    ;

relational_expression:
      shift_expression { trace_reduction("Node:relational_expression:shift_expression\n"); }
    | relational_expression '<' shift_expression
        { trace_reduction("Branch:relational_expression:relational_expression < shift_expression\n");
          $$ = make_node($1, $3, "OP:a<b"); }
    | relational_expression '>' shift_expression
        { trace_reduction("Branch:relational_expression:relational_expression > shift_expression\n");
          $$ = make_node($1, $3, "OP:a>b"); }
    | relational_expression LEQ shift_expression
        { trace_reduction("Branch:relational_expression:relational_expression LEQ shift_expression\n");
          $$ = make_node($1, $3, "OP:a<=b"); }
    | relational_expression GEQ shift_expression
        { trace_reduction("Branch:relational_expression:relational_expression GEQ shift_expression\n");
          $$ = make_node($1, $3, "OP:a>=b"); }
    ;

shift_expression:
      additive_expression { trace_reduction("Node:shift_expression:additive_expression\n"); }
    | shift_expression SHL additive_expression
        { trace_reduction("Branch:shift_expression:shift_expression SHL additive_expression\n");
          $$ = make_node($3, $1, "OP:<<"); }
    | shift_expression SHR additive_expression
        { trace_reduction("Branch:shift_expression:shift_expression SHR additive_expression\n");
          $$ = make_node($3, $1, "OP:>>"); }
    ;

additive_expression:
      multiplicative_expression { trace_reduction("Node:additive_expression:multiplicative_expression\n"); }
    | additive_expression '+' multiplicative_expression
        { trace_reduction("Branch:additive_expression:additive_expression + multiplicative_expression\n");
          $$ = make_node($3, $1, labels::add); }
    | additive_expression '-' multiplicative_expression
        { trace_reduction("Branch:additive_expression:additive_expression - multiplicative_expression\n");
          $$ = make_node($3, $1, labels::subtract); }
    ;

multiplicative_expression:
      cast_expression { trace_reduction("Node:multiplicative_expression:cast_expression\n"); }
    | multiplicative_expression '*' cast_expression
        { trace_reduction("Branch:multiplicative_expression:multiplicative_expression * cast_expression\n");
          $$ = make_node($3, $1, labels::multiply); }
    | multiplicative_expression '/' cast_expression
        { trace_reduction("Branch:multiplicative_expression:multiplicative_expression / cast_expression\n");
          $$ = make_node($3, $1, labels::divide); }
    | multiplicative_expression '%' cast_expression
        { trace_reduction("Branch:multiplicative_expression:multiplicative_expression % cast_expression\n");
          $$ = make_node($3, $1, "OP:%"); }
    ;

cast_expression:
      unary_expression { trace_reduction("Node:cast_expression:unary_expression\n"); }
    | '(' type_name ')' cast_expression
        { trace_reduction("Branch:cast_expression:( type_name ) cast_expression\n");
          $$ = make_node($1, $3, "OP:cast"); }
    ;

unary_expression:
      postfix_expression { trace_reduction("Node:unary_expression:postfix_expression\n"); }
    | ADDADD unary_expression
        { trace_reduction("Branch:unary_expression:ADDADD unary_expression\n");
          $$ = make_node($2, nullptr, "OP:++a"); }
    | SUBSUB unary_expression
        { trace_reduction("Branch:unary_expression:SUBSUB unary_expression\n");
          $$ = make_node($2, nullptr, "OP:--a"); }
    | unary_operator cast_expression
        { trace_reduction("Branch:unary_expression:unary_operator cast_expression\n");
          $$ = make_node($1, $2, labels::unary_operation); }
    | SIZEOF unary_expression
        { trace_reduction("Branch:unary_expression:SIZEOF unary_expression\n");
          $$ = make_node($2, nullptr, "OP:Sizeof expression"); }
    | SIZEOF '(' type_name ')'
        { trace_reduction("Branch:unary_expression:SIZEOF ( type_name )\n");
          $$ = make_node($3, nullptr, "OP:Sizeof(a)"); }
    ;

unary_operator:
      '&' { trace_reduction("Node:unary_operator:&\n"); $$ = make_leaf("UOP:&"); }
    | '*' { trace_reduction("Node:unary_operator:*\n"); $$ = make_leaf("UOP:*"); }
    | '+' { trace_reduction("Node:unary_operator:+\n"); $$ = make_leaf("UOP:+"); }
    | '-' { trace_reduction("Node:unary_operator:-\n"); $$ = make_leaf(labels::unary_minus); }
    | '~' { trace_reduction("Node:unary_operator:~\n"); $$ = make_leaf("UOP:~"); }
    | '!' { trace_reduction("Node:unary_operator:!\n"); $$ = make_leaf("UOP:!"); }
    ;

postfix_expression:
      primary_expression { trace_reduction("Node:postfix_expression:primary_expression\n"); }
    | postfix_expression '[' expression ']'
        { trace_reduction("Branch:postfix_expression:postfix_expression [ expression ]\n");
          $$ = make_node($1, make_node(make_node($3, make_leaf("Array:]"), ""), nullptr, "Array:["),
                         "B:postfix_expression[expression]"); }
    | postfix_expression '(' argument_expression_list ')'
        { trace_reduction("Branch:postfix_expression:postfix_expression ( argument_expression_list )\n");
          $$ = make_node($1, $3, labels::function_call); }
    | postfix_expression '(' ')'
        { trace_reduction("Branch:postfix_expression:postfix_expression ( )\n");
          $$ = make_node($1, nullptr, "B:function(noargs)"); }
    | postfix_expression '.' identifier
        { trace_reduction("Branch:postfix_expression:postfix_expression . identifier\n");
          $$ = make_node($1, $2, "B:postfix_expression.identifier"); }
    | postfix_expression PTR identifier
        { trace_reduction("Branch:postfix_expression:postfix_expression PTR identifier\n");
          $$ = make_node($1, $2, "B:postfix_expressionPTRidentifier"); }
    | postfix_expression ADDADD
        { trace_reduction("Branch:postfix_expression:postfix_expression ADDADD\n");
          $$ = make_node($1, nullptr, "B:postfix_expression++"); }
    | postfix_expression SUBSUB
        { trace_reduction("Branch:postfix_expression:postfix_expression SUBSUB\n");
          $$ = make_node($1, nullptr, "B:postfix_expression--"); }
    ;

primary_expression:
      identifier { trace_reduction("Node:primary_expression:identifier\n"); }
    | constant { trace_reduction("Node:primary_expression:constant\n"); }
    | STRING { trace_reduction("Node:primary_expression:STRING\n"); }
    | '(' expression ')' { trace_reduction("Branch:primary_expression:( expression )\n"); $$ = $2; }
    ;

argument_expression_list:
      assignment_expression { trace_reduction("Node:argument_expression_list:assignment_expression\n"); }
    | argument_expression_list ',' assignment_expression
        { trace_reduction("Branch:argument_expression_list:argument_expression_list , assignment_expression\n");
          $$ = make_node($1, $3, ""); }
    ;

constant:
      INTEGER_CONSTANT
        { trace_leaf("INTEGER CONSTANT ", token_text()); $$ = make_leaf(labels::integer_constant, token_text()); }
    | CHARACTER_CONSTANT
        { trace_leaf("CHARACTER CONSTANT ", token_text()); $$ = make_leaf("T:CHARACTER_CONSTANT", token_text()); }
    | FLOATING_CONSTANT
        { trace_leaf("FLOAT CONSTANT ", token_text()); $$ = make_leaf(labels::float_constant, token_text()); }
    | ENUMERATION_CONSTANT
        { trace_leaf("ENUM CONSTANT ", token_text()); $$ = make_leaf("T:ENUM_CONSTANT", token_text()); }
    ;

identifier:
      IDENTIFIER { trace_leaf("IDENTIFIER ", token_text()); $$ = make_leaf(labels::identifier, token_text()); }
    ;

%%

namespace xfc {

int parse() {
    current.error_count = 0;
    current.tree.root = nullptr;
    return xfc_yyparse() == 0 ? 0 : 1;
}

}  // namespace xfc
