#include "flow/frontend/headers.h"

#include "flow/frontend/known_functions.h"
#include "flow/frontend/xfc_header.h"

namespace xfc::flow {

namespace {

constexpr std::string_view math_constants = R"(#pragma once
#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define INFINITY __builtin_inff()
#define NAN __builtin_nanf("")
#define M_E 2.7182818284590452354
#define M_LOG2E 1.4426950408889634074
#define M_LOG10E 0.43429448190325182765
#define M_LN2 0.69314718055994530942
#define M_LN10 2.30258509299404568402
#define M_PI 3.14159265358979323846
#define M_PI_2 1.57079632679489661923
#define M_PI_4 0.78539816339744830962
#define M_1_PI 0.31830988618379067154
#define M_2_PI 0.63661977236758134308
#define M_2_SQRTPI 1.12837916709551257390
#define M_SQRT2 1.41421356237309504880
#define M_SQRT1_2 0.70710678118654752440
#define isnan(x) ((x) != (x))
typedef float float_t;
typedef double double_t;
)";

constexpr std::string_view stdint_text = R"(#pragma once
typedef signed char int8_t;
typedef short int16_t;
typedef int int32_t;
typedef long long int64_t;
typedef unsigned char uint8_t;
typedef unsigned short uint16_t;
typedef unsigned int uint32_t;
typedef unsigned long long uint64_t;
typedef signed char int_least8_t;
typedef short int_least16_t;
typedef int int_least32_t;
typedef unsigned char uint_least8_t;
typedef unsigned short uint_least16_t;
typedef unsigned int uint_least32_t;
typedef int int_fast8_t;
typedef int int_fast16_t;
typedef int int_fast32_t;
typedef unsigned int uint_fast8_t;
typedef unsigned int uint_fast16_t;
typedef unsigned int uint_fast32_t;
typedef int intptr_t;
typedef unsigned int uintptr_t;
#define INT8_MIN (-128)
#define INT8_MAX 127
#define UINT8_MAX 255
#define INT16_MIN (-32768)
#define INT16_MAX 32767
#define UINT16_MAX 65535
#define INT32_MIN (-2147483647 - 1)
#define INT32_MAX 2147483647
#define UINT32_MAX 4294967295U
)";

constexpr std::string_view stdbool_text = R"(#pragma once
#define bool _Bool
#define true 1
#define false 0
)";

constexpr std::string_view stddef_text = R"(#pragma once
typedef unsigned int size_t;
typedef int ptrdiff_t;
#define NULL ((void*)0)
#define offsetof(type, member) __builtin_offsetof(type, member)
)";

constexpr std::string_view float_text = R"(#pragma once
#define FLT_RADIX 2
#define FLT_EVAL_METHOD 0
#define FLT_MANT_DIG 24
#define FLT_DIG 6
#define FLT_MIN_EXP (-125)
#define FLT_MAX_EXP 128
#define FLT_MIN_10_EXP (-37)
#define FLT_MAX_10_EXP 38
#define FLT_MAX 0x1.fffffep+127f
#define FLT_MIN 0x1p-126f
#define FLT_TRUE_MIN 0x1p-149f
#define FLT_EPSILON 0x1p-23f
#define DBL_MANT_DIG 53
#define DBL_DIG 15
#define DBL_MIN_EXP (-1021)
#define DBL_MAX_EXP 1024
#define DBL_MIN_10_EXP (-307)
#define DBL_MAX_10_EXP 308
#define DBL_MAX ((double)0x1.fffffffffffffp+1023)
#define DBL_MIN ((double)0x1p-1022)
#define DBL_TRUE_MIN ((double)0x1p-1074)
#define DBL_EPSILON ((double)0x1p-52)
)";

constexpr std::string_view limits_text = R"(#pragma once
#define CHAR_BIT 8
#define SCHAR_MIN (-128)
#define SCHAR_MAX 127
#define UCHAR_MAX 255
#define CHAR_MIN (-128)
#define CHAR_MAX 127
#define SHRT_MIN (-32768)
#define SHRT_MAX 32767
#define USHRT_MAX 65535
#define INT_MIN (-2147483647 - 1)
#define INT_MAX 2147483647
#define UINT_MAX 4294967295U
#define LONG_MIN (-2147483647L - 1)
#define LONG_MAX 2147483647L
#define ULONG_MAX 4294967295UL
)";

/// Declarations of all known functions in double and in single; those of xfc.h among them do no harm.
std::string math_text() {
    std::string text(math_constants);
    for (const known_function& row : known_functions()) {
        if (row.name == "inv" || row.name == "invsqr" || row.name == "negate") {
            continue;  // C knows them from xfc.h only
        }
        for (const bool single : {false, true}) {
            const std::string type = single ? "float" : "double";
            text += type;
            text += ' ';
            text += row.name;
            text += single ? "f(" : "(";
            text += type;
            if (row.arguments == 2) {
                text += row.second_integer ? ", int" : ", " + type;
            }
            text += ");\n";
        }
    }
    return text;
}

}  // namespace

std::vector<built_in_header> built_in_headers() {
    return {
        {"math.h", math_text()},
        {"stdint.h", std::string(stdint_text)},
        {"stdbool.h", std::string(stdbool_text)},
        {"stddef.h", std::string(stddef_text)},
        {"float.h", std::string(float_text)},
        {"limits.h", std::string(limits_text)},
        {"xfc.h", std::string(xfc_header_text)},
    };
}

}  // namespace xfc::flow
