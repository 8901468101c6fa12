#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace xfc {

struct keyword_row {
    std::string_view spelling;
    std::int32_t code;
};

/// The keywords, sorted by spelling in byte order. Kept: the codes follow the grammar's token declarations, not the
/// alphabet, so those of union, unsigned, void and volatile do not ascend.
inline constexpr std::array<keyword_row, 32> keyword_table{{
    {"auto", 265},     {"break", 266},  {"case", 267},    {"char", 268},   {"const", 269},    {"continue", 270},
    {"default", 271},  {"do", 272},     {"double", 273},  {"else", 274},   {"enum", 275},     {"extern", 276},
    {"float", 277},    {"for", 278},    {"goto", 279},    {"if", 280},     {"int", 281},      {"long", 282},
    {"register", 283}, {"return", 284}, {"short", 285},   {"signed", 286}, {"sizeof", 287},   {"static", 288},
    {"struct", 289},   {"switch", 290}, {"typedef", 291}, {"union", 294},  {"unsigned", 295}, {"void", 292},
    {"volatile", 293}, {"while", 296},
}};

}  // namespace xfc
