#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "grammar.hpp"

namespace xfc {

struct keyword_row {
    std::string_view spelling;
    std::int32_t code;
};

/// The keywords, sorted by spelling in byte order.
inline constexpr std::array<keyword_row, 32> keyword_table{{
    {"auto", token_AUTO},         {"break", token_BREAK},       {"case", token_CASE},         {"char", token_CHAR},
    {"const", token_CONST},       {"continue", token_CONTINUE}, {"default", token_DEFAULT},   {"do", token_DO},
    {"double", token_DOUBLE},     {"else", token_ELSE},         {"enum", token_ENUM},         {"extern", token_EXTERN},
    {"float", token_FLOAT},       {"for", token_FOR},           {"goto", token_GOTO},         {"if", token_IF},
    {"int", token_INT},           {"long", token_LONG},         {"register", token_REGISTER}, {"return", token_RETURN},
    {"short", token_SHORT},       {"signed", token_SIGNED},     {"sizeof", token_SIZEOF},     {"static", token_STATIC},
    {"struct", token_STRUCT},     {"switch", token_SWITCH},     {"typedef", token_TYPEDEF},   {"union", token_UNION},
    {"unsigned", token_UNSIGNED}, {"void", token_VOID},         {"volatile", token_VOLATILE}, {"while", token_WHILE},
}};

}  // namespace xfc
