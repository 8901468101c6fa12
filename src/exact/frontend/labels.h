#pragma once

#include <string_view>

/// The labels that later passes act on. All other labels stand in the grammar only.
namespace xfc::labels {

inline constexpr std::string_view declaration = "S:Declaration";
inline constexpr std::string_view declaration_end = "S:END";
inline constexpr std::string_view block_begin = "{";
inline constexpr std::string_view block_end = "}";

inline constexpr std::string_view type_char = "T:Type_Char";
inline constexpr std::string_view type_double = "T:Type_Double";
inline constexpr std::string_view type_float = "T:Type_Float";
inline constexpr std::string_view type_int = "T:Type_Int";
inline constexpr std::string_view type_long = "T:Type_Long";
inline constexpr std::string_view type_short = "T:Type_Short";
inline constexpr std::string_view qualifier_const = "T:Const";
inline constexpr std::string_view qualifier_volatile = "T:Volatile";

inline constexpr std::string_view identifier = "T:IDENTIFIER";
inline constexpr std::string_view integer_constant = "T:INTEGER_CONSTANT";
inline constexpr std::string_view float_constant = "T:FLOAT_CONSTANT";

inline constexpr std::string_view initialized_declarator = "B:decl=init";
inline constexpr std::string_view initializer_begin = "T:start_expr";
inline constexpr std::string_view initializer_end = "T:end_expr";

inline constexpr std::string_view statement_begin = "T:start_expr_stat";
inline constexpr std::string_view statement_end = "T:end_expr_stat";
inline constexpr std::string_view assignment = "B:=expression";
inline constexpr std::string_view plain_assignment = "T:=";

inline constexpr std::string_view multiply = "OP:*";
inline constexpr std::string_view add = "OP:+";
inline constexpr std::string_view subtract = "OP:-";
inline constexpr std::string_view divide = "OP:/";
inline constexpr std::string_view unary_operation = "OP:unaryoperator castexpression";
inline constexpr std::string_view unary_minus = "UOP:-";
inline constexpr std::string_view function_call = "B:function(args)";

}  // namespace xfc::labels
