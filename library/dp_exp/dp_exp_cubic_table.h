// r ** 3 / 6 for r = (index + 1/2) * 2 ** -24, units of 2 ** -62.
// Made by make_tables.cpp. From the highest bits down: value (6 bits).
#pragma once

#include <cstdint>

namespace xfc::model {

struct dp_exp_cubic_table_row {
    std::uint64_t value;
};

inline constexpr dp_exp_cubic_table_row dp_exp_cubic_table[] = {
    // clang-format off
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {0},
    {1},
    {1},
    {1},
    {1},
    {1},
    {1},
    {2},
    {2},
    {2},
    {2},
    {3},
    {3},
    {3},
    {4},
    {4},
    {5},
    {5},
    {6},
    {6},
    {7},
    {7},
    {8},
    {9},
    {9},
    {10},
    {11},
    {12},
    {12},
    {13},
    {14},
    {15},
    {16},
    {17},
    {19},
    {20},
    {21},
    {22},
    {24},
    {25},
    {26},
    {28},
    {29},
    {31},
    {33},
    {34},
    {36},
    {38},
    {40},
    {42},
    // clang-format on
};

}  // namespace xfc::model
